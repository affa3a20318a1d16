// What each hooked method adds to the host's own, and that the host's own still runs.
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "tests/hooks/HooksFixture.h"

#include <QApplication>
#include <QLabel>

using namespace hookedhost;

TEST_F(HooksTest, UnderTheReplacementSelectorTheHostsOwnRunsOnceForEveryRow) {
    for (const HookRow &row : hookTable()) {
        rt::Class *cls = rt::classNamed(QString::fromLatin1(row.hostClass));
        View view(cls->name());
        Thing thing(row.hostClass);
        const bool isView = cls->name().contains(u"View"_s) && !cls->name().contains(u"Controller"_s);
        rt::Object *receiver = row.kind == HookKind::Class ? static_cast<rt::Object *>(cls)
                               : isView                    ? static_cast<rt::Object *>(&view)
                                                           : &thing;
        calls().clear();
        rt::sendArgs(receiver, rt::Selector(row.replacementSelector), argumentsFor(row));
        EXPECT_EQ(calls().size(), 1) << row.replacementSelector;
    }
}

TEST_F(HooksTest, WhatPassesThroughHandsOnArgumentsAndResult) {
    answers().insert(u"ERCalendarEventEditorViewController vl_ERCalendarEventEditorViewController_save"_s,
                     42);
    EXPECT_EQ(rt::send(&editor, "save"), rt::Value(42));
    rt::send(&editor, "setIsCancelMode:", true);
    EXPECT_EQ(calls().last(), u"ERCalendarEventEditorViewController "
                              "vl_ERCalendarEventEditorViewController_setIsCancelMode:(1)"_s);
}

TEST_F(HooksTest, OnlyTheVeryHeaderClassGetsAStrip) {
    rt::Class *sub = rt::defineClass(u"ASubclassOfTheHeader"_s, rt::classNamed(olderHeader));
    View older(olderHeader), subclass(sub->name()), newer(newerHeader),
        other(u"OLAttachmentsAcceptingView"_s);
    for (View *view : {&older, &subclass, &newer, &other})
        rt::send(view, "initWithFrame:", QRectF(0, 0, 900, 90));
    EXPECT_EQ(strips.headers, (QList<QWidget *>{&older, &newer}));
}

TEST_F(HooksTest, TheStripIsPlacedByTheHeadersRightEdgeAndItsTimeZoneRow) {
    const struct {
        int x, width;
        bool timeZone;
        QRectF expected;
    } cases[] = {
        {0, 800, false, {460, -10, 330, 70}},   {0, 900, true, {490, 13, 400, 70}},
        {0, 1000, true, {590, 13, 400, 70}},    {0, 1000, false, {590, -10, 400, 70}},
        {100, 800, false, {490, -10, 400, 70}},
    };
    for (const QString &name : {olderHeader, newerHeader}) {
        for (const auto &one : cases) {
            View header(name);
            header.setGeometry(one.x, 0, one.width, 120);
            View row(u"OLAutoLayoutView"_s, &header);
            QLabel label(u"Time zone:"_s, &row);
            row.setVisible(one.timeZone);
            auto *placed = new vlActionAdditionView(g_vlAdditionViewFrame, &header);
            calls().clear();
            rt::send(&header, "drawRect:", QRectF(header.rect()));
            EXPECT_EQ(platform::bottomLeftFrame(placed), one.expected) << qPrintable(name) << one.width;
            EXPECT_EQ(calls().size(), 1) << "the host draws first";
        }
    }
}

TEST_F(HooksTest, TheFirstTimeZoneLabelOfARowDecidesAndNoOtherText) {
    const struct {
        const char *first, *second;
        bool firstShown, secondShown;
        double y;
    } cases[] = {
        {"Time zone:", "Time zone:", false, true, -10},
        {"Time zone:", "Time zone:", true, false, 13},
        {"Ends:", "Time zone:", true, true, 13},
        {"time zone:", "Time zone", true, true, -10},
    };
    for (const QString &name : {olderHeader, newerHeader}) {
        for (const auto &one : cases) {
            View header(name);
            header.setGeometry(0, 0, 1000, 120);
            vlActionAdditionView placed(g_vlAdditionViewFrame, &header);
            QLabel outside(u"Time zone:"_s, &header); // not in a row
            View row(u"OLAutoLayoutView"_s, &header);
            QLabel first(one.first, &row), second(one.second, &row);
            outside.show();
            row.show();
            first.setVisible(one.firstShown);
            second.setVisible(one.secondShown);
            rt::send(&header, "drawRect:", QRectF(header.rect()));
            EXPECT_EQ(platform::bottomLeftFrame(&placed).y(), one.y) << qPrintable(name) << one.first;
        }
    }
}

TEST_F(HooksTest, ASubclassOfTheHeaderKeepsItsStripWhereItIs) {
    View subclass(rt::defineClass(u"AnotherSubclass"_s, rt::classNamed(olderHeader))->name());
    subclass.setGeometry(0, 0, 1000, 120);
    vlActionAdditionView strip(g_vlAdditionViewFrame, &subclass);
    const QRect before = strip.geometry();
    rt::send(&subclass, "drawRect:", QRectF(subclass.rect()));
    EXPECT_EQ(strip.geometry(), before);
    EXPECT_EQ(calls().size(), 1);
}

TEST_F(HooksTest, TheRowsOfTheNewerHeaderDoNotPaintThemselves) {
    View row(u"OLAutoLayoutView"_s);
    EXPECT_EQ(rt::send(&row, "drawRect:", QRectF()), rt::Value(true));
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(HooksTest, ASaveThatNeedsTheClientIsHeldBackAndOneThatDoesNotGoesOn) {
    const struct {
        const char *selector;
        std::vector<rt::Value> arguments;
        rt::Value held;
        const char *action;
    } cases[] = {
        {"saveAndCloseWindow:", {true}, -1, "action 2"},
        {"save:", {rt::Value()}, true, "action 1"},
        {"saveAndCloseWindow:andReturnError:", {true, rt::Value()}, -1, "action 4"},
        {"sendMeetingPostValidate", {}, true, "action 3"},
    };
    strips.strip = &strip;
    for (const auto &one : cases) {
        strip.asked.clear();
        calls().clear();
        strip.status = DataStatus::DeleteMeeting; // blocked for this strip: handed over, nothing sent
        EXPECT_EQ(rt::sendArgs(&editor, rt::Selector(one.selector), one.arguments), one.held) << one.selector;
        EXPECT_TRUE(calls().isEmpty()) << one.selector;
        EXPECT_EQ(strip.asked.value(0), QString::fromLatin1(one.action));
        strip.status = DataStatus::NothingToDo;
        rt::sendArgs(&editor, rt::Selector(one.selector), one.arguments);
        EXPECT_EQ(calls().size(), 1) << one.selector;
    }
}

TEST_F(HooksTest, AnEditorWithoutAStripSavesAsTheHostDoes) {
    rt::send(&editor, "save:", rt::Value());
    rt::send(&editor, "sendMeetingPostValidate");
    EXPECT_EQ(calls().size(), 2);
}

TEST_F(HooksTest, TheStripFollowsTheFromFieldAndTheRecurrenceSheet) {
    strips.strip = &strip;
    rt::send(&editor, "fromFieldModified:", rt::Value());
    EXPECT_EQ(strip.asked, (QStringList{"refresh", "enable 1"}));
    for (const auto &[code, refreshes] : {std::pair{0, 1}, {1, 1}, {2, 0}, {-1, 0}}) {
        strip.asked.clear();
        rt::send(&editor, "switchToRecurrenceDidEnd:returnCode:contextInfo:", rt::Value(), code, rt::Value());
        EXPECT_EQ(strip.asked.size(), refreshes) << code;
    }
}

TEST_F(HooksTest, ChangesOfAnAppointmentWithoutAMeetingAreTheHostsAlone) {
    Thing event("ECCalendarEvent");
    rt::send(&event, "deleteEventNow");
    rt::send(&event, "cancelMeetingInWindow:", rt::Value());
    Thing grid("OLCalendarGridViewWrapper");
    rt::send(&grid, "subjectChanged:forEvent:andTileView:", u"New"_s, rt::Value(), rt::Value());
    EXPECT_EQ(calls().size(), 3);
    EXPECT_TRUE(desktop.bus->posted().isEmpty());
}

// The events of a user are asked for at the client, which is not there; those of others need no asking.
TEST_F(HooksTest, AMeetingGoesFromTheCalendarOnlyByTheAnswersThatTheHostWaitsFor) {
    const struct {
        bool isOwner, actionResult, deletes, cancels;
    } cases[] = {{false, false, false, false},
                 {false, true, true, true},
                 {true, false, false, false},
                 {true, true, false, true}};
    for (const auto &one : cases) {
        Thing event("ECCalendarEvent");
        event.capabilities = meeting;
        answers().insert(u"ECCalendarEvent isOwner"_s, one.isOwner);
        answers().insert(u"ECCalendarEvent vl_ECCalendarEvent_deleteEventNow"_s, true);
        vlCalendarActionMgr::sharedInstance().setActionResult(one.actionResult);
        calls().clear();
        EXPECT_EQ(rt::send(&event, "deleteEventNow"), rt::Value(one.deletes));
        EXPECT_EQ(calls().size(), one.deletes);
        calls().clear();
        rt::send(&event, "cancelMeetingInWindow:", rt::Value());
        EXPECT_EQ(calls().size(), one.cancels);
    }
}

TEST_F(HooksTest, AChangeOnTheGridIsTheHostsOnlyWhenTheClientCouldBeAsked) {
    Thing event("ECCalendarEvent"), controller("CCGridViewController"), grid("OLCalendarGridViewWrapper");
    event.capabilities = meeting;
    answers().insert(u"OLCalendarGridViewWrapper gridViewController"_s, rt::fromObject(&controller));
    answers().insert(u"CCGridViewController selectedEvent"_s, rt::fromObject(&event));
    for (const HookRowName row : {HookRowName::GridResize, HookRowName::GridMove, HookRowName::GridRename}) {
        const HookRow &hook = hookRow(row);
        for (const bool asks : {false, true}) {
            answers().insert(u"ECCalendarEvent isOwner"_s, asks);
            answers().insert(u"OLCalendarGridViewWrapper "_s + hook.replacementSelector, u"the host's"_s);
            calls().clear();
            const rt::Value answer = rt::sendArgs(&grid, rt::Selector(hook.hostSelector), argumentsFor(hook));
            EXPECT_EQ(answer, asks ? rt::Value(true) : rt::Value(u"the host's"_s)) << hook.hostSelector;
            EXPECT_EQ(calls().size(), asks ? 0 : 1) << hook.hostSelector;
        }
    }
}

// The host may open or close windows while it switches.
TEST_F(HooksTest, TheSwitchToTheSeriesIsFollowedInTheWindowInWhichItWasAskedFor) {
    Thing responder("OLCalendarEventViewResponder"), controller("ERCalendarEventEditorWindowController");
    answers().insert(u"ERCalendarEventEditorWindowController editorViewController"_s,
                     rt::fromObject(&editor));
    auto window = std::make_unique<QWidget>();
    QWidget another;
    platform::registerWindow(window.get(), &controller);
    new vlActionAdditionView(g_vlAdditionViewFrame, window.get());
    window->show();
    another.show();
    const QString saved = u"ERCalendarEventEditorViewController "
                          "vl_ERCalendarEventEditorViewController_save(0)"_s;
    const struct {
        const char *what;
        std::function<void()> whileTheHostSwitches;
        QWidget *askedIn;
        bool saves;
    } cases[] = {
        {"in place", [] {}, window.get(), true},
        {"into another window", [&another] { QApplication::setActiveWindow(&another); }, window.get(), true},
        {"from a window without buttons", [&] { QApplication::setActiveWindow(window.get()); }, &another,
         false},
        {"closing the window", [&window] { window.reset(); }, window.get(), false},
    };
    for (const auto &one : cases) {
        QApplication::setActiveWindow(one.askedIn);
        calls().clear();
        during() = one.whileTheHostSwitches;
        rt::send(&responder, "switchToRecurringSeries:", rt::Value());
        during() = nullptr;
        EXPECT_EQ(calls().size(), one.saves ? 2 : 1) << one.what;
        EXPECT_EQ(calls().last() == saved, one.saves) << one.what << qPrintable(calls().last());
    }
}

TEST_F(HooksTest, ARecordIsBroughtUpToDateBeforeTheHostStoresIt) {
    vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
    const QString stored = u"ECMutableCalendarEvent vl_ECMutableCalendarEvent_saveRecord(0)"_s;
    Thing record("ECMutableCalendarEvent");
    for (const auto &[capabilities, expected] :
         {std::pair{meeting, QStringList{"ECMutableCalendarEvent setLocation:(1)", stored}},
          {QString(), QStringList{stored}}}) {
        record.capabilities = capabilities;
        PendingWriteBack pending;
        pending.olNewLocation = u"Room https://join"_s;
        MeetingContext::atHand().pendingWriteBack = pending;
        calls().clear();
        rt::send(&record, "saveRecord");
        EXPECT_EQ(calls(), expected);
        EXPECT_TRUE(manager.getOLNewLocation().isNull()); // either way the write-back has ended
    }
}

TEST_F(HooksTest, TheBodyEditorIsKnownBeforeTheHostAttachesIt) {
    Thing body("OLWordMailEditor");
    rt::Object *known = nullptr;
    during() = [&known] {
        if (const vlOLWordMailEditor *adapter = vlMeetingMgr::sharedInstance().olWordMailEditor())
            known = adapter->delegate();
    };
    rt::send(&editor, "hostWordMailEditor:", rt::fromObject(&body));
    EXPECT_EQ(known, &body);
}

TEST_F(HooksTest, WhatDiesInTheMiddleOfAHookIsNotTouchedAgain) {
    strips.strip = &strip;
    for (const char *selector : {"save:", "saveAndCloseWindow:"}) {
        auto dying = std::make_unique<Thing>("ERCalendarEventEditorViewController");
        strip.whenAsked = [&dying] { dying.reset(); };
        EXPECT_FALSE(rt::send(dying.get(), selector, true).isValid());
        EXPECT_TRUE(calls().isEmpty()) << selector;
    }
    Thing meetingEvent("ECCalendarEvent"), controller("CCGridViewController");
    meetingEvent.capabilities = meeting;
    answers().insert(u"OLCalendarGridViewWrapper gridViewController"_s, rt::fromObject(&controller));
    answers().insert(u"CCGridViewController selectedEvent"_s, rt::fromObject(&meetingEvent));
    auto grid = std::make_unique<Thing>("OLCalendarGridViewWrapper");
    during() = [&grid] { grid.reset(); };
    EXPECT_FALSE(
        rt::send(grid.get(), "subjectChanged:forEvent:andTileView:", u"New"_s, rt::Value(), rt::Value())
            .isValid());
    EXPECT_TRUE(calls().isEmpty());
    auto event = std::make_unique<Thing>("ECCalendarEvent");
    during() = [&event] { event.reset(); };
    rt::send(rt::classNamed(u"ERCalendarEventEditorWindowController"_s),
             "showWindowForEvent:", rt::fromObject(event.get()));
    EXPECT_EQ(event, nullptr);
    desktop.runLoop->advance(0);
    EXPECT_EQ(desktop.runLoop->pendingCount(), 0);
}
