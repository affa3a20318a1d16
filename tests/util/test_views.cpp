// Kinds of host objects, and the search for views of a kind.
#include "platform/runtime/Runtime.h"
#include "plugin/util/vlOLUtils.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

namespace {

// A host view: a widget with a runtime class.
class HostView : public QWidget, public rt::Object {
public:
    HostView(const char *className, QWidget *parent)
        : QWidget(parent)
        , rt::Object(rt::classNamed(className)) {}
};

class Views : public testing::Test {
protected:
    void SetUp() override {
        rt::Class *root = rt::defineClass("TestRoot");
        rt::defineClass("TestCell", root);
        rt::defineClass("TestButtonCell", rt::classNamed("TestCell"));
    }
};

} // namespace

TEST_F(Views, AClassCountsForItsSubclassesAndForNobodyElse) {
    rt::Object button(rt::classNamed("TestButtonCell"));
    EXPECT_TRUE(vlOLUtils::kindofClass(&button, "TestCell"));
    EXPECT_TRUE(vlOLUtils::kindofClass(rt::fromObject(&button), "TestRoot"));
    rt::Object root(rt::classNamed("TestRoot"));
    EXPECT_FALSE(vlOLUtils::kindofClass(&root, "TestCell"));
    for (const QString &name : {QString(), u""_s, u"NobodyDefinedThis"_s})
        EXPECT_FALSE(vlOLUtils::kindofClass(&root, name));
    EXPECT_FALSE(vlOLUtils::kindofClass(static_cast<rt::Object *>(nullptr), "TestRoot"));
    EXPECT_FALSE(vlOLUtils::kindofClass(rt::Value(u"TestRoot"_s), "TestRoot"));
    EXPECT_FALSE(vlOLUtils::kindofClass(rt::nullMarker(), "TestRoot"));
}

TEST_F(Views, TheSearchGoesDepthFirstAndNotIntoWhatItFound) {
    QWidget window;
    auto *plain = new QWidget(&window);
    auto *deep = new HostView("TestButtonCell", plain);
    auto *outer = new HostView("TestCell", &window);
    new HostView("TestCell", outer);
    new HostView("TestRoot", &window);
    auto *sheet = new QWidget(&window, Qt::Dialog);
    new HostView("TestCell", sheet);
    auto *last = new HostView("TestCell", &window);
    QList<QWidget *> found;
    vlOLUtils::GetSubViewOfKind(&window, "TestCell", found);
    EXPECT_EQ(found, (QList<QWidget *>{deep, outer, last}));
    vlOLUtils::GetSubViewOfKind(nullptr, "TestCell", found);
    vlOLUtils::GetSubViewOfKind(last, "TestCell", found);
    EXPECT_EQ(found.size(), 3);
}
