// The controller: commands, answers of the client, and the end of an editor's work.
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "tests/workflow/WorkflowFixture.h"

namespace {

class Controller : public WorkflowTest {
protected:
    // The calendar's request about the appointment, with or without an editor.
    [[nodiscard]] QVariantMap calendarRequest(QWidget *window) const {
        const QString record = u"{\"meetingKey\":\"%1\"}"_s.arg(key);
        return {{vl_Outlook_ApptInfo,
                 QVariantMap{{vl_ApptInfo_Subject, "Review"}, {vl_ApptInfo_VlOIProperty, record}}},
                {keyEventOwnerWindow, rt::fromWidget(window)},
                {keyApptWindowID, rt::identifier(window)},
                {keyDragAndMoveOnCalendar, true}};
    }
};

} // namespace

TEST_F(Controller, AnAddWaitsForTheProfileBeforeItDecidesAboutTheSheet) {
    givenAnAppointment();
    givenSavedSettings({{vl_Setting_NotShowMeAgain, true}});
    EXPECT_FALSE(manager().notShowSetting()); // the user is not known yet
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    turn();
    EXPECT_TRUE(manager().notShowSetting());
    EXPECT_TRUE(sheets.shown.isEmpty());
    EXPECT_EQ(client.timesAsked(Asked::Schedule), 1);
}

TEST_F(Controller, AChangeOfSettingsReadsTheMeetingUnlessItIsLoaded) {
    givenAnAppointmentWithAMeeting();
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdChangeSettings, strip.get());
    EXPECT_TRUE(sheets.shown.isEmpty());
    EXPECT_EQ(alerts.shownOn, QList<QWidget *>{editor->window()});
    turn();
    EXPECT_EQ(client.last().key, key);
    EXPECT_EQ(sheets.shown.size(), 1);
    manager().sendVlMeetingCommand(CmdChangeSettings, strip.get()); // the meeting is loaded now
    EXPECT_EQ(sheets.shown.size(), 2);
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 1);
}

TEST_F(Controller, OnlySomeReportThatTheClientDoesNotRun) {
    givenAnAppointmentWithAMeeting();
    client.quits();
    constexpr int notRunning = 5;
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdScheduleMeeting, editor.get()), 0);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get()), 0);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdAddMeeting, strip.get()), 0);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, editor.get()), notRunning);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdStartInstantVideo), notRunning);
    const QVariantMap request = calendarRequest(&mainWindow);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdUpdateMeeting, request), 1);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, request), 1);
    strip->blocked = true;
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, editor.get()), 0) << "the strip blocks it";
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, static_cast<rt::Object *>(nullptr)), 0);
}

TEST_F(Controller, AnEditorThatIsOpenLearnsOfTheDragAndTheDeleteStaysWithTheCalendarsWindow) {
    givenAnAppointmentWithAMeeting();
    QVariantMap request = calendarRequest(&mainWindow);
    request.insert(keyApptWindowID, windowID());
    manager().setState(StateAdd);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, request), 0);
    EXPECT_EQ(strip->action, HostAction::ActionCalendarDrag);
    EXPECT_EQ(manager().state(), StateAdd);
    EXPECT_EQ(alerts.shownOn, QList<QWidget *>{&mainWindow});
    turn();
    EXPECT_EQ(client.last().what, Asked::Delete);
    EXPECT_EQ(client.last().key, key);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdAddMeeting, request), 0); // the calendar has no such command
    EXPECT_EQ(manager().state(), StateAdd);
}

TEST_F(Controller, ASheetThatIsCancelledEndsTheWorkUnlessTheUserDoesNotWantToSeeIt) {
    givenAnAppointmentWithAMeeting();
    givenTheProfileIsLoaded();
    for (const MeetingCommand command : {CmdAddMeeting, CmdChangeSettings}) {
        manager().sendVlMeetingCommand(command, strip.get());
        turn();
        client.forget();
        theSheetIsLeft(false);
        EXPECT_TRUE(client.requests().isEmpty()) << int(command);
    }
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    givenSavedSettings({{vl_Setting_NotShowMeAgain, true}});
    theSheetIsLeft(false);
    EXPECT_EQ(client.asked(), QList<Asked>{Asked::Schedule});
}

TEST_F(Controller, AnAddWithoutSheetReadsThePersonalMeetingFirstWhenTheUserPrefersIt) {
    givenAnAppointment();
    givenTheProfileIsLoaded();
    givenSavedSettings({{vl_Setting_NotShowMeAgain, true}, {vl_Setting_IsPMI, true}});
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    turn();
    EXPECT_EQ(manager().state(), StateAddPMI);
    ASSERT_EQ(client.asked(), QList<Asked>{Asked::GetMeeting});
    EXPECT_EQ(client.last().key, roomNumber);
    client.sendsNow(Asked::GetMeeting, ScriptedClient::meetingAnswer(theMeeting({{"enableJBH", true}})));
    turn();
    ASSERT_EQ(client.last().what, Asked::Schedule);
    const QVariantMap setting = client.last().json.value("setting").toMap();
    EXPECT_EQ(setting.value(vl_Setting_IsPMI), true);
    EXPECT_EQ(setting.value(vl_Setting_EnableJBH), true); // from the personal meeting
}

TEST_F(Controller, AnUnchangedAppointmentIsWrittenAgainWithoutTheClientAndWithoutTheRecord) {
    givenAnAppointmentWithAMeeting();
    strip->action = HostAction::ActionSave;
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(client.asked(), QList<Asked>{Asked::GetMeeting});
    EXPECT_TRUE(editor->record().isNull());
    EXPECT_TRUE(editor->body().contains("You are invited"));
    EXPECT_EQ(appointment->location(), joinUrl);
    EXPECT_EQ(hostOperations(), QStringList{"saveArg:"});
    EXPECT_EQ(manager().state(), StateCommit);
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get()); // the meeting is still loaded
    turn();
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 1);
}

TEST_F(Controller, AnUpdateOfThePersonalMeetingReadsUserAndMeetingFirst) {
    givenAnAppointmentWithAMeeting();
    givenTheAccountsAreLoaded();
    givenTheMeetingIsLoaded({{"usePMI", 1}, {"subject", "Old"}});
    client.keepsSilentOn(Asked::Update);
    EXPECT_EQ(manager().getPMIMeetingInfo(strip.get(), StateSettingsPMI), 0);
    EXPECT_EQ(manager().state(), StateIdle) << "it has started without a user";
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::Profile, Asked::GetMeeting, Asked::Update}));
    EXPECT_EQ(client.requests().at(1).key, roomNumber);
    EXPECT_EQ(client.last().json.value("apptInfo").toMap().value("subject"), "Review");
    EXPECT_EQ(manager().state(), StateUpdatePMI);
}

TEST_F(Controller, ADeleteTakesTheMeetingOutWhetherItSucceededOrNot) {
    for (const QString &result : {keyVLSuccess, keyVLFail}) {
        givenAnAppointmentWithAMeeting();
        givenTheProfileIsLoaded();
        givenTheMeetingIsLoaded();
        answer(CmdDeleteMeeting, {{keyVLResult, result}, {vl_API_Para_InvitationEmail, ""}});
        EXPECT_EQ(strip->shown, QList<StripState>{StripState::NoMeeting});
        EXPECT_EQ(strip->succeeded, result == keyVLSuccess);
        EXPECT_EQ(vlCalendarActionMgr::sharedInstance().getActionResult(), result == keyVLSuccess);
        EXPECT_EQ(editor->record(), "");
        EXPECT_FALSE(editor->record().isNull());
        EXPECT_TRUE(manager().needClearLocation());
        EXPECT_FALSE(store().isVelaMeeting());
        EXPECT_FALSE(vlGetMeetingHelper::sharedInstance().hasMeetingInfo());
        EXPECT_FALSE(vlUserProfileHelper::sharedInstance().hasUserProfile());
        EXPECT_NE(manager().olWordMailEditor(), nullptr); // the editor stays open
        turn();
        theEditorCloses();
    }
}

TEST_F(Controller, WhatIsRunDependsOnTheAttendeesAndOnWhatWasHeldBack) {
    struct Case {
        bool attendees;
        HostAction action;
        QStringList operations;
        QVariantList arguments;
        bool closes;
        bool forgets = closes; // the saved data
    };
    using enum HostAction;
    const QString saveWithError = "saveAndCloseWindowAndReturnError:andReturnError:";
    const Case cases[] = {{false, ActionSave, {"saveArg:"}, {QVariant()}, false},
                          {false, ActionSaveAndClose, {"saveAndCloseWindow:"}, {true}, true},
                          {false, ActionSend, {}, {}, false},
                          {false, ActionSaveAndCloseWithError, {saveWithError}, {true, QVariant()}, true},
                          {true, HostAction::None, {}, {}, false},
                          {true, ActionSave, {}, {}, false},
                          {true, ActionSend, {"sendMeetingPostValidate"}, {}, false},
                          {true, ActionCalendarDrag, {}, {}, false},
                          {false, ActionCalendarDrag, {}, {}, false, true}};
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << "action " << quint32(c.action) << " attendees " << c.attendees);
        appointment = std::make_unique<FakeAppointment>();
        if (c.attendees)
            appointment->invites("Ann");
        givenAnAppointmentWithAMeeting();
        strip->action = c.action;
        strip->context()->isOperationHeld = true;
        manager().closeOLAppointment(editor.get());
        EXPECT_EQ(hostOperations(), c.operations);
        EXPECT_EQ(editor->arguments, c.arguments);
        EXPECT_EQ(editor->windowController()->called, c.closes ? QStringList{"close"} : QStringList());
        EXPECT_EQ(store().isVelaMeeting(), !c.forgets);
        EXPECT_EQ(manager().olWordMailEditor() == nullptr, c.forgets);
        theEditorCloses();
    }
}

TEST_F(Controller, AClosedWindowClearsWhatWasSaved) {
    givenAnAppointmentWithAMeeting();
    store().setPACAccountNo(PACAccount::First);
    strips.live.clear(); // a strip leaves the registry before the workflow is told
    EXPECT_EQ(vlApptUIActionMgr::sharedInstance().closeOLAppointment(), 0);
    EXPECT_FALSE(store().isVelaMeeting() || store().isPACMeeting());
    EXPECT_EQ(manager().olWordMailEditor(), nullptr);
}

TEST_F(Controller, SavingSendsTheCommandThatTheAppointmentNeeds) {
    struct Case {
        DataStatus status;
        void (ScriptedClient::*fails)();
        int answered;
        QList<Asked> asked;
    };
    // The error number of a client that is not installed would let the host go on.
    const Case cases[] = {{DataStatus::NothingToSend, nullptr, 2, {}},
                          {DataStatus::UpdateMeeting, nullptr, 0, {Asked::GetMeeting}},
                          {DataStatus::DeleteMeeting, nullptr, 0, {Asked::Delete}},
                          {DataStatus::DeleteMeeting, &ScriptedClient::quits, 5, {}},
                          {DataStatus::DeleteMeeting, &ScriptedClient::isUninstalled, 1, {}}};
    givenAnAppointmentWithAMeeting();
    client.keepsSilentOn(Asked::GetMeeting);
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << int(c.status) << " answered " << c.answered);
        client.forget();
        if (c.fails)
            (client.*c.fails)();
        strip->status = c.status;
        strip->succeeded = false;
        EXPECT_EQ(presses(HostAction::ActionSend), c.answered);
        turn();
        EXPECT_EQ(client.asked(), c.asked);
        EXPECT_EQ(strip->action, HostAction::ActionSend);
        const auto &saving = vlApptUIActionMgr::sharedInstance();
        EXPECT_EQ(saving.getActionResultWithCalEventEditorViewCtrl(editor.get()), !c.fails);
    }
}

TEST_F(Controller, AResizeOnTheCalendarSetsStartEndAndWholeMinutes) {
    appointment->carriesTheMeeting(key, joinUrl);
    FakeObject gridController("CCGridViewController", {{"view", rt::fromWidget(&mainWindow)},
                                                       {"selectedEvent", rt::fromObject(appointment.get())}});
    FakeObject grid("OLCalendarGridViewWrapper", {{"gridViewController", rt::fromObject(&gridController)}});
    FakeDate noon("2026-11-24 12:00:00");
    for (const auto &[seconds, duration, end] : {std::tuple{5400., "90", "2026-11-24 13:30:00"},
                                                 {59.9, "0", "2026-11-24 12:00:59"},
                                                 {-90., "-1", "2026-11-24 11:58:30"},
                                                 {1e300, "35791394", nullptr}}) { // as far as 32 bits go
        SCOPED_TRACE(seconds);
        EXPECT_EQ(vlCalendarActionMgr::sharedInstance().updateDuration(&grid, &noon, seconds), 0);
        const QVariantMap known = MeetingContext::all().back()->savedApptInfo;
        const auto utc = [&known](const QString &member) {
            return known.value(member).toMap().value(vl_ApptInfo_CalDate_UTCTime).toString();
        };
        EXPECT_EQ(known.value(vl_ApptInfo_Duration), duration);
        EXPECT_EQ(utc(vl_ApptInfo_StartTime), "2026-11-24 12:00:00");
        if (end) {
            EXPECT_EQ(utc(vl_ApptInfo_EndTime), end);
        }
    }
}
