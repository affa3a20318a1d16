// What the hooks add to the host. The host's own methods still run.
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Toolbar.h"
#include "platform/toolkit/Windows.h"
#include "plugin/hooks/loadSteps.h"
#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/hooks/HookedHost.h"
#include "tests/support/FreshPlugin.h"
#include "tests/support/RecordingPorts.h"
#include "tests/support/ScriptedClient.h"
#include "tests/support/Warnings.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace hookedhost;

namespace {

const QString olderHeader = u"OLCalendarHeaderContainerView"_s;
const QString newerHeader = u"OLAutoLayoutAttachmentsAcceptingView"_s;

class HookedStrip : public RecordingStrip {
public:
    using RecordingStrip::RecordingStrip;
    void setOLUIAction(HostAction newAction) override {
        action = newAction;
        if (whenAsked)
            whenAsked();
    }
    [[nodiscard]] bool currentIsVelaMeeting() const override {
        return breaks ? throw std::runtime_error("broken") : RecordingStrip::currentIsVelaMeeting();
    }
    void refreshUI() override { ++refreshes; }
    void enableChangeSettingButton(bool enabled) override { canChangeSettings = enabled; }

    int refreshes = 0;
    bool canChangeSettings = false;
    bool breaks = false; // as a defect of the plug-in does
    std::function<void()> whenAsked;
};

// A main window whose tool-bar has the given items by default. The host makes the item "A" for each of them.
struct HostWindow : QMainWindow {
    explicit HostWindow(const QStringList &identifiers) {
        // Kept to the end of the process: any tool-bar may show it.
        static platform::ToolbarItem *const hostItem = new platform::ToolbarItem(u"A"_s);
        answers().insert(u"ERageMainWindowController "
                         "vl_ERageMainWindowController_toolbarDefaultItemIdentifiers:"_s,
                         QVariantList(identifiers.cbegin(), identifiers.cend()));
        answers().insert(u"ERageMainWindowController vl_ERageMainWindowController_toolbarItem:"
                         "itemForItemIdentifier:willBeInsertedIntoToolbar:"_s,
                         rt::fromObject(hostItem));
        addToolBar(toolbar);
        platform::registerWindow(this, &controller);
        toolbar->setDelegate(&controller);
    }
    ~HostWindow() override { platform::unregisterWindow(this); }
    [[nodiscard]] QStringList shown() const {
        QStringList identifiers;
        for (const platform::ToolbarItem *item : toolbar->visibleItems())
            identifiers.append(item->itemIdentifier());
        return identifiers;
    }
    FakeObject controller{"ERageMainWindowController"};
    platform::Toolbar *toolbar = new platform::Toolbar(u"Main"_s);
};

class HooksTest : public testing::Test {
protected:
    // The hooks stay installed until the process ends.
    static void SetUpTestSuite() {
        const QTemporaryDir folder;
        installServices(folder);
        define();
        HostWindow window({u"A"_s});
        runLoadSteps();
        itemsAfterLoading = window.shown();
    }
    static platform::TestDesktop installServices(const QTemporaryDir &folder) {
        platform::TestDesktop desktop = platform::installTestServices();
        desktop.workspace->root = folder.path();
        installHost(desktop, u"16.0"_s);
        return desktop;
    }

    HooksTest() {
        WorkflowPorts::instance().strips = &strips;
        WorkflowPorts::instance().createStrip = [this](QWidget *header, const QRectF &frame) {
            strips.createStrip(header, frame);
        };
        strip.blocked = true;
        strip.context()->meetingKey = u"840000017"_s;
        calls().clear();
        answers().clear();
    }
    ~HooksTest() override {
        fakehost::during() = nullptr;
        WorkflowPorts::instance() = {};
    }

    inline static QStringList itemsAfterLoading;
    QTemporaryDir folder;
    platform::TestDesktop desktop = installServices(folder);
    RecordingStrips strips;
    RecordingAlerts alerts;
    FakeAppointment event;
    FakeEditor editor{event};
    HookedStrip strip{editor};
    FakeObject controller{"CCGridViewController", {{"selectedEvent", rt::fromObject(&event)}}};
    FakeObject grid{"OLCalendarGridViewWrapper", {{"gridViewController", rt::fromObject(&controller)}}};
};

const QString flex = platform::toolbarFlexibleSpaceIdentifier;
const QString bar = platform::toolbarSeparatorIdentifier;

void addBoth() {
    vlHookERageMainWindowController &hook = vlHookERageMainWindowController::sharedInstance();
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlStartToolbarItemIdentifier);
}

} // namespace

TEST_F(HooksTest, OnlyTheVeryHeaderClassGetsAStripAndMovesIt) {
    const QString subclassName =
        rt::defineClass(u"ASubclassOfTheHeader"_s, rt::classNamed(olderHeader))->name();
    FakeView older(olderHeader), subclass(subclassName), newer(newerHeader);
    for (FakeView *view : {&older, &subclass, &newer})
        rt::send(view, "initWithFrame:", QRectF(0, 0, 900, 90));
    ASSERT_EQ(strips.created.size(), 2);
    EXPECT_EQ(strips.created[0].first, &older);
    EXPECT_EQ(strips.created[1].first, &newer);

    subclass.setGeometry(0, 0, 1000, 120);
    vlActionAdditionView placed(g_vlAdditionViewFrame, &subclass);
    const QRect before = placed.geometry();
    rt::send(&subclass, "drawRect:", QRectF(subclass.rect()));
    EXPECT_EQ(placed.geometry(), before);
}

// The first time zone label in a row decides, wherever the header is. No other text has an effect.
TEST_F(HooksTest, TheStripIsPlacedByTheHeadersRightEdgeAndItsTimeZoneRow) {
    const char *zone = "Time zone:";
    const struct {
        int x, width;
        const char *first, *second;
        bool firstShown;
        QRectF expected;
    } cases[] = {
        {0, 800, "Ends:", "", true, {460, -10, 330, 70}},
        {0, 900, zone, "", true, {490, 13, 400, 70}},
        {0, 1000, zone, zone, true, {590, 13, 400, 70}},
        {100, 800, zone, zone, false, {490, -10, 400, 70}},
        {0, 1000, "Ends:", zone, true, {590, 13, 400, 70}},
        {0, 1000, "time zone:", "Time zone", true, {590, -10, 400, 70}},
    };
    for (const QString &name : {olderHeader, newerHeader}) {
        for (const auto &one : cases) {
            FakeView header(name);
            header.setGeometry(one.x, 0, one.width, 120);
            vlActionAdditionView placed(g_vlAdditionViewFrame, &header);
            QLabel outside(zone, &header); // it does not belong to a row
            FakeView row(u"OLAutoLayoutView"_s, &header);
            QLabel first(one.first, &row), second(one.second, &row);
            outside.show();
            row.show();
            first.setVisible(one.firstShown);
            calls().clear();
            rt::send(&header, "drawRect:", QRectF(header.rect()));
            EXPECT_EQ(platform::bottomLeftFrame(&placed), one.expected) << qPrintable(name) << one.first;
            EXPECT_EQ(calls().size(), 1) << "the host draws first";
            row.hide();
            rt::send(&header, "drawRect:", QRectF(header.rect()));
            EXPECT_EQ(platform::bottomLeftFrame(&placed).y(), -10) << "the row is hidden";
        }
    }
    FakeView row(u"OLAutoLayoutView"_s);
    calls().clear();
    EXPECT_EQ(rt::send(&row, "drawRect:", QRectF()), rt::Value(true));
    EXPECT_TRUE(calls().isEmpty()) << "a row of the newer header does not paint itself";
}

TEST_F(HooksTest, ASaveThatNeedsTheClientIsHeldBackAndOneThatDoesNotGoesOn) {
    using enum HostAction;
    const std::tuple<const char *, std::vector<rt::Value>, rt::Value, HostAction> cases[] = {
        {"saveAndCloseWindow:", {true}, -1, ActionSaveAndClose},
        {"save:", {rt::Value()}, true, ActionSave},
        {"saveAndCloseWindow:andReturnError:", {true, rt::Value()}, -1, ActionSaveAndCloseWithError},
        {"sendMeetingPostValidate", {}, true, ActionSend},
    };
    strips.live = {&strip};
    for (const auto &[selector, arguments, held, action] : cases) {
        calls().clear();
        strip.status = DataStatus::DeleteMeeting; // the save is held back; this strip blocks the request
        EXPECT_EQ(rt::sendArgs(&editor, rt::Selector(selector), arguments), held) << selector;
        EXPECT_TRUE(calls().isEmpty()) << selector;
        EXPECT_EQ(strip.action, action);
        strip.status = DataStatus::NothingToDo;
        rt::sendArgs(&editor, rt::Selector(selector), arguments);
        EXPECT_EQ(calls().size(), 1) << selector;
    }
    strips.live.clear();
    calls().clear();
    rt::send(&editor, "save:", rt::Value());
    rt::send(&editor, "sendMeetingPostValidate");
    EXPECT_EQ(calls().size(), 2) << "an editor without a strip saves as the host does";
}

// The meeting is for the user, but the editor now acts for the boss.
TEST_F(HooksTest, TheEditionForItRefusesToSendAMeetingForAnotherPerson) {
    FakeObject account("ECEmailAccount", {{"emailAddress", "boss@example.org"}});
    editor.values.insert("isDelegating", true);
    editor.values.insert("currentEmailAccount", rt::fromObject(&account));
    const QVariantMap boss{{"displayName", "B"}, {"email", "boss@example.org"}};
    vlUserProfileHelper::sharedInstance().setUserProfile(QVariantMap{{"bosses", QVariantList{boss}}});
    strips.live = {&strip};
    WorkflowPorts::instance().alerts = &alerts;
    rt::send(&editor, "sendMeetingPostValidate");
    EXPECT_EQ(calls().size(), vlPluginBuildMgr::supportScheduleFor() ? 0 : 1);
    EXPECT_EQ(alerts.removeWarnings, vlPluginBuildMgr::supportScheduleFor() ? 1 : 0);
    vlUserProfileHelper::sharedInstance().clearUserProfile();
}

TEST_F(HooksTest, NothingIsSavedSentOrDeletedWhenThePluginCannotTellWhetherItMayBe) {
    for (const char16_t *work :
         {u"saving an", u"checking for whom", u"deleting a meeting", u"changing a meeting"})
        expectWarning(QString::fromUtf16(work));
    strips.live = {&strip};
    strip.whenAsked = [] { throw std::runtime_error("broken"); };
    EXPECT_EQ(rt::send(&editor, "save:", rt::Value()), rt::Value(false));
    strip.whenAsked = nullptr;
    strip.breaks = true;
    rt::send(&editor, "sendMeetingPostValidate");
    fakehost::during() = [] { throw std::runtime_error("broken"); };
    EXPECT_EQ(rt::send(&event, "deleteEventNow"), rt::Value(false));
    rt::send(&event, "cancelMeetingInWindow:", rt::Value());
    rt::send(&grid, "subjectChanged:forEvent:andTileView:", u"New"_s, rt::Value(), rt::Value());
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(HooksTest, TheStripFollowsTheFromFieldAndTheRecurrenceSheet) {
    strips.live = {&strip};
    rt::send(&editor, "fromFieldModified:", rt::Value());
    EXPECT_TRUE(strip.refreshes == 1 && strip.canChangeSettings);
    for (const auto &[code, refreshes] : {std::pair{0, 2}, {1, 3}, {2, 3}, {-1, 3}}) {
        rt::send(&editor, "switchToRecurrenceDidEnd:returnCode:contextInfo:", rt::Value(), code, rt::Value());
        EXPECT_EQ(strip.refreshes, refreshes) << code;
    }
}

// The plug-in asks the client, which does not run here, only about the user's own meetings.
TEST_F(HooksTest, AChangeOnTheCalendarIsTheHostsOnlyWhenTheClientNeedNotBeAsked) {
    const struct {
        bool hasMeeting, isOwner, actionResult, moves, deletes, cancels;
    } cases[] = {{false, true, false, true, true, true},
                 {true, false, false, true, false, false},
                 {true, false, true, true, true, true},
                 {true, true, false, false, false, false},
                 {true, true, true, false, false, true}};
    answers().insert(u"ECCalendarEvent vl_ECCalendarEvent_deleteEventNow"_s, true);
    for (const auto &one : cases) {
        event.carriesTheMeeting(one.hasMeeting ? u"840000017"_s : QString());
        event.values.insert("isOwner", one.isOwner);
        for (const HookRowName row :
             {HookRowName::GridResize, HookRowName::GridMove, HookRowName::GridRename}) {
            const HookRow &hook = hookRow(row);
            answers().insert(u"OLCalendarGridViewWrapper "_s + hook.replacementSelector, u"the host's"_s);
            const rt::Selector selector(hook.hostSelector);
            const std::vector<rt::Value> arguments(std::size_t(selector.argumentCount()));
            EXPECT_EQ(rt::sendArgs(&grid, selector, arguments),
                      one.moves ? rt::Value(u"the host's"_s) : rt::Value(true))
                << hook.hostSelector;
        }
        vlCalendarActionMgr::sharedInstance().setActionResult(one.actionResult);
        EXPECT_EQ(rt::send(&event, "deleteEventNow"), rt::Value(one.deletes));
        calls().clear();
        rt::send(&event, "cancelMeetingInWindow:", rt::Value());
        EXPECT_EQ(calls().size(), one.cancels);
    }
    EXPECT_TRUE(desktop.bus->posted().isEmpty());
}

TEST_F(HooksTest, ARecordIsBroughtUpToDateBeforeTheHostStoresIt) {
    event.carriesTheMeeting(u"840000017"_s);
    FakeObject record("ECMutableCalendarEvent");
    QVariant stored;
    fakehost::during() = [&] { stored = record.values.value("location"); };
    for (const bool hasMeeting : {false, true}) {
        record.values = {
            {"olmUCCapabilities", hasMeeting ? event.values.value("olmUCCapabilities") : QVariant()}};
        PendingWriteBack pending;
        pending.olNewLocation = u"Room https://join"_s;
        MeetingContext::atHand().pendingWriteBack = pending;
        rt::send(&record, "saveRecord");
        EXPECT_EQ(stored, hasMeeting ? QVariant(u"Room https://join"_s) : QVariant());
        EXPECT_TRUE(vlMeetingMgr::sharedInstance().getOLNewLocation().isNull()); // used up in both cases
    }
    desktop.workspace->documents = folder.path();
    vlGetPACHelper::sharedInstance().setPACInfo(ScriptedClient::accountsAnswer({{"800", 9, "Dial 800"}}));
    MeetingContext &context = MeetingContext::atHand();
    context.pacAccountNo = PACAccount::First;
    context.isPACApplied = true;
    record.values.clear();
    rt::send(&record, "saveRecord");
    EXPECT_EQ(stored, "800 (US Toll Free), 9") << "of an audio conference";
    context.pacAccountNo = PACAccount::None;
    context.isPACApplied = false;
}

TEST_F(HooksTest, WhatDiesInTheMiddleOfAHookIsNotTouchedAgain) {
    for (const char *selector : {"save:", "saveAndCloseWindow:"}) {
        auto dying = std::make_unique<FakeEditor>(event);
        HookedStrip itsStrip(*dying);
        strips.live = {&itsStrip};
        itsStrip.whenAsked = [&dying] { dying.reset(); };
        EXPECT_FALSE(rt::send(dying.get(), selector, true).isValid());
        EXPECT_TRUE(calls().isEmpty()) << selector;
    }
    strips.live.clear();
    event.carriesTheMeeting(u"840000017"_s);
    auto dyingGrid = std::make_unique<FakeObject>("OLCalendarGridViewWrapper", grid.values);
    fakehost::during() = [&dyingGrid] { dyingGrid.reset(); };
    EXPECT_FALSE(
        rt::send(dyingGrid.get(), "subjectChanged:forEvent:andTileView:", u"New"_s, rt::Value(), rt::Value())
            .isValid());
    EXPECT_TRUE(calls().isEmpty());
    auto dyingEvent = std::make_unique<FakeAppointment>();
    fakehost::during() = [&dyingEvent] { dyingEvent.reset(); };
    rt::send(rt::classNamed(u"ERCalendarEventEditorWindowController"_s),
             "showWindowForEvent:", rt::fromObject(dyingEvent.get()));
    EXPECT_EQ(dyingEvent, nullptr);
    desktop.runLoop->advance(0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
    auto window = std::make_unique<QWidget>();
    platform::registerWindow(window.get(), editor.windowController());
    new vlActionAdditionView(g_vlAdditionViewFrame, window.get());
    window->show();
    QApplication::setActiveWindow(window.get());
    FakeObject responder("OLCalendarEventViewResponder");
    calls().clear();
    fakehost::during() = [&window] { window.reset(); };
    rt::send(&responder, "switchToRecurringSeries:", rt::Value());
    EXPECT_EQ(calls().size(), 1) << "something was saved after the window had closed";
}

TEST_F(HooksTest, TheItemsStandBeforeTheLastFlexibleSpaceAndComeBackWithTheDefault) {
    const QString schedule = vlScheduleToolbarItemIdentifier;
    const QString start = vlStartToolbarItemIdentifier;
    const std::pair<QStringList, QStringList> cases[] = {
        {{"A", flex}, {"A", bar, schedule, bar, start, flex}},
        {{"A", bar, flex}, {"A", bar, schedule, bar, start, flex}},
        {{flex, "A", flex}, {flex, "A", bar, schedule, bar, start, flex}},
        {{"A"}, {start, schedule, "A"}},
        {{flex, "A"}, {schedule, bar, start, flex, "A"}},
        {{}, {start, schedule}},
        {{"A", schedule, flex}, {"A", schedule, bar, start, flex}},
        {{start, schedule, "A", flex}, {start, schedule, "A", flex}},
    };
    for (const auto &[before, after] : cases) {
        desktop.userDefaults->values.clear();
        HostWindow window(before);
        addBoth();
        EXPECT_EQ(window.shown().join(u' '), after.join(u' '));
        while (!window.shown().isEmpty())
            window.toolbar->removeItem(0);
        window.toolbar->restoreDefault();
        EXPECT_EQ(window.shown().join(u' '), after.join(u' '));
        QStringList offered;
        for (const platform::ToolbarItem *item : window.toolbar->paletteItems())
            offered.append(item->itemIdentifier());
        EXPECT_TRUE(offered.contains(vlSchedulePACToolbarItemIdentifier));
        EXPECT_TRUE(offered.contains(vlOpenLogFolderIdentifier));
    }
    desktop.userDefaults->values.clear();
    HostWindow hidden({u"A"_s});
    hidden.toolbar->hide();
    addBoth();
    EXPECT_EQ(hidden.shown(), QStringList{u"A"_s});
}

TEST_F(HooksTest, LoadingAddsTheItemsToTheOpenWindowsAndMakesThemWork) {
    EXPECT_EQ(itemsAfterLoading,
              (QStringList{vlStartToolbarItemIdentifier, vlScheduleToolbarItemIdentifier, u"A"_s}));
    EXPECT_EQ(
        vlCommandItemMgr::sharedInstance().SendToolbarItemCommand(qint32(ToolbarCommand::ScheduleNewMeeting)),
        0);
    EXPECT_TRUE(platform::services().mainThreadDictionary.contains(keyFlagAutoAddToVlMeeting));
}
