// The controller: commands, answers of the client, and the end of an editor's work.
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "tests/workflow/WorkflowFixture.h"

namespace {

class Controller : public WorkflowTest {};

} // namespace

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

TEST_F(Controller, AnAddWithoutSheetReadsThePersonalMeetingFirstWhenTheUserPrefersIt) {
    givenAnAppointment();
    givenTheProfileIsLoaded();
    givenSavedSettings(
        {{vl_Setting_NotShowMeAgain, true}, {vl_Setting_IsPMI, true}, {vl_Setting_AudioOption, 3}});
    EXPECT_EQ(store().getVlSettingsData(windowID()).value(vl_Setting_AudioOption), 3);
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    turn();
    EXPECT_EQ(manager().state(), StateAddPMI);
    ASSERT_EQ(client.asked(), QList<Asked>{Asked::GetMeeting});
    EXPECT_EQ(client.last().key, roomNumber);
    EXPECT_TRUE(alerts.shownOn.isEmpty()) << "the user has not asked for this";
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
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 1);
    EXPECT_EQ(hostOperations().size(), 2) << "one turn has saved twice";
    EXPECT_TRUE(editor->record().isNull());
    givenTheMeetingIsLoaded({{"invitationEmail", ""}});
    manager().updateMailBodyForSchedule(editor.get());
    EXPECT_TRUE(editor->body().contains("You are invited"));
}

TEST_F(Controller, AChangedAppointmentIsSentOnceAndWrittenWithItsRecord) {
    givenAnAppointmentWithAMeeting();
    appointment->values.insert("summary", "Preview");
    const auto copy = MeetingContext::make(), other = MeetingContext::make();
    copy->meetingKey = key;
    copy->loadedMeeting.data = other->loadedMeeting.data = theMeeting();
    strip->action = HostAction::ActionSave;
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_TRUE(copy->loadedMeeting.data.isEmpty() && !other->loadedMeeting.data.isEmpty());
    client.holdsTheMeeting(theMeeting({{"subject", "Preview"}}));
    client.sendsNow(Asked::Update, key + ";" + invitation);
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::GetMeeting, Asked::Update, Asked::GetMeeting}));
    EXPECT_FALSE(editor->record().isNull());
    EXPECT_EQ(hostOperations(), QStringList{"saveArg:"});
}

// Otherwise settings that are confirmed later would close the editor.
TEST_F(Controller, AnOperationThatWasRefusedOrHasFailedIsNotRepeatedByLaterWork) {
    for (const bool isRefused : {true, false}) {
        SCOPED_TRACE(isRefused);
        givenAnAppointmentWithAMeeting();
        strip->status = DataStatus::UpdateMeeting;
        if (isRefused)
            client.answers(Asked::GetMeeting, "0;Error 3001");
        editor->values.insert("vl_ERCalendarEventEditorViewController_saveAndCloseWindow:", -1);
        presses(HostAction::ActionSaveAndClose);
        turn();
        EXPECT_EQ(alerts.alerts.size(), 1) << "of the refusal";
        EXPECT_EQ(hostOperations().size(), isRefused ? 0 : 1);
        EXPECT_TRUE(editor->windowController()->called.isEmpty()) << "the window is closed";
        client.holdsTheMeeting(theMeeting());
        manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
        turn();
        EXPECT_EQ(hostOperations().size(), isRefused ? 0 : 1);
        EXPECT_TRUE(editor->record().isNull()) << "the stored meeting counts as a new one";
        theEditorCloses();
    }
}

TEST_F(Controller, ASaveThatWaitsComparesAgainAfterAChangeOnTheCalendar) {
    givenAnAppointmentWithAMeeting();
    strip->status = DataStatus::UpdateMeeting;
    presses(HostAction::ActionSave);
    const vlECCalendarEvent event(appointment.get());
    manager().sendVlMeetingCommand(CmdUpdateMeeting, {{vl_Outlook_ApptInfo, event.getVlMeetingData()}});
    turn();
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 3) << "the save, the calendar, the save again";
}

TEST_F(Controller, ANewMeetingThatCouldNotBeReadIsWrittenByTheNextSave) {
    givenAnAppointment();
    client.answers(Asked::Schedule, key + ";" + invitation);
    client.answers(Asked::GetMeeting, "0;Error 3001");
    manager().sendVlMeetingCommand(CmdScheduleMeeting, editor.get());
    turn();
    client.holdsTheMeeting(theMeeting());
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_TRUE(editor->record().contains(key));
}

TEST_F(Controller, AppointmentsThatGotEachOthersAnswersExchangeThem) {
    FakeAppointment lunch;
    lunch.values.insert("summary", "Lunch");
    FakeEditor lunchEditor(lunch);
    RecordingStrip lunchStrip(lunchEditor);
    givenAnAppointment();
    strips.live.append(&lunchStrip);
    manager().sendVlMeetingCommand(CmdScheduleMeeting, editor.get());
    manager().sendVlMeetingCommand(CmdScheduleMeeting, &lunchEditor);
    client.holdsTheMeeting(theMeeting({{"subject", "Lunch"}, {"meetingKey", "key-2"}}));
    client.sendsNow(Asked::Schedule, "key-2;" + invitation);
    turn();
    EXPECT_EQ(strip->shown.last(), StripState::NoMeeting);
    EXPECT_TRUE(lunchEditor.record().contains("key-2"));
    EXPECT_EQ(lunchStrip.context()->state(), StateIdle);

    // A copy of a new appointment has a meeting already: it keeps that meeting.
    lunch.values.insert("summary", "Review");
    client.holdsTheMeeting(theMeeting({{"meetingKey", "key-2"}}));
    lunchStrip.context()->loadedMeeting = {};
    manager().sendVlMeetingCommand(CmdUpdateMeeting, &lunchEditor);
    turn();
    EXPECT_EQ(lunchStrip.context()->meetingKey, "key-2");
}

TEST_F(Controller, WhatOneAppointmentEndsTheOthersDoWithout) {
    givenAnAppointmentWithAMeeting();
    const auto other = MeetingContext::make();
    for (const MeetingCommand command : {CmdAddMeeting, CmdAddAudioConference1}) {
        givenTheProfileIsLoaded();
        givenTheAccountsAreLoaded();
        const RequestOwner::Scope scope(other);
        store().setMeetingKey(key);
        givenTheMeetingIsLoaded();
        manager().sendVlMeetingCommand(command);
        EXPECT_TRUE(sheets.shown.isEmpty()) << "there is no editor for it";
        const RequestOwner::Scope own(strip->context());
        store().setMeetingKey(key);
        answer(CmdDeleteMeeting, {{keyVLResult, keyVLSuccess}});
        EXPECT_TRUE(vlUserProfileHelper::sharedInstance().hasUserProfile());
        const RequestOwner::Scope again(other);
        EXPECT_FALSE(vlGetMeetingHelper::sharedInstance().hasMeetingInfo()) << "it is deleted";
        manager().clearAllSavedData(true);
    }
}

TEST_F(Controller, AConfirmedSheetDoesWhatItWasOpenedFor) {
    givenAnAppointment();
    const QVariantMap request = manager().getVelaMeetingData(editor.get());
    EXPECT_EQ(rt::widgetValue(request.value(keyEventOwnerWindow)), editor->window());
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    manager().sendVlMeetingCommand(CmdAddAudioConference1, strip.get());
    platform::services().notifications->post(
        notify_SettingCommit,
        {{keyVLUserOperator, keyVLSettingCommit}, {keyButtonClickIsOK, true}, {keyApptWindowID, windowID()}});
    turn();
    EXPECT_EQ(client.timesAsked(Asked::Schedule), 1);
    client.forget();
    manager().onExcuteCommandFinished(CmdChangeSettings, {{keyApptWindowID, windowID()}}); // it is cancelled
    turn();
    EXPECT_TRUE(client.asked().isEmpty());
}

TEST_F(Controller, AnUpdateOfThePersonalMeetingReadsUserAndMeetingFirst) {
    givenAnAppointmentWithAMeeting();
    givenTheMeetingIsLoaded({{"usePMI", 1}, {"subject", "Old"}});
    client.keepsSilentOn(Asked::Update);
    EXPECT_EQ(manager().getPMIMeetingInfo(strip.get(), StateSettingsPMI), 0);
    EXPECT_EQ(manager().state(), StateIdle) << "it has started without a user";
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(client.asked(),
              (QList<Asked>{Asked::Profile, Asked::Accounts, Asked::GetMeeting, Asked::Update}));
    EXPECT_EQ(client.requests().at(2).key, roomNumber);
    EXPECT_EQ(client.last().json.value("apptInfo").toMap().value("subject"), "Review");
    EXPECT_EQ(manager().state(), StateUpdatePMI);
    client.forget();
    givenTheMeetingIsLoaded({{"usePMI", 1}, {"subject", "Old"}});
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get()); // the user is known now
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::GetMeeting, Asked::Update}));
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
        EXPECT_TRUE(editor->body().contains("Agenda")) << "the user has deleted the invitation already";
        EXPECT_TRUE(manager().needClearLocation());
        EXPECT_FALSE(store().isVelaMeeting());
        EXPECT_FALSE(vlGetMeetingHelper::sharedInstance().hasMeetingInfo());
        EXPECT_FALSE(vlUserProfileHelper::sharedInstance().hasUserProfile());
        EXPECT_FALSE(strip->context()->isNewMeeting);
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
        bool forgets; // the saved data
    };
    using enum HostAction;
    const QString saveWithError = "saveAndCloseWindowAndReturnError:andReturnError:";
    const Case cases[] = {{false, ActionSave, {"saveArg:"}, {QVariant()}, false},
                          {false, ActionSaveAndClose, {"saveAndCloseWindow:"}, {true}, true},
                          {false, ActionSend, {}, {}, false},
                          {false, ActionSaveAndCloseWithError, {saveWithError}, {true, QVariant()}, true},
                          {true, ActionSave, {}, {}, false},
                          {true, ActionSend, {"sendMeetingPostValidate"}, {}, false},
                          {false, ActionCalendarDrag, {}, {}, true}};
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << "action " << quint32(c.action) << " attendees " << c.attendees);
        givenAnAppointmentWithAMeeting();
        if (c.attendees)
            editor->values.insert("attendeeList", QVariantList{"Ann"});
        strip->action = c.action;
        strip->context()->isOperationHeld = true;
        manager().closeOLAppointment(editor.get());
        EXPECT_EQ(hostOperations(), c.operations);
        EXPECT_EQ(editor->arguments, c.arguments);
        EXPECT_EQ(editor->windowController()->called.size(),
                  c.operations.join("").startsWith("saveAndClose"));
        EXPECT_EQ(store().isVelaMeeting(), !c.forgets);
        EXPECT_EQ(!manager().olWordMailEditor(), c.forgets);
        manager().closeOLAppointment(editor.get()); // nothing is held back now
        EXPECT_EQ(hostOperations().size(), c.operations.contains("saveArg:") ? 2 : c.operations.size());
        theEditorCloses();
    }
}

TEST_F(Controller, AClosedWindowClearsWhatWasSaved) {
    givenAnAppointmentWithAMeeting();
    store().setPACAccountNo(PACAccount::First);
    store().setSavedApptInfo({{vl_ApptInfo_VlOIProperty, "{\"joinUrl\":\"u\"}"}});
    store().setScheduleForEmail("boss@example.org");
    store().setScheduleForEmail({}); // leaves the old text
    EXPECT_EQ(store().getOldJoinUrl() + store().scheduleForEmail(), "uboss@example.org");
    strips.live.clear(); // a strip leaves the registry before the workflow is told
    EXPECT_EQ(vlApptUIActionMgr::sharedInstance().closeOLAppointment(), 0);
    EXPECT_FALSE(store().isVelaMeeting() || store().isPACMeeting());
    EXPECT_EQ(store().getOldJoinUrl() + store().scheduleForEmail(), "");
    EXPECT_EQ(manager().olWordMailEditor(), nullptr);
}

TEST_F(Controller, ASaveIsHeldBackUnlessTheMeetingNeedsNoWork) {
    givenAnAppointmentWithAMeeting();
    strip->status = DataStatus::NothingToSend;
    EXPECT_EQ(presses(HostAction::ActionSend), 2);
    EXPECT_TRUE(std::exchange(strip->succeeded, false));
    strip->status = DataStatus::DeleteMeeting;
    EXPECT_EQ(presses(HostAction::ActionSend), 0);
    EXPECT_TRUE(strip->succeeded);
    client.isUninstalled();
    EXPECT_EQ(presses(HostAction::ActionSend), 1) << "the error's own number would let the host go on";
    strip->blocked = true;
    EXPECT_EQ(presses(HostAction::ActionSend), 0) << "the appointment of another user";
}

TEST_F(Controller, AResizeOnTheCalendarSetsStartEndAndWholeMinutes) {
    appointment->carriesTheMeeting(key, joinUrl);
    FakeObject gridController("CCGridViewController", {{"selectedEvent", rt::fromObject(appointment.get())}});
    FakeObject grid("OLCalendarGridViewWrapper", {{"gridViewController", rt::fromObject(&gridController)}});
    FakeDate noon(QDateTime(QDate(2026, 11, 24), QTime(12, 0), Qt::UTC));
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

    // The next change takes the place of the last one. Nothing of it is kept at its end. An error is shown
    // at the calendar.
    QWidget calendar;
    gridController.values.insert("view", rt::fromWidget(&calendar));
    const std::size_t contexts = MeetingContext::all().size();
    client.holdsTheMeeting(theMeeting());
    EXPECT_EQ(vlCalendarActionMgr::sharedInstance().updateSubject(&grid, "Review"), 0);
    turn();
    client.isUninstalled();
    EXPECT_EQ(vlCalendarActionMgr::sharedInstance().updateSubject(&grid, "Review"), 1);
    EXPECT_EQ(alerts.alerts.last().window, &calendar);
    EXPECT_EQ(MeetingContext::all().size(), contexts - 1);

    // Otherwise the end of the work would save the editor, as its last operation did.
    givenAnAppointment();
    gridController.values.insert("view", rt::fromWidget(editor->window()));
    vlCalendarActionMgr::sharedInstance().updateSubject(&grid, "Review");
    EXPECT_EQ(strip->action, HostAction::ActionCalendarDrag);
}
