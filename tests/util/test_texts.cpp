// Trimming, and the property list that holds one text.
#include "platform/runtime/Runtime.h"
#include "platform/services/propertylist/PropertyList.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "tests/support/TestServices.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(Texts, EachTrimTakesWhatItsNameSays) {
    struct Case {
        QString text, all, ends, endsAndLines;
    };
    const Case cases[] = {
        {"  x yz ", "xyz", "x yz", "x yz"},
        {"  x y  z ", "xyz", "x y  z", "x y  z"},
        {" x y\n", "xy\n", "x y\n", "x y"},
        {"\t\n x\t", "x", "\n x", "x"},
        {"a\tb \t\nc", "a\tbc", "a\tb \t\nc", "a\tb \t\nc"},
        {u"\u00a0x\u2028"_s, u"x\u2028"_s, u"x\u2028"_s, "x"},
        {"   ", "", "", ""},
        {"", "", "", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(qPrintable(c.text));
        EXPECT_EQ(vlOLUtils::trimAllSpace(c.text), c.all);
        EXPECT_EQ(vlOLUtils::trimRLSpace(c.text), c.ends);
        EXPECT_EQ(vlOLUtils::trimAllSpaceAndNewLine(c.text), c.endsAndLines);
    }
    for (const auto trim :
         {&vlOLUtils::trimAllSpace, &vlOLUtils::trimRLSpace, &vlOLUtils::trimAllSpaceAndNewLine}) {
        EXPECT_TRUE(trim(QString()).isNull());
        EXPECT_FALSE(trim(u" "_s).isNull());
    }
}

class OneStringFile : public testing::Test {
protected:
    void SetUp() override { platform::installTestServices(); }
    void holds(const QByteArray &bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QTemporaryDir folder;
    QString path = folder.filePath("one.txt");
};

TEST_F(OneStringFile, GivesBackTheTextThatWasSaved) {
    for (const QString &text : {u"<a> & \"b\"\n\u20ac\U0001F600"_s, u""_s}) {
        vlOLUtils::saveStrToFile(text, path);
        EXPECT_EQ(vlOLUtils::readStrFromFile(path), text);
    }
    vlOLUtils::saveStrToFile(u"kept"_s, path);
    vlOLUtils::saveStrToFile(QString(), path);
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), "kept");
    platform::PropertyList::write(path, QVariantList{"first", "last"});
    EXPECT_EQ(vlOLUtils::readStrFromFile(path), "last");
}

TEST_F(OneStringFile, IsEmptyTextWhenItIsNoSuchFile) {
    EXPECT_TRUE(vlOLUtils::readStrFromFile(QString()).isNull());
    const auto readsEmpty = [](const QString &from) {
        const QString text = vlOLUtils::readStrFromFile(from);
        return text.isEmpty() && !text.isNull();
    };
    EXPECT_TRUE(readsEmpty(u""_s));
    EXPECT_TRUE(readsEmpty(path));
    holds("not a property list");
    EXPECT_TRUE(readsEmpty(path));
    for (const rt::Value &root : {rt::Value(QVariantList{}), rt::Value(QVariantMap{{"a", "b"}}),
                                  rt::Value(QVariantList{"text", qint64(3)})}) {
        platform::PropertyList::write(path, root);
        EXPECT_TRUE(readsEmpty(path)) << root.typeName();
    }
}

TEST(Edition, IsExactlyOneAndDecidesAboutSchedulingForOthers) {
    EXPECT_NE(vlPluginBuildMgr::isBuildForPRL(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_EQ(vlPluginBuildMgr::supportScheduleFor(), vlPluginBuildMgr::isBuildForVela());
    EXPECT_TRUE(vlPluginBuildMgr::supportStartWithoutVideo());
}
