// The user works on the calendar itself: on meetings, on days of a series, beside an editor.
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"

using namespace scenarios;
namespace controls = mailhost::controls;

namespace {

const QString series = u"series@scenario"_s; // daily, with one changed day
const QString changedDay = u"20261125T080000Z"_s;

OpenedCalendar calendarWithSeries() {
    return {usualCalendar()
                .event(series, "Stand-up",
                       "DTSTART:20261123T080000Z\nDTEND:20261123T083000Z\nRRULE:FREQ=DAILY;COUNT=5\n")
                .event(series, "Stand-up, later",
                       "RECURRENCE-ID:20261125T080000Z\nDTSTART:20261125T130000Z\nDTEND:20261125T133000Z\n")
                .text()};
}

class OnTheCalendar : public testing::TestWithParam<const char *> {
protected:
    mailhost::MainWindowController *main() { return scenario.host().mainWindowController(); }
    mailhost::CalendarGrid *calendar() { return main()->mainWindow()->calendar(); }
    // Selects the appointment, or a day of it, and runs a command of the menu.
    void command(const QString &name, const QString &uid = {}, const QString &day = {}) {
        ASSERT_TRUE(uid.isEmpty() || calendar()->select(uid, day)) << qPrintable(uid);
        QAction *action = main()->mainWindow()->command(name);
        ASSERT_TRUE(action && action->isEnabled()) << qPrintable(name);
        action->trigger();
        scenario.settle();
    }
    void rename(const QString &subject) {
        main()->commands()->renameTo(subject);
        scenario.settle();
    }
    // Presses a button of the question that a command has asked.
    void answer(const QString &name = controls::deleteConfirmButton) {
        scenario.click(main()->mainWindow()->findChild<QPushButton *>(name));
    }
    // A saved appointment with a meeting, and no editor.
    void giveMeeting(const QString &uid) {
        const QPointer<mailhost::EditorWindow> editor = scenario.open(uid);
        scenario.addMeeting(editor);
        if (editor->viewController()->isMeeting())
            scenario.pressSend(editor);
        else
            scenario.pressSave(editor);
        if (editor)
            scenario.close(editor);
        scenario.wait(1);
        key = scenario.meetingKey(uid);
        ASSERT_FALSE(key.isEmpty());
        scenario.forget();
    }
    qint64 startInFile(const QString &uid) { return scenario.inFile(uid).start.value.toSecsSinceEpoch(); }
    qint64 startAtClient(const QString &uid) { return scenario.meeting(uid)["startTime"].toInteger(); }
    void expectTheGridShowsTheFile(const QString &uid) {
        const auto appointment = mailhost::CalendarFile::open(scenario.calendarPath(), nullptr)->find(uid);
        ASSERT_EQ(calendar()->select(uid), appointment.has_value());
        if (!appointment)
            return;
        EXPECT_EQ(calendar()->selected()->start, appointment->start.value);
        EXPECT_EQ(calendar()->selected()->end, appointment->end.value);
        EXPECT_EQ(calendar()->selected()->summary, appointment->summary);
    }
    // The meeting is gone from calendar, client and grid.
    void expectGone(const QString &uid) {
        EXPECT_FALSE(mailhost::CalendarFile::open(scenario.calendarPath(), nullptr)->find(uid));
        EXPECT_FALSE(scenario.client().meeting(key));
        EXPECT_FALSE(calendar()->select(uid));
    }
    // The editor that is open, and no other.
    static mailhost::EditorWindow *openedEditor() {
        EXPECT_EQ(mailhost::EditorWindowController::open().size(), 1);
        return mailhost::EditorWindowController::open().first()->editorWindow();
    }
    static bool offersMeeting(mailhost::EditorWindow *editor) {
        return std::ranges::any_of(Scenario::stripOf(editor)->findChildren<QAbstractButton *>(),
                                   &QWidget::isVisible);
    }

    Scenario scenario{QString::fromLatin1(GetParam()), calendarWithSeries()};
    QString key; // of the meeting given last
};

INSTANTIATE_TEST_SUITE_P(Hosts, OnTheCalendar, bothHosts);

} // namespace

TEST_P(OnTheCalendar, AMoveAResizeAndARenameReachTheFileAndTheClient) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    command(controls::laterAction, Scenario::plain);
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

TEST_P(OnTheCalendar, AnErrorThatTheClientAnswersIsSaidAndTheHostsChangeStands) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    for (const QString &answer : {u"update 0;Error 3001"_s, u"update nothing"_s, u"get nothing"_s}) {
        scenario.given(u"once error "_s + answer);
        command(controls::laterAction, Scenario::plain);
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

// Otherwise its late answer would bring the old time back.
TEST_P(OnTheCalendar, ASaveAndARemovalReplaceTheChangeThatIsNotAnswered) {
    giveMeeting(Scenario::plain);
    for (const bool isRemoved : {false, true}) {
        scenario.given("once delay get 35000");
        command(controls::laterAction, Scenario::plain);
        scenario.wait(31);
        scenario.dismissAlert();
        mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
        auto *time = editor->findChild<QTimeEdit *>(controls::startTimeField);
        time->setTime(time->time().addSecs(3600));
        if (isRemoved)
            scenario.clickRemove(editor);
        scenario.pressSave(editor);
        scenario.forget();
        scenario.wait(6);
        EXPECT_EQ(scenario.sent("2"), 0);
        scenario.close(editor);
    }
}

TEST_P(OnTheCalendar, WithoutAClientEveryChangeOfAMeetingVisiblyStaysUndone) {
    giveMeeting(Scenario::plain);
    const QByteArray before = scenario.fileBytes();
    scenario.clientIsUninstalled();
    for (const QString &change :
         {controls::laterAction, controls::longerAction, controls::deleteAction, u""_s}) {
        ASSERT_TRUE(calendar()->select(Scenario::plain));
        change.isEmpty() ? rename("Renamed") : command(change);
        if (change == controls::deleteAction)
            answer();
        EXPECT_EQ(Scenario::alertText(), Scenario::text("NoVelaClient"));
        scenario.dismissAlert();
        EXPECT_EQ(scenario.fileBytes(), before);
        expectTheGridShowsTheFile(Scenario::plain);
    }
    EXPECT_TRUE(scenario.client().meeting(key));
    EXPECT_EQ(scenario.sent("2") + scenario.sent("3"), 0);
}

TEST_P(OnTheCalendar, ADeletedOrCancelledMeetingIsGoneEverywhereAndTheAttendeesAreTold) {
    giveMeeting(Scenario::plain);
    command(controls::deleteAction, Scenario::plain);
    answer();
    expectGone(Scenario::plain);
    giveMeeting(Scenario::invited);
    command(controls::cancelMeetingAction, Scenario::invited);
    answer();
    expectGone(Scenario::invited);
    EXPECT_EQ(scenario.mailsSent(u"*-cancel-*.eml"_s), 1);
}

TEST_P(OnTheCalendar, ACancellationCanBeWrittenFirst) {
    giveMeeting(Scenario::invited);
    command(controls::cancelMeetingAction, Scenario::invited);
    answer(controls::cancelWithMessageButton);
    EXPECT_TRUE(openedEditor()->viewController()->isCancelMode());
    EXPECT_NE(Scenario::stripOf(openedEditor())->uiStatus(), StripState::NoMeeting);
    scenario.pressSend(openedEditor());
    scenario.wait(1);
    expectGone(Scenario::invited);
    EXPECT_EQ(scenario.mailsSent(u"*-cancel-*.eml"_s), 1);
}

TEST_P(OnTheCalendar, ADayOpensAsADayOrAsItsSeries) {
    giveMeeting(series);
    for (const QString &day : {changedDay, u"20261124T080000Z"_s}) {
        command(controls::openAction, series, day);
        EXPECT_TRUE(openedEditor()->viewController()->isOccurrenceOrException());
        EXPECT_FALSE(offersMeeting(openedEditor())) << "the meeting is the series'";
        if (day == changedDay)
            scenario.close(openedEditor());
    }
    scenario.click(openedEditor()->findChild<QPushButton *>(controls::openSeriesButton));
    EXPECT_FALSE(openedEditor()->viewController()->isOccurrenceOrException());
    EXPECT_TRUE(offersMeeting(openedEditor()));
    scenario.close(openedEditor());
    command(controls::openSeriesAction, series, changedDay);
    EXPECT_EQ(Scenario::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
}

TEST_P(OnTheCalendar, ALateAnswerFindsTheMainWindowClosed) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    scenario.given("delay update 5000");
    command(controls::laterAction, Scenario::plain);
    main()->window()->close();
    scenario.settle();
    EXPECT_EQ(main(), nullptr);
    scenario.wait(6);
    EXPECT_EQ(startInFile(Scenario::plain), start + 1800);
}

TEST_P(OnTheCalendar, AnOpenEditorFollowsAMove) {
    giveMeeting(Scenario::plain);
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.typeSubject(editor, "Typed meanwhile");
    command(controls::laterAction, Scenario::plain);
    scenario.wait(1);
    const qint64 start = startInFile(Scenario::plain);
    scenario.pressSave(editor);
    EXPECT_EQ(startInFile(Scenario::plain), start) << "saving what was typed does not move it back";
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, "Typed meanwhile");
    EXPECT_EQ(startAtClient(Scenario::plain), start);
}
