#include "tests/workflow/WorkflowFixture.h"

#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/workflow/vlCalendarActionMgr.h"

namespace {

class Answers : public WorkflowTest {};

const QVariantMap succeeded{{keyVLResult, keyVLSuccess}};

} // namespace

TEST_F(Answers, ASheetThatIsCancelledEndsTheWorkUnlessTheUserDoesNotWantToSeeIt) {
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
    EXPECT_EQ(manager().getPMIMeetingInfo(strip.get(), StateSettingsPMI), 0);
    EXPECT_EQ(manager().state(), StateIdle) << "begun without a user";
    manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get());
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::Profile, Asked::GetMeeting, Asked::Update}));
    EXPECT_EQ(client.requests().at(1).key, roomNumber);
    EXPECT_EQ(client.last().json.value("apptInfo").toMap().value("subject"), "Review");
    EXPECT_EQ(manager().state(), StateUpdatePMI);
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

TEST_F(Answers, AfterTheEditorHasClosedNothingIsWrittenSentOrShown) {
    const std::pair<MeetingCommand, WorkflowState> cases[] = {
        {CmdGetMeetingDone, StateChangeSettings},
        {CmdGetMeetingDone, StateCommit},
        {CmdGetMeetingDone, StateCommitDone},
        {CmdGetMeetingDone, StateSettingsPMI},
        {CmdGetMeetingDone, StateAddPMI},
        {CmdGetMeetingDone, StateUpdatePMI},
        {CmdScheduleMeeting, StateCommit},
        {CmdUpdateMeeting, StateCommit},
        {CmdDeleteMeeting, StateIdle},
        {CmdGetAudioConferenceDone, StateAudioConference}};
    for (const auto &[answered, state] : cases) {
        SCOPED_TRACE(testing::Message() << int(answered) << " in " << int(state));
        givenAnAppointmentWithAMeeting();
        givenTheMeetingIsLoaded();
        store().setSavedApptInfo({{vl_ApptInfo_Subject, "Review"}}); // as an editor's opening does
        theEditorCloses();
        manager().setState(state);
        answer(answered, succeeded);
        turn();
        EXPECT_TRUE(client.requests().isEmpty());
        EXPECT_TRUE(sheets.shown.isEmpty() && sheets.refreshed.isEmpty());
        EXPECT_EQ(appointment->location(), "");
        EXPECT_FALSE(manager().needClearLocation());
    }
}
