// The tool-bar: its items, where they are remembered, and the sheet in which its user arranges them.
#include "platform/toolkit/Toolbar.h"

#include "platform/runtime/Runtime.h"
#include "platform/toolkit/ToolbarCustomization.h"
#include "tests/support/TestServices.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>
#include <map>

namespace {

using platform::Toolbar;
using platform::ToolbarItem;

const QString flexible = platform::toolbarFlexibleSpaceIdentifier;
const QString separator = platform::toolbarSeparatorIdentifier;
const QString key = u"Toolbar Main"_s;

class CountingItem : public ToolbarItem {
public:
    using ToolbarItem::ToolbarItem;
    int validations = 0;
    void validate() override { ++validations; }
};

// Supplies what is in `supply`; the items live as long as it.
class Delegate : public rt::Object {
public:
    Delegate()
        : rt::Object(cls()) {}
    QStringList supply{"New", "Back", "Today", "Plug", "Spare"};
    QStringList defaults{"New", "Back", flexible, "Today"};
    std::map<QString, std::unique_ptr<CountingItem>> items;

    CountingItem *item(const QString &identifier) {
        if (supply.contains(identifier) && !items[identifier]) {
            items[identifier] = std::make_unique<CountingItem>(identifier);
            items[identifier]->setLabel(identifier);
        }
        return supply.contains(identifier) ? items[identifier].get() : nullptr;
    }

private:
    static rt::Class *cls() {
        rt::Class *made = rt::defineClass(u"ToolbarTestDelegate"_s);
        rt::addMethod(made, "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", supplied, "@@:@@B");
        rt::addMethod(made, "toolbarDefaultItemIdentifiers:", defaultOnes, "@@:@");
        rt::addMethod(made, "toolbarAllowedItemIdentifiers:", allowedOnes, "@@:@");
        return made;
    }
    static rt::Value supplied(rt::Object *self, rt::Selector, rt::Args arguments) {
        return rt::fromObject(static_cast<Delegate *>(self)->item(rt::textValue(arguments[1])));
    }
    static rt::Value defaultOnes(rt::Object *self, rt::Selector, rt::Args) {
        return rt::Value(static_cast<Delegate *>(self)->defaults).toList();
    }
    static rt::Value allowedOnes(rt::Object *, rt::Selector, rt::Args) {
        return QVariantList{"New", "Back", "Today", "Spare"};
    }
};

// A window with the tool-bar "Main".
struct Window {
    explicit Window(Delegate &delegate) {
        window.addToolBar(toolbar);
        window.resize(700, 200);
        toolbar->setDelegate(&delegate);
    }
    [[nodiscard]] QStringList shown() const {
        QStringList identifiers;
        for (const ToolbarItem *item : toolbar->visibleItems())
            identifiers.append(item->itemIdentifier());
        return identifiers;
    }
    QMainWindow window;
    Toolbar *toolbar = new Toolbar(u"Main"_s);
};

class ToolbarTest : public testing::Test {
protected:
    void remembers(const QVariant &items) {
        desktop.userDefaults->values.insert(key, QVariantMap{{"items", items}});
    }
    [[nodiscard]] QStringList remembered() const {
        return desktop.userDefaults->values.value(key).toMap().value("items").toStringList();
    }
    static void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    platform::TestDesktop desktop = platform::installTestServices();
    Delegate delegate;
};

TEST_F(ToolbarTest, ShowsTheDefaultAndRemembersNothingUntilItIsChanged) {
    Window one(delegate);
    EXPECT_EQ(one.shown(), delegate.defaults);
    one.window.show();
    one.toolbar->revalidate();
    EXPECT_TRUE(desktop.userDefaults->values.isEmpty());
    EXPECT_TRUE(one.toolbar->insertItem("Spare", 1));
    EXPECT_EQ(remembered(), (QStringList{"New", "Spare", "Back", flexible, "Today"}));
    const int writes = desktop.userDefaults->synchronizations;
    EXPECT_FALSE(one.toolbar->insertItem("Spare", 0)) << "it stands there already";
    EXPECT_FALSE(one.toolbar->insertItem("Nobody", 0));
    one.toolbar->moveItem(1, 1);
    one.toolbar->removeItem(99);
    EXPECT_EQ(desktop.userDefaults->synchronizations, writes);
    one.toolbar->insertItem(separator, 99);
    one.toolbar->insertItem(separator, -5);
    one.toolbar->moveItem(1, 99);
    EXPECT_EQ(one.shown(), (QStringList{separator, "Spare", "Back", flexible, "Today", separator, "New"}))
        << "an index beyond an end counts as that end";
}

TEST_F(ToolbarTest, KeepsThePlaceOfAnItemThatNobodySuppliesYet) {
    remembers(QVariantList{"New", separator, "Plug", flexible, "Today"});
    delegate.supply.removeAll("Plug");
    {
        Window one(delegate);
        EXPECT_EQ(one.shown(), (QStringList{"New", flexible, "Today"})) << "nor its separator";
        EXPECT_TRUE(one.toolbar->insertItem("Back", 1));
        one.toolbar->moveItem(2, 0);
        EXPECT_EQ(one.shown(), (QStringList{flexible, "New", "Back", "Today"}));
        delegate.supply.append("Plug");
        one.toolbar->revalidate();
        EXPECT_NE(one.toolbar->controlFor("Plug"), nullptr) << "as soon as it is supplied";
    }
    EXPECT_TRUE(Window(delegate).shown().contains("Plug")) << "at another start of the program";
    EXPECT_EQ(remembered().count("Plug"), 1);
}

TEST_F(ToolbarTest, IsNotMisledByWhatStandsInTheDefaults) {
    const QStringList odd{"New", flexible, flexible};
    const std::pair<QVariant, QStringList> cases[] = {
        {u"New"_s, delegate.defaults},
        {QVariantList{}, {}},
        {QVariantList{1, QVariantMap{}, "", QString(1000, u'x'), "New", "New", QByteArray("Back"), flexible,
                      flexible},
         odd},
        {QVariantList(10'000, separator), QStringList(platform::ToolbarArrangement::maximumItems, separator)},
    };
    for (const auto &[stored, shown] : cases) {
        remembers(stored);
        EXPECT_EQ(Window(delegate).shown(), shown);
    }
    EXPECT_FALSE(Window(delegate).toolbar->insertItem(separator, 0)) << "it is full";
    desktop.userDefaults->values.insert(key, 7);
    EXPECT_EQ(Window(delegate).shown(), delegate.defaults);
}

TEST_F(ToolbarTest, OfTwoWindowsKeepInStepEachWithItsOwnControls) {
    int made = 0;
    delegate.item("New")->setView(
        [&made] {
            ++made;
            return new QLabel;
        },
        [](QWidget *view, const ToolbarItem &shown) { static_cast<QLabel *>(view)->setText(shown.label()); });
    Window one(delegate);
    auto two = std::make_unique<Window>(delegate);
    one.toolbar->insertItem("Plug", 1);
    EXPECT_EQ(two->shown(), one.shown());
    EXPECT_NE(one.toolbar->controlFor("Plug"), two->toolbar->controlFor("Plug"));
    EXPECT_EQ(made, 2) << "a control stays when another item comes";
    delegate.item("New")->setLabel("Other");
    delegate.item("Back")->setEnabled(false);
    for (const Toolbar *toolbar : {one.toolbar, two->toolbar}) {
        EXPECT_EQ(qobject_cast<QLabel *>(toolbar->controlFor("New"))->text(), "Other");
        EXPECT_FALSE(toolbar->controlFor("Back")->isEnabled());
    }
    two->toolbar->setDisplayMode(platform::ToolbarDisplayMode::TextOnly);
    EXPECT_EQ(one.toolbar->displayMode(), platform::ToolbarDisplayMode::TextOnly);
    two.reset();
    one.toolbar->removeItem(0);
    EXPECT_EQ(one.shown(), (QStringList{"Plug", "Back", flexible, "Today"}));
}

TEST_F(ToolbarTest, LivesOnWhenItsDelegateOrAnItemDies) {
    auto dying = std::make_unique<Delegate>();
    Window one(*dying);
    one.window.show();
    dying->items.erase("Back");
    QCoreApplication::processEvents();
    EXPECT_TRUE(one.shown().contains("Back")) << "made anew by the delegate";
    dying.reset();
    QCoreApplication::processEvents();
    one.toolbar->revalidate();
    EXPECT_TRUE(one.toolbar->paletteItems().size() >= 3);
    EXPECT_EQ(one.toolbar->controlFor("Back"), nullptr);
}

TEST_F(ToolbarTest, SurvivesAClickThatEndsItsWindowOrItsItem) {
    auto window = std::make_unique<Window>(delegate);
    delegate.item("Back")->setAction([this](ToolbarItem &, QWidget *) { delegate.items.erase("Back"); });
    delegate.item("Today")->setAction([&](ToolbarItem &, QWidget *) { window->toolbar->removeItem(2); });
    delegate.item("New")->setAction([&window](ToolbarItem &, QWidget *) { window.reset(); });
    window->window.show();
    static_cast<QToolButton *>(window->toolbar->controlFor("Back"))->click();
    EXPECT_EQ(delegate.items.count("Back"), 0u);
    static_cast<QToolButton *>(window->toolbar->controlFor("Today"))->click();
    delegate.item("New")->perform(nullptr);
    EXPECT_EQ(window, nullptr);
}

TEST_F(ToolbarTest, ValidatesOnceAfterManyKeys) {
    Window one(delegate);
    one.window.show();
    CountingItem *item = delegate.item("New");
    const auto isValidated = [item] { return item->validations > 0; };
    ASSERT_TRUE(QTest::qWaitFor(isValidated, 5000)); // what showing it began
    item->validations = 0;
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&one.window, Qt::Key_A);
    EXPECT_TRUE(QTest::qWaitFor(isValidated, 5000));
    EXPECT_EQ(item->validations, 1);
}

TEST_F(ToolbarTest, ReachesEveryItemInANarrowWindow) {
    delegate.item("Plug")->setView([] { return new QPushButton; }, nullptr);
    Window one(delegate);
    one.toolbar->insertItem("Plug", 99);
    one.window.setAnimated(false);
    one.window.resize(700, 600);
    one.window.show();
    auto *more = one.window.findChild<QToolButton *>(platform::toolbarExtensionButtonName);
    EXPECT_FALSE(more->isVisible());
    one.window.resize(90, 600);
    QCoreApplication::processEvents();
    ASSERT_TRUE(more->isVisible());
    EXPECT_FALSE(one.toolbar->controlFor("Plug")->isVisible());
    QTest::keyClick(more, Qt::Key_Space);
    for (const char *name : {"New", "Back", "Today", "Plug"})
        EXPECT_TRUE(QTest::qWaitFor([&] { return one.toolbar->controlFor(name)->isVisible(); }, 5000))
            << name;
}

TEST_F(ToolbarTest, IsWalkedThroughByTabInItsOrder) {
    Window one(delegate);
    one.toolbar->insertItem("Spare", 0);
    one.window.show();
    one.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&one.window));
    one.toolbar->controlFor("Spare")->setFocus(Qt::TabFocusReason);
    for (const char *name : {"New", "Back", "Today"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), one.toolbar->controlFor(name)) << name;
    }
}

// The sheet in which the user arranges the tool-bar.
class CustomizationTest : public ToolbarTest {
protected:
    void SetUp() override {
        one.window.show();
        one.toolbar->customize();
        ASSERT_TRUE(sheet() != nullptr);
    }
    [[nodiscard]] QDialog *sheet() const {
        return one.window.findChild<QDialog *>(platform::customization::sheet);
    }
    template<typename T>
    T *control(const QString &name) const {
        return sheet()->findChild<T *>(name);
    }
    void press(const QString &name) const { QTest::keyClick(control<QPushButton>(name), Qt::Key_Space); }
    void select(const QString &listName, const QString &identifier) const {
        auto *list = control<QListWidget>(listName);
        for (int row = 0; row < list->count(); ++row)
            if (list->item(row)->data(Qt::UserRole).toString() == identifier)
                return list->setCurrentRow(row);
        ADD_FAILURE() << qPrintable(identifier) << " is not in " << qPrintable(listName);
    }
    Window one{delegate};
};

TEST_F(CustomizationTest, WorksByKeyboard) {
    using namespace platform::customization;
    select(arrangement, "New");
    select(palette, "Spare");
    press(addButton);
    EXPECT_EQ(one.shown(), (QStringList{"New", "Spare", "Back", flexible, "Today"}));
    press(laterButton);
    press(laterButton);
    EXPECT_EQ(one.shown(), (QStringList{"New", "Back", flexible, "Spare", "Today"}));
    press(earlierButton);
    press(removeButton);
    EXPECT_EQ(one.shown(), (QStringList{"New", "Back", flexible, "Today"}));
    select(palette, "Spare"); // what was removed can be had again
    select(arrangement, "Today");
    EXPECT_FALSE(control<QPushButton>(laterButton)->isEnabled());
    QTest::keyClick(control<QComboBox>(displayMode), Qt::Key_Down);
    EXPECT_EQ(one.toolbar->displayMode(), platform::ToolbarDisplayMode::IconOnly);
    one.toolbar->removeItem(0);
    press(restoreButton);
    EXPECT_EQ(one.shown(), delegate.defaults);
    EXPECT_EQ(one.toolbar->displayMode(), platform::ToolbarDisplayMode::IconAndText);
    press(doneButton);
    settle();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(CustomizationTest, EndsWithItsTool) {
    delete one.toolbar;
    EXPECT_TRUE(one.window.findChildren<platform::ToolbarCustomization *>().isEmpty());
}

} // namespace
