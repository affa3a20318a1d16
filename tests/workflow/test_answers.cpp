#include "tests/workflow/WorkflowFixture.h"

#include "platform/services/Services.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/workflow/vlCalendarActionMgr.h"

#include <QLineEdit>

namespace {

class Answers : public WorkflowTest {};

const QVariantMap succeeded{{keyVLResult, keyVLSuccess}};

} // namespace

TEST_F(Answers, AnAddFromTheStripEndsWithTheMeetingInTheAppointment) {
    givenAnAppointment();
    client.schedulesAs(key, invitation);
    client.holdsTheMeeting(theMeeting());
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    turn();
    ASSERT_EQ(sheets.shown.size(), 1);
    theSheetIsLeft(true);
    EXPECT_EQ(client.timesAsked(Asked::Schedule), 1);
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 1);
    EXPECT_EQ(client.last().key, key);
    EXPECT_EQ(strip->shown, QList<StripState>{StripState::MeetingAttached});
    EXPECT_TRUE(strip->succeeded);
    EXPECT_TRUE(editor->record().contains(key)) << qPrintable(editor->record());
    EXPECT_EQ(editor->locationField()->text(), joinUrl);
    EXPECT_EQ(appointment->location(), joinUrl);
    EXPECT_TRUE(editor->body().contains("You are invited")) << qPrintable(editor->body());
    EXPECT_EQ(manager().state(), StateIdle);
    EXPECT_EQ(hostOperations(), QStringList()); // nothing was held back
}

TEST_F(Answers, ASheetThatIsCancelledEndsTheWork) {
    givenAnAppointmentWithAMeeting();
    givenTheProfileIsLoaded();
    for (const MeetingCommand command : {CmdAddMeeting, CmdChangeSettings}) {
        manager().sendVlMeetingCommand(command, strip.get());
        turn();
        client.forget();
        theSheetIsLeft(false);
        EXPECT_TRUE(client.requests().isEmpty()) << int(command);
    }
}

TEST_F(Answers, ACancelledSheetOfOneWhoDoesNotWantToSeeItSchedulesAllTheSame) {
    givenAnAppointment();
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    givenSavedSettings({{vl_Setting_NotShowMeAgain, true}});
    theSheetIsLeft(false);
    EXPECT_EQ(client.asked(), QList<Asked>{Asked::Schedule});
}

TEST_F(Answers, AnAddWithoutSheetReadsThePersonalMeetingFirstWhenTheUserPrefersIt) {
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
    EXPECT_EQ(setting.value(vl_Setting_EnableJBH), true); // the personal meeting's own
}

TEST_F(Answers, CommittedSettingsOfAMeetingAreSentAsAnUpdate) {
    givenAnAppointmentWithAMeeting();
    givenTheMeetingIsLoaded();
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdChangeSettings, strip.get());
    sheets.settings.insert(windowID(), {{vl_Setting_AudioOption, 1}});
    theSheetIsLeft(true);
    ASSERT_EQ(client.asked(), QList<Asked>{Asked::Update});
    EXPECT_EQ(client.last().json.value("setting").toMap().value(vl_Setting_AudioOption), 1);
}

TEST_F(Answers, InAStateThatHasNoUseForThemTheyChangeNothing) {
    givenAnAppointmentWithAMeeting();
    givenTheAccountsAreLoaded();
    struct Case {
        MeetingCommand answered;
        QList<WorkflowState> without;
    };
    const Case cases[] = {
        {CmdGetMeetingDone, {StateIdle, StateAdd, StateAudioConference}},
        {CmdGetUserProfileDone, {StateIdle, StateCommit, StateCommitDone, StateSettingsPMI, StateAddPMI}},
        {CmdGetAudioConferenceDone, {StateIdle, StateAdd, StateCommit, StateCommitDone}}};
    for (const Case &c : cases) {
        for (const WorkflowState state : c.without) {
            SCOPED_TRACE(int(c.answered));
            givenTheMeetingIsLoaded({{"subject", "Changed"}});
            givenTheProfileIsLoaded();
            store().setPACAccountNo(1);
            manager().setState(state);
            answer(c.answered);
            turn();
            EXPECT_EQ(manager().state(), state);
            EXPECT_TRUE(client.requests().isEmpty()) << int(state);
            EXPECT_TRUE(sheets.shown.isEmpty() && sheets.refreshed.isEmpty()) << int(state);
            EXPECT_TRUE(editor->record().isNull() && appointment->location().isEmpty()) << int(state);
        }
    }
}

TEST_F(Answers, CodesThatNobodyAnswersWithAreDropped) {
    givenAnAppointmentWithAMeeting();
    manager().setState(StateCommitDone);
    for (const int code : {0, 9, 10, 11, 12, 14, -1, 1 << 20})
        manager().onExcuteCommandFinished(code, {{keyApptWindowID, windowID()}});
    turn();
    EXPECT_EQ(manager().state(), StateCommitDone);
    EXPECT_TRUE(client.requests().isEmpty());
}

TEST_F(Answers, AChangedAppointmentIsUpdatedWrittenAndThenSaved) {
    givenAnAppointmentWithAMeeting();
    client.schedulesAs(key, invitation);
    editor->pends("summary", "Review, second part");
    strip->status = DataStatus::UpdateMeeting;
    EXPECT_EQ(presses(HostAction::ActionSaveAndClose), 0);
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::GetMeeting, Asked::Update, Asked::GetMeeting}));
    EXPECT_FALSE(editor->record().isNull());
    EXPECT_EQ(hostOperations(), QStringList{"saveAndCloseWindow:"});
    EXPECT_EQ(manager().state(), StateIdle);
}

TEST_F(Answers, AnUnchangedAppointmentIsWrittenAgainWithoutTheClientAndWithoutTheRecord) {
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
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get()); // still loaded: no second reading
    turn();
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 1);
}

TEST_F(Answers, AnUpdateOfThePersonalMeetingReadsUserAndMeetingFirst) {
    givenAnAppointmentWithAMeeting();
    givenTheAccountsAreLoaded();
    givenTheMeetingIsLoaded({{"usePMI", 1}, {"subject", "Old"}});
    client.keepsSilentOn(Asked::Update);
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::Profile, Asked::GetMeeting, Asked::Update}));
    EXPECT_EQ(client.requests().at(1).key, roomNumber);
    EXPECT_EQ(client.last().json.value("apptInfo").toMap().value("subject"), "Review");
    EXPECT_EQ(manager().state(), StateUpdatePMI);
}

TEST_F(Answers, ThePersonalMeetingRefreshesOnlyASheetThatIsOpen) {
    givenAnAppointment();
    manager().setState(StateSettingsPMI);
    answer(CmdGetMeetingDone);
    EXPECT_TRUE(sheets.refreshed.isEmpty());
    sheets.settings.insert(windowID(), {});
    answer(CmdGetMeetingDone);
    EXPECT_EQ(sheets.refreshed, QStringList{windowID()});
}

TEST_F(Answers, ADeleteTakesTheMeetingOutWhetherItSucceededOrNot) {
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

TEST_F(Answers, ARemovalFromTheStripDeletesTheMeeting) {
    givenAnAppointmentWithAMeeting();
    client.deletes();
    manager().sendVlMeetingCommand(CmdCancelMeeting, strip.get());
    turn();
    ASSERT_EQ(client.asked(), QList<Asked>{Asked::Delete});
    EXPECT_EQ(client.last().key, key);
    EXPECT_EQ(editor->record(), "");
}

TEST_F(Answers, TheProfileBringsTheAccountsWhenTheyAreMissingOrTheUserIsAnother) {
    givenAnAppointment();
    vlUserProfileHelper &profile = vlUserProfileHelper::sharedInstance();
    givenTheProfileIsLoaded();
    answer(CmdGetUserProfileDone);
    turn();
    EXPECT_EQ(client.asked(), QList<Asked>{Asked::Accounts});
    EXPECT_TRUE(alerts.progressOn.isEmpty());
    givenTheAccountsAreLoaded();
    answer(CmdGetUserProfileDone);
    turn();
    EXPECT_EQ(client.timesAsked(Asked::Accounts), 1);
    givenTheProfileIsLoaded({{"userId", "user-2"}});
    answer(CmdGetUserProfileDone);
    turn();
    EXPECT_EQ(client.timesAsked(Asked::Accounts), 2);
    EXPECT_FALSE(profile.isAccountChanged());
}

TEST_F(Answers, AMoveOnTheCalendarUpdatesFromTheKeptSnapshotAndThenForgetsIt) {
    client.holdsTheMeeting(theMeeting({{"enableJBH", true}}));
    client.schedulesAs(key, invitation);
    appointment->carriesTheMeeting(key);
    FakeGrid grid(*appointment);
    FakeDate later(FakeAppointment::usualStart().addSecs(3600));
    EXPECT_EQ(vlCalendarActionMgr::sharedInstance().updateStartTime(grid.wrapper(), &later), 0);
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::GetMeeting, Asked::Update}));
    const QVariantMap update = client.last().json;
    EXPECT_EQ(update.value("meetingKey"), key);
    EXPECT_EQ(update.value("apptInfo").toMap().value("subject"), "Review");
    EXPECT_EQ(update.value("setting").toMap().value("enableJBH"), true); // the meeting's own
    EXPECT_TRUE(vlCalendarActionMgr::sharedInstance().getActionResult());
    for (const auto &context : MeetingContext::all())
        EXPECT_NE(context->meetingKey, key);
}

TEST_F(Answers, AfterTheEditorHasClosedNothingIsWrittenSentOrShown) {
    struct Case {
        MeetingCommand answered;
        WorkflowState state;
    };
    const Case cases[] = {{CmdGetMeetingDone, StateChangeSettings},
                          {CmdGetMeetingDone, StateCommit},
                          {CmdGetMeetingDone, StateCommitDone},
                          {CmdGetMeetingDone, StateSettingsPMI},
                          {CmdGetMeetingDone, StateAddPMI},
                          {CmdGetMeetingDone, StateUpdatePMI},
                          {CmdScheduleMeeting, StateCommit},
                          {CmdUpdateMeeting, StateCommit},
                          {CmdDeleteMeeting, StateIdle},
                          {CmdGetAudioConferenceDone, StateAudioConference}};
    for (const Case &c : cases) {
        SCOPED_TRACE(int(c.answered));
        givenAnAppointmentWithAMeeting();
        givenTheMeetingIsLoaded();
        theEditorCloses();
        manager().setState(c.state);
        answer(c.answered, succeeded);
        turn();
        EXPECT_TRUE(client.requests().isEmpty()) << int(c.state);
        EXPECT_TRUE(sheets.shown.isEmpty() && sheets.refreshed.isEmpty()) << int(c.state);
        EXPECT_EQ(appointment->location(), "") << int(c.state);
        EXPECT_FALSE(manager().needClearLocation()) << int(c.state);
    }
}

TEST_F(Answers, AStripThatOutlivesItsEditorDoesNotEmptyTheMeeting) {
    for (const WorkflowState state : {StateCommit, StateUpdatePMI}) {
        givenAnAppointmentWithAMeeting();
        givenTheMeetingIsLoaded();
        store().setSavedApptInfo({{vl_ApptInfo_Subject, "Review"}}); // as an editor's opening does
        QWidget window;
        strip->window = &window;
        editor.reset();
        manager().setState(state);
        answer(CmdGetMeetingDone);
        turn();
        EXPECT_TRUE(client.requests().isEmpty()) << int(state);
        theEditorCloses();
    }
}

TEST_F(Answers, ASheetLeftAfterItsEditorHasClosedSchedulesNothing) {
    givenAnAppointment();
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    const QString closedWindow = windowID();
    theEditorCloses();
    platform::services().notifications->post(notify_SettingCommit, {{keyVLUserOperator, keyVLSettingCommit},
                                                                    {keyButtonClickIsOK, true},
                                                                    {keyApptWindowID, closedWindow}});
    turn();
    EXPECT_TRUE(client.requests().isEmpty());
}

TEST_F(Answers, AnEditorThatDiesBeforeItsHostOperationIsRunIsLeftAlone) {
    givenAnAppointmentWithAMeeting();
    strip->action = HostAction::ActionSaveAndClose;
    givenTheMeetingIsLoaded();
    manager().setState(StateCommitDone);
    answer(CmdGetMeetingDone);
    theEditorCloses(); // between the answer and the next turn
    turn();
    EXPECT_FALSE(store().isVelaMeeting());
    EXPECT_EQ(manager().olWordMailEditor(), nullptr);
}

TEST_F(Answers, ALateAnswerGoesToTheWorkThatIsNowUnderWay) {
    givenAnAppointmentWithAMeeting();
    client.keepsSilentOn(Asked::GetMeeting);
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdChangeSettings, strip.get());
    desktop.runLoop->advance(31); // the request has given up waiting
    editor->pends("summary", "Review, second part");
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    client.sendsNow(Asked::GetMeeting, ScriptedClient::meetingAnswer(theMeeting()));
    turn();
    EXPECT_TRUE(sheets.shown.isEmpty());
    EXPECT_EQ(client.last().what, Asked::Update);
}

TEST_F(Answers, AnErrorAnswerLeavesEverythingWhereItWas) {
    givenAnAppointmentWithAMeeting();
    client.answers(Asked::GetMeeting, "0;Error 3001");
    strip->action = HostAction::ActionSend;
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(manager().state(), StateCommit);
    EXPECT_EQ(alerts.messages.size(), 1);
    EXPECT_EQ(hostOperations(), QStringList());
    EXPECT_TRUE(editor->record().isNull());
}
