// The tool-bar: its items, their stored arrangement, and the sheet in which the user changes it.
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

// Supplies the items that are named in `supply` and owns them.
class Delegate : public rt::Object {
public:
    Delegate()
        : rt::Object(cls()) {}
    QStringList supply{"New", "Back", "Today", "Plug", "Spare"};
    QStringList defaults{"New", "Back", flexible, "Today"};
    std::map<QString, std::unique_ptr<CountingItem>> items;

    CountingItem *item(const QString &identifier) {
        if (!supply.contains(identifier))
            return nullptr;
        std::unique_ptr<CountingItem> &item = items[identifier];
        if (!item) {
            item = std::make_unique<CountingItem>(identifier);
            item->setLabel(identifier);
        }
        return item.get();
    }

private:
    static rt::Class *cls() {
        rt::Class *made = rt::defineClass(u"ToolbarTestDelegate"_s);
        const auto define = [made](const char *selector, rt::Implementation method) {
            rt::addMethod(made, selector, method, "");
        };
        define("toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:",
               [](rt::Object *self, rt::Selector, rt::Args arguments) {
                   return rt::fromObject(static_cast<Delegate *>(self)->item(rt::textValue(arguments[1])));
               });
        define("toolbarDefaultItemIdentifiers:", [](rt::Object *self, rt::Selector, rt::Args) {
            return rt::Value(rt::Value(static_cast<Delegate *>(self)->defaults).toList());
        });
        define("toolbarAllowedItemIdentifiers:", [](rt::Object *, rt::Selector, rt::Args) {
            return rt::Value(QVariantList{"New", "Back", "Today", "Spare"});
        });
        return made;
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
    void store(const QVariant &items) {
        desktop.userDefaults->values.insert(key, QVariantMap{{"items", items}});
    }

    platform::TestDesktop desktop = platform::installTestServices();
    Delegate delegate;
};

TEST_F(ToolbarTest, StoresAnArrangementOnlyWhenItChanges) {
    Window one(delegate);
    EXPECT_EQ(one.shown(), delegate.defaults);
    EXPECT_TRUE(desktop.userDefaults->values.isEmpty());
    EXPECT_TRUE(one.toolbar->insertItem("Spare", 1));
    EXPECT_EQ(Window(delegate).shown(), (QStringList{"New", "Spare", "Back", flexible, "Today"}));
    const int writes = desktop.userDefaults->synchronizations;
    EXPECT_FALSE(one.toolbar->insertItem("Spare", 0)) << "it is already there";
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

TEST_F(ToolbarTest, KeepsThePlaceOfAnItemThatIsNotSuppliedYet) {
    store(QVariantList{"New", separator, "Plug", flexible, "Today"});
    delegate.supply.removeAll("Plug");
    Window one(delegate);
    EXPECT_EQ(one.shown(), (QStringList{"New", flexible, "Today"})) << "nor its separator";
    EXPECT_TRUE(one.toolbar->insertItem("Back", 1));
    one.toolbar->moveItem(2, 0);
    EXPECT_EQ(one.shown(), (QStringList{flexible, "New", "Back", "Today"}));
    delegate.supply.append("Plug");
    one.toolbar->revalidate();
    EXPECT_NE(one.toolbar->controlFor("Plug"), nullptr) << "as soon as it is supplied";
    EXPECT_EQ(Window(delegate).shown().count("Plug"), 1) << "also the next time";
}

TEST_F(ToolbarTest, LeavesOutStoredEntriesThatAreNotIdentifiers) {
    const std::pair<QVariant, QStringList> cases[] = {
        {u"New"_s, delegate.defaults},
        {QVariantList{}, {}},
        {QVariantList{1, QVariantMap{}, "", QString(1000, u'x'), "New", "New", flexible, flexible},
         {"New", flexible, flexible}},
        {QVariantList(10'000, separator), QStringList(platform::ToolbarArrangement::maximumItems, separator)},
    };
    for (const auto &[stored, shown] : cases) {
        store(stored);
        EXPECT_EQ(Window(delegate).shown(), shown);
    }
    EXPECT_FALSE(Window(delegate).toolbar->insertItem(separator, 0)) << "it is full";
}

TEST_F(ToolbarTest, ShowsTheSameInTwoWindowsEachWithItsOwnControls) {
    int made = 0;
    delegate.item("New")->setView(
        [&made] {
            ++made;
            return new QLabel;
        },
        [](QWidget *view, const ToolbarItem &item) { static_cast<QLabel *>(view)->setText(item.label()); });
    Window one(delegate);
    auto two = std::make_unique<Window>(delegate);
    one.toolbar->insertItem("Plug", 1);
    EXPECT_EQ(two->shown(), one.shown());
    EXPECT_NE(one.toolbar->controlFor("Plug"), two->toolbar->controlFor("Plug"));
    EXPECT_EQ(made, 2) << "a control stays when another item is inserted";
    delegate.item("New")->setLabel("Other");
    delegate.item("Back")->setEnabled(false);
    for (const Toolbar *toolbar : {one.toolbar, two->toolbar}) {
        EXPECT_EQ(qobject_cast<QLabel *>(toolbar->controlFor("New"))->text(), "Other");
        EXPECT_FALSE(toolbar->controlFor("Back")->isEnabled());
    }
    two->toolbar->setDisplayMode(platform::ToolbarDisplayMode::TextOnly);
    EXPECT_EQ(one.toolbar->displayMode(), platform::ToolbarDisplayMode::TextOnly);
}

TEST_F(ToolbarTest, SurvivesTheEndOfAnItemItsWindowOrItsDelegate) {
    auto dying = std::make_unique<Delegate>();
    auto window = std::make_unique<Window>(*dying);
    dying->item("Back")->setAction([&](ToolbarItem &, QWidget *) { dying->items.erase("Back"); });
    dying->item("Today")->setAction([&](ToolbarItem &, QWidget *) { window->toolbar->removeItem(2); });
    dying->item("New")->setAction([&window](ToolbarItem &, QWidget *) { window.reset(); });
    window->window.show();
    static_cast<QToolButton *>(window->toolbar->controlFor("Back"))->click();
    EXPECT_EQ(dying->items.count("Back"), 0u);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window->shown().contains("Back")) << "made anew by the delegate";
    static_cast<QToolButton *>(window->toolbar->controlFor("Today"))->click();
    dying->item("New")->perform(nullptr);
    EXPECT_EQ(window, nullptr);
    Window other(*dying);
    dying.reset();
    other.toolbar->revalidate();
    EXPECT_EQ(other.toolbar->controlFor("New"), nullptr);
}

TEST_F(ToolbarTest, ValidatesOnceAfterManyKeys) {
    Window one(delegate);
    one.window.show();
    CountingItem *item = delegate.item("New");
    const auto isValidated = [item] { return item->validations > 0; };
    ASSERT_TRUE(QTest::qWaitFor(isValidated, 5000)); // because the window was shown
    item->validations = 0;
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&one.window, Qt::Key_A);
    EXPECT_TRUE(QTest::qWaitFor(isValidated, 5000));
    EXPECT_EQ(item->validations, 1);
}

TEST_F(ToolbarTest, GivesTheFocusToItsItemsInTheirOrder) {
    Window one(delegate);
    one.toolbar->insertItem("Spare", 2);
    one.window.show();
    one.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&one.window));
    one.toolbar->controlFor("New")->setFocus(Qt::TabFocusReason);
    for (const char *name : {"Back", "Spare", "Today"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), one.toolbar->controlFor(name)) << name;
    }
}

TEST_F(ToolbarTest, IsCustomizedByKeyboard) {
    using namespace platform::customization;
    Window one(delegate);
    one.window.show();
    platform::customizeToolbar(one.toolbar);
    const auto press = [&one](const QString &name) {
        QTest::keyClick(one.window.findChild<QPushButton *>(name), Qt::Key_Space);
    };
    const auto select = [&one](const QString &listName, const QString &title) {
        auto *list = one.window.findChild<QListWidget *>(listName);
        const QList<QListWidgetItem *> found = list->findItems(title, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << qPrintable(title) << " in " << qPrintable(listName);
        list->setCurrentItem(found.first());
    };
    select(arrangement, "New");
    select(palette, "Spare");
    press(addButton);
    press(laterButton);
    press(laterButton);
    EXPECT_EQ(one.shown(), (QStringList{"New", "Back", flexible, "Spare", "Today"}));
    press(earlierButton);
    press(removeButton);
    EXPECT_EQ(one.shown(), (QStringList{"New", "Back", flexible, "Today"}));
    select(palette, "Spare"); // a removed item can be added again
    select(arrangement, "Today");
    EXPECT_FALSE(one.window.findChild<QPushButton *>(laterButton)->isEnabled());
    QTest::keyClick(one.window.findChild<QComboBox *>(displayMode), Qt::Key_Down);
    EXPECT_EQ(one.toolbar->displayMode(), platform::ToolbarDisplayMode::IconOnly);
    one.toolbar->removeItem(0);
    press(restoreButton);
    EXPECT_EQ(one.shown(), delegate.defaults);
    EXPECT_EQ(one.toolbar->displayMode(), platform::ToolbarDisplayMode::IconAndText);
    press(doneButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(one.window.findChild<QDialog *>(sheet), nullptr);
}

} // namespace
