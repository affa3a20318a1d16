#include "tests/workflow/WorkflowFixture.h"

#include "plugin/workflow/recordWriteBack.h"
#include "plugin/workflow/vlPACMeetingMgr.h"

#include <QLineEdit>

namespace {

const QList<ScriptedClient::Account> twoAccounts{{"800-1", 111, "Dial 800-1"}, {"800-2", 222, "Dial 800-2"}};

class AudioConference : public WorkflowTest {
protected:
    // The location that the host stores now for an appointment in "Room R".
    static QString storedLocation() {
        FakeObject record("ECMutableCalendarEvent", {{"location", "Room R"}});
        updateVlKeyInfoToAppointmentForPAC(&record);
        return record.values.value("location").toString();
    }
};

} // namespace

TEST_F(AudioConference, IsWrittenIntoBodyAndLocationAfterUserAndAccountsAreRead) {
    appointment->values.insert("location", "Room R");
    givenAnAppointment();
    client.hasAccounts(twoAccounts);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdAddAudioConference1, strip.get()), 0);
    EXPECT_EQ(storedLocation(), "Room R") << "written before the accounts are read";
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::Profile, Asked::Accounts}));
    EXPECT_EQ(alerts.shownOn, QList<QWidget *>{editor->window()}); // while the accounts are read
    EXPECT_EQ(appointment->location(), "Room R 800-1 (US Toll Free), 111");
    EXPECT_EQ(editor->locationField()->text(), appointment->location());
    EXPECT_TRUE(editor->body().contains("Dial 800-1"));
    EXPECT_TRUE(alerts.alerts.isEmpty() && strip->shown.isEmpty()) << "written before the accounts are read";
    EXPECT_EQ(manager().state(), StateAudioConference);

    manager().sendVlMeetingCommand(CmdAddAudioConference2, strip.get()); // user and accounts are known now
    turn();
    EXPECT_EQ(client.requests().size(), 2);
    EXPECT_EQ(appointment->location(), "Room R 800-2 (US Toll Free), 222");
    MeetingContext::atHand().pendingWriteBack.emplace().needClearLocation = true;
    EXPECT_EQ(storedLocation(), appointment->location());
    EXPECT_FALSE(manager().needClearLocation()) << "a later record would lose its location";
}

TEST_F(AudioConference, TheAccountsOfTheUserBeforeAreReadAgainAndNeverUsed) {
    givenAnAppointment();
    givenTheProfileIsLoaded();
    givenTheAccountsAreLoaded(twoAccounts);
    givenTheProfileIsLoaded({{"userId", "user-2"}});
    client.answers(Asked::Accounts, "not base64!");
    EXPECT_EQ(vlPACMeetingMgr::sharedInstance().onGetPACActionFinished({}), 0);
    EXPECT_TRUE(alerts.alerts.isEmpty()) << "no conference is being added";
    manager().sendVlMeetingCommand(CmdAddAudioConference1, strip.get());
    turn();
    EXPECT_EQ(client.asked(), QList<Asked>{Asked::Accounts});
    EXPECT_EQ(appointment->location(), "");
    EXPECT_EQ(alerts.alerts.last().message, "[SystemError]") << "the answer cannot be read";
    client.hasAccounts({{"900", 9, "Dial 900"}});
    manager().sendVlMeetingCommand(CmdAddAudioConference1, strip.get());
    turn();
    EXPECT_EQ(appointment->location(), "900 (US Toll Free), 9");
}

TEST_F(AudioConference, AnAccountWithoutInvitationGivesAnAlertAndNoMeeting) {
    appointment->values.insert("location", "Room R");
    givenAnAppointment();
    givenTheProfileIsLoaded();
    givenTheAccountsAreLoaded({{"800-1", 111, ""}});
    manager().sendVlMeetingCommand(CmdAddAudioConference1, strip.get());
    ASSERT_EQ(alerts.alerts.size(), 1);
    EXPECT_EQ(alerts.alerts.first().window, editor->window());
    EXPECT_EQ(alerts.alerts.first().message, "[WarnMsg_PACIsDisabled]");
    EXPECT_EQ(strip->shown, QList<StripState>{StripState::NoMeeting});
    for (EditorStrip *each : std::initializer_list<EditorStrip *>{nullptr, strip.get()})
        EXPECT_EQ(vlPACMeetingMgr::sharedInstance().schedulePACMeeting(each), 0);
    EXPECT_EQ(appointment->location(), "Room R");
    EXPECT_EQ(storedLocation(), "Room R") << "a save has written the numbers";
}

TEST_F(AudioConference, ALocationIsTheUsersTextBeforeTheNumbersOfTheAccount) {
    const vlPACMeetingMgr &conferences = vlPACMeetingMgr::sharedInstance();
    store().setPACAccountNo(PACAccount::First);
    EXPECT_EQ(conferences.getOLUserInputString("A, B"), "A, B"); // no accounts are known
    EXPECT_TRUE(conferences.getNewLocationForPAC({}).isNull());
    givenTheAccountsAreLoaded(twoAccounts);
    const QString numbers = "800-1 (US Toll Free), 111";
    EXPECT_EQ(conferences.getNewLocationForPAC({}), numbers);
    for (const auto &[location, own] :
         {std::pair{"Room R 800-1 (US Toll Free), 111 800-2 (US Toll Free), 222", "Room R"},
          {"111,222, Room R", "Room R"},
          {"800-1 (US Toll Free), 111", ""},
          {"A, B", "A, B"}}) {
        EXPECT_EQ(conferences.getOLUserInputString(location), own);
        EXPECT_EQ(conferences.getNewLocationForPAC(location), QString(own) + ' ' + numbers);
    }
    givenTheAccountsAreLoaded({{{}, 555, "Dial"}}); // an account without numbers: every comma is removed
    EXPECT_EQ(conferences.getOLUserInputString("Room R , 555"), "Room R");
    EXPECT_EQ(conferences.getNewLocationForPAC("Room R"), "Room R , 555");
}
