// A meeting from the click that adds it to the message that is sent, in every generation of the host.
#include "tests/scenarios/Scenario.h"

using namespace scenarios;

namespace {

class MainScenario : public OnHosts {
protected:
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
};

INSTANTIATE_TEST_SUITE_P(Generations, MainScenario, testing::Values("14.1.4", "15.8", "15.9", "16"));

} // namespace

TEST_P(MainScenario, AddedThroughTheSheetAndSavedTheAppointmentHasItsMeeting) {
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.addMeeting(editor);
    EXPECT_EQ(scenario.sent("1"), 1);
    EXPECT_TRUE(scenario.inFile(Scenario::plain).ucCapabilities.isEmpty())
        << "nothing is stored before the user saves";
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    const QJsonObject meeting = scenario.meeting(Scenario::plain);
    const QString url = meeting["joinUrl"].toString();
    EXPECT_EQ(saved.location, u"Room 7 "_s + url);
    EXPECT_TRUE(saved.bodyHtml.contains(u"<p>Agenda <b>first</b>.</p>"_s)) << qPrintable(saved.bodyHtml);
    EXPECT_TRUE(saved.bodyHtml.contains(url));
    EXPECT_EQ(saved.bodyHtml.count(u"MacVlBookmarkBegin"_s), 1);
    EXPECT_EQ(scenario.sent("2"), 0) << "what was just scheduled needs no update";
    EXPECT_TRUE(scenario.fileBytes().contains("X-UNKNOWN;X-P=1:kept"));
    EXPECT_EQ(meeting["subject"].toString(), u"Quarterly review"_s);
    EXPECT_EQ(meeting["startTime"].toInteger(), saved.start.value.toSecsSinceEpoch());
}

TEST_P(MainScenario, ReopenedFromTheFileTheMeetingIsThereAndItsSettingsCanBeChanged) {
    scenario.addMeetingAndSave(editor);
    scenario.close(editor);
    editor = scenario.open(Scenario::plain);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::MeetingAttached);
    scenario.clickSettings(editor);
    scenario.confirmSheet();
    scenario.forget();
    scenario.typeSubject(editor, u"Half-yearly review"_s);
    for (int i = 0; i < 2; ++i)
        scenario.pressSave(editor);
    EXPECT_EQ(scenario.sent("2"), 1) << "what has not changed again is not sent again";
    EXPECT_EQ(scenario.meeting(Scenario::plain)["subject"].toString(), u"Half-yearly review"_s);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Half-yearly review"_s);
}

TEST_P(MainScenario, SentWithAttendeesTheMessageCarriesTheMeetingAndTheRooms) {
    scenario.close(editor);
    editor = scenario.open(Scenario::invited);
    scenario.addMeeting(editor);
    scenario.pressSend(editor);
    scenario.wait(1);
    const mailhost::Appointment sent = scenario.inFile(Scenario::invited);
    const QString url = scenario.meeting(Scenario::invited)["joinUrl"].toString();
    EXPECT_EQ(sent.location, url + u" Blue room; Red room"_s);
    EXPECT_EQ(sent.sequence, 1);
    EXPECT_EQ(scenario.mailsSent(u"*.eml"_s), 1);
    EXPECT_TRUE(mailhost::EditorWindowController::open().isEmpty()) << "a sent editor closes";
}

TEST_P(MainScenario, AnAudioConferenceIsWrittenIntoBodyAndLocation) {
    const QJsonArray numbers{QJsonObject{{"country", "US"}, {"number", "800"}}};
    scenario.client().setAccounts(
        {QJsonObject{{"meetingNumber", 5551}, {"invitation", "Dial 800"}, {"tollFreeNumbers", numbers}}});
    Scenario::stripOf(editor)->onClickAddPACAccount1();
    scenario.settle();
    scenario.pressSave(editor);
    const mailhost::Appointment saved = scenario.inFile(Scenario::plain);
    EXPECT_EQ(saved.location, u"Room 7 800 (US Toll Free), 5551"_s);
    EXPECT_TRUE(saved.bodyHtml.contains(u"<p>Agenda <b>first</b>.</p>"_s)) << qPrintable(saved.bodyHtml);
    EXPECT_TRUE(saved.bodyHtml.contains(u"Dial 800"_s)) << qPrintable(saved.bodyHtml);
}

TEST_P(MainScenario, AfterACancelledSheetTheAppointmentSavesAsWithoutThePlugin) {
    const QByteArray before = scenario.fileBytes();
    scenario.clickAdd(editor);
    scenario.cancelSheet();
    EXPECT_EQ(scenario.sent("1"), 0);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    EXPECT_FALSE(editor->viewController()->isDirty());
    EXPECT_EQ(scenario.fileBytes(), before);
    scenario.forget();
    scenario.typeSubject(editor, u"Renamed"_s);
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, u"Renamed"_s);
    EXPECT_TRUE(scenario.desktop().bus->posted().isEmpty());
}
