// What a person does to a meeting on the calendar itself.
#include "tests/scenarios/OnTheCalendar.h"

using namespace scenarios;

namespace {

INSTANTIATE_TEST_SUITE_P(Generations, OnTheCalendar, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(OnTheCalendar, AMoveAResizeAndARenameReachTheFileAndTheClient) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    select(Scenario::plain);
    command(controls::laterAction);
    EXPECT_EQ(startInFile(Scenario::plain), start + 1800);
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), start + 1800);
    EXPECT_EQ(scenario.sent("2"), 1);
    command(controls::longerAction);
    EXPECT_EQ(scenario.inFile(Scenario::plain).end.value.toSecsSinceEpoch(), start + 1800 + 5400);
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), start + 1800);
    EXPECT_EQ(meetingOf(Scenario::plain)["duration"].toString(), "90");
    main()->commands()->renameTo("Half-yearly review");
    scenario.settle();
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, "Half-yearly review");
    EXPECT_EQ(meetingOf(Scenario::plain)["subject"].toString(), "Half-yearly review");
    EXPECT_EQ(scenario.sent("2"), 3);
    EXPECT_EQ(scenario.sent("1"), 0);
    theGridShowsTheFile(Scenario::plain);
    EXPECT_TRUE(scenario.fileBytes().contains("X-UNKNOWN;X-P=1:kept"));
}

TEST_P(OnTheCalendar, WithoutAClientEveryChangeOfAMeetingVisiblyStaysUndone) {
    giveMeeting(Scenario::plain);
    giveMeeting(Scenario::invited);
    const QString key = scenario.meetingKey(Scenario::plain);
    const QByteArray before = scenario.fileBytes();
    scenario.clientIsUninstalled();
    const std::function<void()> changes[] = {
        [this] { command(controls::laterAction); }, [this] { command(controls::longerAction); },
        [this] { main()->commands()->renameTo("Renamed"); }, [this] { deleteSelected(); }};
    for (const auto &change : changes) {
        select(Scenario::plain);
        change();
        scenario.settle();
        EXPECT_EQ(Scenario::alertText(), Scenario::text("NoVelaClient"));
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes(), before);
        theGridShowsTheFile(Scenario::plain);
    }
    EXPECT_TRUE(meeting(key));
    EXPECT_EQ(scenario.sent("2") + scenario.sent("3"), 0);
}

TEST_P(OnTheCalendar, ARefusedChangeIsNotTakenForTheMeetingOfTheEditorThatOpensNext) {
    giveMeeting(Scenario::plain);
    scenario.clientQuits();
    select(Scenario::plain);
    command(controls::laterAction);
    scenario.dismissAlert();
    scenario.clientRuns();
    mailhost::EditorWindow *editor = scenario.open(Scenario::other);
    EXPECT_EQ(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.addMeeting(editor);
    scenario.pressSave(editor);
    EXPECT_NE(scenario.meetingKey(Scenario::other), scenario.meetingKey(Scenario::plain));
}

TEST_P(OnTheCalendar, AnErrorThatTheClientAnswersIsSaidAndTheHostsChangeStands) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    scenario.given("once error update 0;Error 3001");
    select(Scenario::plain);
    command(controls::laterAction);
    EXPECT_FALSE(Scenario::alertText().isNull());
    scenario.dismissAlert();
    EXPECT_EQ(startInFile(Scenario::plain), start + 1800);
    const auto theNextEditorHasNoMeeting = [this] {
        mailhost::EditorWindow *next = scenario.open(Scenario::other);
        EXPECT_EQ(Scenario::stripOf(next)->uiStatus(), StripState::NoMeeting) << "it is the moved one's";
        next->closeNow();
        scenario.wait(1);
    };
    theNextEditorHasNoMeeting();
    for (const char *noAnswer : {"once error update nothing", "once error get nothing"}) {
        scenario.given(noAnswer);
        command(controls::laterAction);
        theNextEditorHasNoMeeting();
    }
    command(controls::laterAction);
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), start + 7200)
        << "the next change catches up";
}

TEST_P(OnTheCalendar, ADeleteGoesThroughOnceAnActionHasSucceeded) {
    giveMeeting(Scenario::plain);
    const QString key = scenario.meetingKey(Scenario::plain);
    select(Scenario::plain);
    deleteSelected();
    EXPECT_FALSE(meeting(key));
    EXPECT_FALSE(isInFile(Scenario::plain));
    theGridShowsTheFile(Scenario::plain);
    EXPECT_EQ(scenario.sent("3"), 1);
}

TEST_P(OnTheCalendar, TheFirstDeleteOfASessionKeepsTheAppointmentAndTheSecondTakesIt) {
    giveMeeting(Scenario::plain);
    startAfresh();
    select(Scenario::plain);
    deleteSelected();
    EXPECT_TRUE(isInFile(Scenario::plain)) << "no action of this session has succeeded yet";
    theGridShowsTheFile(Scenario::plain);
    scenario.wait(1);
    if (!Scenario::alertText().isNull())
        scenario.dismissAlert();
    select(Scenario::plain);
    deleteSelected();
    EXPECT_FALSE(isInFile(Scenario::plain));
}

TEST_P(OnTheCalendar, AFailedActionKeepsWhatIsDeletedNext) {
    giveMeeting(Scenario::plain);
    giveMeeting(Scenario::invited);
    scenario.given("once delay delete 1000");
    select(Scenario::plain);
    deleteSelected();
    scenario.clientIsInstalled("3.6.40486"); // too old a one takes its place before the answer arrives
    scenario.wait(2);
    if (!Scenario::alertText().isNull())
        scenario.dismissAlert();
    scenario.clientIsInstalled("3.6.40500");
    select(Scenario::invited);
    cancelSelected();
    EXPECT_TRUE(isInFile(Scenario::invited));
    EXPECT_EQ(cancellationsSent(), 0) << "nobody is told of a cancellation that was held back";
    theGridShowsTheFile(Scenario::invited);
}

TEST_P(OnTheCalendar, ACancelledMeetingIsGoneEverywhereAndTheAttendeesAreTold) {
    giveMeeting(Scenario::invited);
    const QString key = scenario.meetingKey(Scenario::invited);
    select(Scenario::invited);
    cancelSelected();
    EXPECT_FALSE(meeting(key));
    EXPECT_FALSE(isInFile(Scenario::invited));
    EXPECT_EQ(cancellationsSent(), 1);
    EXPECT_FALSE(main()->mainWindow()->command(controls::undoAction)->isEnabled())
        << "what was sent cannot be taken back";
}

TEST_P(OnTheCalendar, ACancellationCanBeWrittenFirst) {
    giveMeeting(Scenario::invited);
    const QString key = scenario.meetingKey(Scenario::invited);
    select(Scenario::invited);
    command(controls::cancelMeetingAction);
    answer(controls::cancelWithMessageButton);
    const auto open = mailhost::EditorWindowController::open();
    ASSERT_EQ(open.size(), 1);
    mailhost::EditorWindow *editor = open.first()->editorWindow();
    EXPECT_TRUE(editor->viewController()->isCancelMode());
    EXPECT_NE(Scenario::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    scenario.pressSend(editor);
    scenario.wait(1);
    EXPECT_FALSE(isInFile(Scenario::invited));
    EXPECT_FALSE(meeting(key));
    EXPECT_EQ(cancellationsSent(), 1);
}
