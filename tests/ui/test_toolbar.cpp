// The plug-in's items in the main window's tool-bar.
#include "plugin/host/adapters/vlErageAppDelegate.h"
#include "plugin/link/vlCommon.h"
#include "plugin/ui/controls/vlPopupToolbarView.h"
#include "plugin/ui/toolbar/vlToolbarItemMgr.h"
#include "tests/support/ScriptedClient.h"
#include "tests/support/Warnings.h"
#include "tests/ui/UiFixture.h"

namespace {

class ToolbarItems : public UiTest {
protected:
    static QAction *choice(const VlToolbarItem *item, int tag) {
        for (QAction *action : item->menu()->actions())
            if (action->property("tag") == tag)
                return action;
        return nullptr;
    }
    vlToolbarItemMgr manager;
};

} // namespace

TEST_F(ToolbarItems, AreMadeOnceAndNoOtherIdentifierHasOne) {
    QStringList labels;
    for (const char *identifier :
         {"VLStartToolbarItem", "VLScheduleToolbarItem", "VLSchedulePACToolbarItem", "VLOpenLogFolder"}) {
        VlToolbarItem *item = manager.itemFor(identifier);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item, manager.itemFor(identifier));
        EXPECT_EQ(item->itemIdentifier(), identifier);
        EXPECT_FALSE(item->image().isNull());
        EXPECT_EQ(item->paletteLabel(), "[VlPalletLabel]");
        EXPECT_EQ(item->toolTip(), QString(item->label()).replace("Label", "Tooltip"));
        labels.append(item->label());
    }
    EXPECT_EQ(labels, (QStringList{"[InstantMeetingLabel]", "[ScheduleMeetingLabel]",
                                   "[SchedulePACMeetingLabel]", "[OpenLogFolderLabel]"}));
    EXPECT_EQ(manager.itemFor(u"NewMeeting"_s), nullptr);
    EXPECT_EQ(manager.itemFor(QString()), nullptr);
}

TEST_F(ToolbarItems, AreUsableWhileTheHostIsSupportedEvenIfTheSystemIsTooOld) {
    desktop.workspace->version = 0x1060;
    VlToolbarItem *item = manager.VLOpenLogFolderToolbarItem();
    EXPECT_EQ(item->toolTip(),
              "Your version of OS is not supported. Please upgrade your OS version to 10.6 later.");
    item->validate();
    EXPECT_FALSE(item->isEnabled());
    installHost(desktop, u"14.1.4"_s);
    item->validate();
    EXPECT_TRUE(item->isEnabled());
    item->perform(nullptr);
    EXPECT_EQ(desktop.workspace->opened, QStringList{vlCommon::getDocumentOutlookPluginRootPath()});
}

TEST_F(ToolbarItems, OfferTheStartWithoutVideoOnlyOfAClientThatCan) {
    VlToolbarItem *item = manager.VLStartToolbarItem();
    EXPECT_EQ(choice(item, 0)->text(), echo("StartWithVideo"));
    EXPECT_EQ(choice(item, 1)->text(), echo("StartWithoutVideo"));
    EXPECT_TRUE(choice(item, 0)->isEnabled());
    EXPECT_FALSE(choice(item, 1)->isEnabled());
    ScriptedClient client(desktop);
    item->menu()->aboutToShow(); // the client has been updated
    EXPECT_TRUE(choice(item, 1)->isEnabled());
    for (const bool withVideo : {true, false}) {
        choice(item, withVideo ? 0 : 1)->trigger();
        desktop.runLoop->advance(0);
        EXPECT_EQ(client.last().json.value("launchtype"), withVideo ? "groupVideo" : "groupShare");
    }
}

TEST_F(ToolbarItems, ScheduleTheAudioConferenceOfTheChosenAccountOnTheNextTurn) {
    FakeObject application(u"ErageAppDelegate"_s);
    vlCommandItemMgr::sharedInstance().initPluginInstance();
    QVariantMap &left = platform::services().mainThreadDictionary;
    VlToolbarItem *item = manager.vlSchedulePACToolbarItem();
    for (const int tag : {0, 1}) {
        EXPECT_FALSE(choice(item, tag)->text().isEmpty());
        left.clear();
        choice(item, tag)->trigger();
        EXPECT_TRUE(left.isEmpty());
        desktop.runLoop->advance(0);
        EXPECT_EQ(left.value(keyFlagVlMeetingArgument).toMap().value("pacAccountNo"), tag + 1);
        EXPECT_TRUE(left.contains(keyFlagAutoAddToPACMeeting));
    }
    left.clear();
    QAction untagged;
    manager.onContextMenuAction_SchedulePAC(&untagged);
    manager.onContextMenuAction_Start(&untagged);
    manager.onContextMenuAction_Start(nullptr);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
    manager.VLScheduleToolbarItem()->perform(nullptr);
    EXPECT_TRUE(left.contains(keyFlagAutoAddToVlMeeting));
    EXPECT_FALSE(left.contains(keyFlagVlMeetingArgument));
    EXPECT_EQ(vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(5), 0);
}

TEST_F(ToolbarItems, HaveAViewOfTheirOwnInEachToolbarAllOpeningOneMenu) {
    expectWarning(u"This plugin does not support"_s); // menus, without a real display
    VlToolbarItem *item = manager.VLStartToolbarItem();
    std::unique_ptr<QWidget> first(item->makeView()), second(item->makeView());
    EXPECT_NE(first, second);
    auto *view = qobject_cast<vlPopupToolbarView *>(first.get());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->sizeHint(), QSize(32, 32));
    EXPECT_EQ(view->menu(), item->menu());
    const QImage empty = view->grab().toImage();
    item->fillView(view);
    EXPECT_NE(view->grab().toImage(), empty);
    EXPECT_EQ(view->accessibleName(), echo("InstantMeetingLabel"));
    EXPECT_EQ(view->accessibleDescription(), item->toolTip());
    EXPECT_EQ(view->toolTip(), item->toolTip());
    first.reset();
    second->show();
    item->perform(second.get());
    EXPECT_TRUE(item->menu()->isVisible());
    item->menu()->close();
}
