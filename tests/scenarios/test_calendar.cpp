// The user changes a meeting on the calendar itself.
#include "plugin/load/pluginLoad.h"
#include "tests/scenarios/OnTheCalendar.h"

using namespace scenarios;

namespace {

INSTANTIATE_TEST_SUITE_P(Hosts, OnTheCalendar, bothHosts);

} // namespace

TEST_P(OnTheCalendar, AMoveAResizeAndARenameReachTheFileAndTheClient) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    select(Scenario::plain);
    command(controls::laterAction);
    EXPECT_EQ(startInFile(Scenario::plain), start + 1800);
    EXPECT_EQ(startAtClient(Scenario::plain), start + 1800);
    EXPECT_EQ(scenario.sent("2"), 1);
    command(controls::longerAction);
    EXPECT_EQ(scenario.inFile(Scenario::plain).end.value.toSecsSinceEpoch(), start + 1800 + 3600);
    EXPECT_EQ(startAtClient(Scenario::plain), start + 1800);
    EXPECT_EQ(scenario.meeting(Scenario::plain)["duration"].toString(), "60");
    rename("Half-yearly review");
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, "Half-yearly review");
    EXPECT_EQ(scenario.meeting(Scenario::plain)["subject"].toString(), "Half-yearly review");
    EXPECT_EQ(scenario.sent("2"), 3);
    EXPECT_EQ(scenario.sent("1"), 0);
    expectTheGridShowsTheFile(Scenario::plain);
    EXPECT_TRUE(scenario.fileBytes().contains("X-UNKNOWN;X-P=1:kept"));
    EXPECT_FALSE(main()->mainWindow()->command(controls::undoAction)->isEnabled())
        << "the client would be left with other values";
}

TEST_P(OnTheCalendar, WithoutAClientEveryChangeOfAMeetingVisiblyStaysUndone) {
    giveMeeting(Scenario::plain);
    const QString key = scenario.meetingKey(Scenario::plain);
    const QByteArray before = scenario.fileBytes();
    scenario.clientIsUninstalled();
    const std::function<void()> changes[] = {[this] { command(controls::laterAction); },
                                             [this] { command(controls::longerAction); },
                                             [this] { rename("Renamed"); }, [this] { deleteSelected(); }};
    for (const auto &change : changes) {
        select(Scenario::plain);
        change();
        EXPECT_EQ(Scenario::alertText(), Scenario::text("NoVelaClient"));
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes(), before);
        expectTheGridShowsTheFile(Scenario::plain);
    }
    EXPECT_TRUE(scenario.client().meeting(key));
    EXPECT_EQ(scenario.sent("2") + scenario.sent("3"), 0);
}

TEST_P(OnTheCalendar, AnErrorThatTheClientAnswersIsSaidAndTheHostsChangeStands) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    select(Scenario::plain);
    for (const QString &answer : {u"update 0;Error 3001"_s, u"update nothing"_s, u"get nothing"_s}) {
        scenario.given(u"once error "_s + answer);
        command(controls::laterAction);
        EXPECT_TRUE(!Scenario::alertText().isNull() || answer.endsWith(u"nothing"_s));
        scenario.dismissAlert();
        mailhost::EditorWindow *next = scenario.open(Scenario::other);
        EXPECT_EQ(Scenario::stripOf(next)->uiStatus(), StripState::NoMeeting) << "it is the moved one's";
        scenario.close(next);
    }
    EXPECT_EQ(startInFile(Scenario::plain), start + 5400);
    command(controls::laterAction);
    EXPECT_EQ(startAtClient(Scenario::plain), start + 7200) << "the next change catches up";
}

TEST_P(OnTheCalendar, TheFirstDeleteOfASessionKeepsTheAppointmentAndTheSecondTakesIt) {
    giveMeeting(Scenario::plain);
    const QString key = scenario.meetingKey(Scenario::plain);
    startWorkflowAfresh(); // as when the programs are started again: nothing has been answered yet
    fillPluginPorts();
    select(Scenario::plain);
    deleteSelected();
    EXPECT_TRUE(isInFile(Scenario::plain)) << "no action of this session has succeeded yet";
    expectTheGridShowsTheFile(Scenario::plain);
    scenario.wait(1);
    scenario.dismissAlert();
    select(Scenario::plain);
    deleteSelected();
    EXPECT_FALSE(isInFile(Scenario::plain));
    EXPECT_FALSE(scenario.client().meeting(key));
    expectTheGridShowsTheFile(Scenario::plain);
}

TEST_P(OnTheCalendar, ACancelledMeetingIsGoneEverywhereAndTheAttendeesAreTold) {
    giveMeeting(Scenario::invited);
    const QString key = scenario.meetingKey(Scenario::invited);
    select(Scenario::invited);
    cancelSelected();
    EXPECT_FALSE(scenario.client().meeting(key));
    EXPECT_FALSE(isInFile(Scenario::invited));
    EXPECT_EQ(cancellationsSent(), 1);
}

TEST_P(OnTheCalendar, ACancellationCanBeWrittenFirst) {
    giveMeeting(Scenario::invited);
    const QString key = scenario.meetingKey(Scenario::invited);
    select(Scenario::invited);
    command(controls::cancelMeetingAction, controls::cancelWithMessageButton);
    ASSERT_EQ(Scenario::openEditors().size(), 1);
    mailhost::EditorWindow *editor = Scenario::openEditors().first()->editorWindow();
    EXPECT_TRUE(editor->viewController()->isCancelMode());
    EXPECT_NE(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.pressSend(editor);
    scenario.wait(1);
    EXPECT_FALSE(isInFile(Scenario::invited));
    EXPECT_FALSE(scenario.client().meeting(key));
    EXPECT_EQ(cancellationsSent(), 1);
}
