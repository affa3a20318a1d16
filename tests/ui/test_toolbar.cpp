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
        EXPECT_FALSE(item->image().isNull());
        EXPECT_EQ(item->paletteLabel(), "[VlPalletLabel]");
        EXPECT_EQ(item->toolTip(), QString(item->label()).replace("Label", "Tooltip"));
        labels.append(item->label());
    }
    EXPECT_EQ(labels, (QStringList{"[InstantMeetingLabel]", "[ScheduleMeetingLabel]",
                                   "[SchedulePACMeetingLabel]", "[OpenLogFolderLabel]"}));
    EXPECT_EQ(manager.itemFor(u"NewMeeting"_s), nullptr);
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
        left.clear();
        choice(item, tag)->trigger();
        EXPECT_TRUE(left.isEmpty());
        desktop.runLoop->advance(0);
        EXPECT_EQ(left.value(keyFlagVlMeetingArgument).toMap().value("pacAccountNo"), tag + 1);
        EXPECT_TRUE(left.contains(keyFlagAutoAddToPACMeeting));
    }
    EXPECT_EQ(desktop.workspace->activations, 2);
    left.clear();
    manager.VLScheduleToolbarItem()->perform(nullptr);
    EXPECT_TRUE(left.contains(keyFlagAutoAddToVlMeeting));
    EXPECT_FALSE(left.contains(keyFlagVlMeetingArgument));
}

TEST_F(ToolbarItems, HaveAViewOfTheirOwnInEachToolbarAllOpeningOneMenu) {
    expectWarning(u"This plugin does not support"_s); // menus, without a real display
    VlToolbarItem *item = manager.VLStartToolbarItem();
    const std::unique_ptr<QWidget> made(item->makeView()), another(item->makeView());
    auto *view = qobject_cast<vlPopupToolbarView *>(made.get());
    ASSERT_TRUE(view && made != another);
    EXPECT_EQ(view->sizeHint(), QSize(32, 32));
    view->resize(view->sizeHint());
    item->fillView(view);
    EXPECT_EQ(view->grab().toImage().pixelColor(31, 31), QColor(Qt::blue)) << "the image fills the view";
    view->setEnabled(false);
    for (const int ratio : {1, 2}) {
        const QColor grayed = picture(*view, ratio).pixelColor(32 * ratio - 1, 32 * ratio - 1);
        EXPECT_TRUE(grayed != Qt::blue && grayed != Qt::darkBlue && grayed != Qt::white) << ratio;
    }
    view->setEnabled(true);
    EXPECT_EQ(view->accessibleName(), echo("InstantMeetingLabel"));
    EXPECT_EQ(view->accessibleDescription(), item->toolTip());
    EXPECT_EQ(view->toolTip(), item->toolTip());
    view->show();
    EXPECT_TRUE(repaints(*view, [view] { view->setImage(BundleImage(u"another"_s)); }));
    EXPECT_EQ(view->focusPolicy(), Qt::TabFocus);
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view));
    QTest::keyClick(view, Qt::Key_Tab); // styles show the focus to a user of the keyboard only
    view->clearFocus();
    const QImage unmarked = view->grab().toImage();
    view->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(unmarked.pixelColor(16, 0), QColor(Qt::blue));
    EXPECT_NE(view->grab().toImage().pixelColor(16, 0), unmarked.pixelColor(16, 0));
    const std::function<void()> ways[] = {[&] { item->perform(view); },
                                          [&] { QTest::mousePress(view, Qt::LeftButton); },
                                          [&] { QTest::keyClick(view, Qt::Key_Space); }};
    for (const auto &open : ways) {
        QTest::keyClick(view, Qt::Key_A);
        EXPECT_FALSE(item->menu()->isVisible());
        open();
        EXPECT_TRUE(item->menu()->isVisible());
        EXPECT_EQ(item->menu()->pos(), view->mapToGlobal(QPoint(0, view->height())));
        item->menu()->close();
    }
    vlPopupToolbarView().click(); // without a menu nothing happens
}
