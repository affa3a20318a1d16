// The plug-in's items in the tool-bars of main windows.
#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "tests/hooks/HooksFixture.h"

using namespace hookedhost;

namespace {

const QString flex = platform::toolbarFlexibleSpaceIdentifier;
const QString bar = platform::toolbarSeparatorIdentifier;

void addBoth() {
    vlHookERageMainWindowController &hook = vlHookERageMainWindowController::sharedInstance();
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlStartToolbarItemIdentifier);
}

} // namespace

TEST_F(HooksTest, TheItemsStandBeforeTheLastFlexibleSpace) {
    const QString schedule = vlScheduleToolbarItemIdentifier;
    const QString start = vlStartToolbarItemIdentifier;
    const struct {
        QStringList before, after;
    } cases[] = {
        {{"A", flex}, {"A", bar, schedule, bar, start, flex}},
        {{"A", bar, flex}, {"A", bar, schedule, bar, start, flex}},
        {{flex, "A", flex}, {flex, "A", bar, schedule, bar, start, flex}},
        {{"A"}, {start, schedule, "A"}},
        {{flex, "A"}, {schedule, bar, start, flex, "A"}},
        {{}, {start, schedule}},
        {{"A", schedule, flex}, {"A", schedule, bar, start, flex}},
        {{start, schedule, "A", flex}, {start, schedule, "A", flex}},
    };
    for (const auto &one : cases) {
        desktop.userDefaults->values.clear();
        HostWindow window(one.before);
        addBoth();
        EXPECT_EQ(window.shown().join(u' '), one.after.join(u' '));
        addBoth();
        EXPECT_EQ(window.shown().join(u' '), one.after.join(u' '));
    }
}

TEST_F(HooksTest, LoadingAddsTheItemsToTheOpenWindowsAndMakesThemWork) {
    EXPECT_EQ(itemsAfterLoading,
              (QStringList{vlStartToolbarItemIdentifier, vlScheduleToolbarItemIdentifier, u"A"_s}));
    vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting));
    EXPECT_TRUE(platform::services().mainThreadDictionary.contains(keyFlagAutoAddToVlMeeting));
}

TEST_F(HooksTest, AHiddenToolbarAndAWindowOfAnotherKindGetNothing) {
    HostWindow window({"A", flex});
    window.toolbar->hide();
    addBoth();
    EXPECT_EQ(window.shown(), (QStringList{"A", flex}));
    window.toolbar->show();
    platform::registerWindow(&window, &editor);
    addBoth();
    EXPECT_EQ(window.shown(), (QStringList{"A", flex}));
    vlHookERageMainWindowController::sharedInstance().addVelaButtonToToolbar(nullptr, u"x"_s);
}

TEST_F(HooksTest, AllFourItemsCanBeAddedByHandAndComeBackWithTheDefault) {
    HostWindow window({"A", flex});
    addBoth();
    QStringList offered;
    for (const platform::ToolbarItem *item : window.toolbar->paletteItems())
        offered.append(item->itemIdentifier());
    EXPECT_TRUE(offered.contains(vlSchedulePACToolbarItemIdentifier));
    EXPECT_TRUE(offered.contains(vlOpenLogFolderIdentifier));
    const QStringList usual = window.shown();
    while (!window.shown().isEmpty())
        window.toolbar->removeItem(0);
    window.toolbar->restoreDefault();
    EXPECT_EQ(window.shown(), usual);
}
