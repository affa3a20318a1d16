// What a person does to a meeting on the calendar itself.
#include "tests/roads/OnTheCalendar.h"

using namespace roads;

namespace {

INSTANTIATE_TEST_SUITE_P(Generations, OnTheCalendar, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(OnTheCalendar, AMoveAResizeAndARenameReachTheFileAndTheClient) {
    giveMeeting(Desk::plain);
    const qint64 start = startInFile(Desk::plain);
    select(Desk::plain);
    command(controls::laterAction);
    EXPECT_EQ(startInFile(Desk::plain), start + 1800);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start + 1800);
    EXPECT_EQ(desk.sent("2"), 1);
    command(controls::longerAction);
    EXPECT_EQ(desk.inFile(Desk::plain).end.value.toSecsSinceEpoch(), start + 1800 + 5400);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start + 1800);
    EXPECT_EQ(meetingOf(Desk::plain)["duration"].toString(), "90");
    main()->commands()->renameTo("Half-yearly review");
    desk.settle();
    EXPECT_EQ(desk.inFile(Desk::plain).summary, "Half-yearly review");
    EXPECT_EQ(meetingOf(Desk::plain)["subject"].toString(), "Half-yearly review");
    EXPECT_EQ(desk.sent("2"), 3);
    EXPECT_EQ(desk.sent("1"), 0);
    theGridShowsTheFile(Desk::plain);
    EXPECT_TRUE(desk.fileBytes().contains("X-UNKNOWN;X-P=1:kept"));
}

TEST_P(OnTheCalendar, WithoutAClientEveryChangeOfAMeetingVisiblyStaysUndone) {
    giveMeeting(Desk::plain);
    giveMeeting(Desk::invited);
    const QString key = desk.meetingKey(Desk::plain);
    const QByteArray before = desk.fileBytes();
    desk.clientIsUninstalled();
    const std::function<void()> changes[] = {
        [this] { command(controls::laterAction); }, [this] { command(controls::longerAction); },
        [this] { main()->commands()->renameTo("Renamed"); }, [this] { deleteSelected(); }};
    for (const auto &change : changes) {
        select(Desk::plain);
        change();
        desk.settle();
        EXPECT_EQ(Desk::alertText(), Desk::text("NoVelaClient"));
        desk.dismissAlert();
        EXPECT_EQ(desk.fileBytes(), before);
        theGridShowsTheFile(Desk::plain);
    }
    EXPECT_TRUE(meeting(key));
    EXPECT_EQ(desk.sent("2") + desk.sent("3"), 0);
}

TEST_P(OnTheCalendar, ARefusedChangeIsNotTakenForTheMeetingOfTheEditorThatOpensNext) {
    giveMeeting(Desk::plain);
    desk.clientQuits();
    select(Desk::plain);
    command(controls::laterAction);
    desk.dismissAlert();
    desk.clientRuns();
    mailhost::EditorWindow *editor = desk.open(Desk::other);
    EXPECT_EQ(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    desk.addMeeting(editor);
    desk.pressSave(editor);
    EXPECT_NE(desk.meetingKey(Desk::other), desk.meetingKey(Desk::plain));
}

TEST_P(OnTheCalendar, AnErrorThatTheClientAnswersIsSaidAndTheHostsChangeStands) {
    giveMeeting(Desk::plain);
    const qint64 start = startInFile(Desk::plain);
    desk.given("once error update 0;Error 3001");
    select(Desk::plain);
    command(controls::laterAction);
    EXPECT_FALSE(Desk::alertText().isNull());
    desk.dismissAlert();
    EXPECT_EQ(startInFile(Desk::plain), start + 1800);
    const auto theNextEditorHasNoMeeting = [this] {
        mailhost::EditorWindow *next = desk.open(Desk::other);
        EXPECT_EQ(Desk::stripOf(next)->uiStatus(), StripState::NoMeeting) << "it is the moved one's";
        next->closeNow();
        desk.wait(1);
    };
    theNextEditorHasNoMeeting();
    for (const char *noAnswer : {"once error update nothing", "once error get nothing"}) {
        desk.given(noAnswer);
        command(controls::laterAction);
        theNextEditorHasNoMeeting();
    }
    command(controls::laterAction);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start + 7200) << "the next change catches up";
}

TEST_P(OnTheCalendar, ADeleteGoesThroughOnceAnActionHasSucceeded) {
    giveMeeting(Desk::plain);
    const QString key = desk.meetingKey(Desk::plain);
    select(Desk::plain);
    deleteSelected();
    EXPECT_FALSE(meeting(key));
    EXPECT_FALSE(isInFile(Desk::plain));
    theGridShowsTheFile(Desk::plain);
    EXPECT_EQ(desk.sent("3"), 1);
}

TEST_P(OnTheCalendar, TheFirstDeleteOfASessionKeepsTheAppointmentAndTheSecondTakesIt) {
    giveMeeting(Desk::plain);
    startAfresh();
    select(Desk::plain);
    deleteSelected();
    EXPECT_TRUE(isInFile(Desk::plain)) << "no action of this session has succeeded yet";
    theGridShowsTheFile(Desk::plain);
    desk.wait(1);
    if (!Desk::alertText().isNull())
        desk.dismissAlert();
    select(Desk::plain);
    deleteSelected();
    EXPECT_FALSE(isInFile(Desk::plain));
}

TEST_P(OnTheCalendar, AFailedActionKeepsWhatIsDeletedNext) {
    giveMeeting(Desk::plain);
    giveMeeting(Desk::invited);
    desk.given("once delay delete 1000");
    select(Desk::plain);
    deleteSelected();
    desk.clientIsInstalled("3.6.40486"); // too old a one takes its place before the answer arrives
    desk.wait(2);
    if (!Desk::alertText().isNull())
        desk.dismissAlert();
    desk.clientIsInstalled("3.6.40500");
    select(Desk::invited);
    cancelSelected();
    EXPECT_TRUE(isInFile(Desk::invited));
    EXPECT_EQ(cancellationsSent(), 0) << "nobody is told of a cancellation that was held back";
    theGridShowsTheFile(Desk::invited);
}

TEST_P(OnTheCalendar, ACancelledMeetingIsGoneEverywhereAndTheAttendeesAreTold) {
    giveMeeting(Desk::invited);
    const QString key = desk.meetingKey(Desk::invited);
    select(Desk::invited);
    cancelSelected();
    EXPECT_FALSE(meeting(key));
    EXPECT_FALSE(isInFile(Desk::invited));
    EXPECT_EQ(cancellationsSent(), 1);
    EXPECT_FALSE(main()->mainWindow()->command(controls::undoAction)->isEnabled())
        << "what was sent cannot be taken back";
}

TEST_P(OnTheCalendar, ACancellationCanBeWrittenFirst) {
    giveMeeting(Desk::invited);
    const QString key = desk.meetingKey(Desk::invited);
    select(Desk::invited);
    command(controls::cancelMeetingAction);
    answer(controls::cancelWithMessageButton);
    const auto open = mailhost::EditorWindowController::open();
    ASSERT_EQ(open.size(), 1);
    mailhost::EditorWindow *editor = open.first()->editorWindow();
    EXPECT_TRUE(editor->viewController()->isCancelMode());
    EXPECT_NE(Desk::stripOf(editor)->uiStatus(), StripState::NoMeeting);
    desk.pressSend(editor);
    desk.wait(1);
    EXPECT_FALSE(isInFile(Desk::invited));
    EXPECT_FALSE(meeting(key));
    EXPECT_EQ(cancellationsSent(), 1);
}
