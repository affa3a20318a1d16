// A scenario in which the user works on the calendar itself, with no editor open.
#pragma once

#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"

namespace scenarios {

namespace controls = mailhost::controls;

inline const QString series = u"series@scenario"_s; // daily, with one changed day
inline const QString changedDay = u"20261125T080000Z"_s;

inline OpenedCalendar calendarWithSeries() {
    return {usualCalendar()
                .event(series, "Stand-up",
                       "DTSTART:20261123T080000Z\nDTEND:20261123T083000Z\nRRULE:FREQ=DAILY;COUNT=5\n"
                       "X-SERIES:kept\n")
                .event(series, "Stand-up, later",
                       "RECURRENCE-ID:20261125T080000Z\nDTSTART:20261125T130000Z\nDTEND:20261125T133000Z\n")
                .text()};
}

class OnTheCalendar : public testing::TestWithParam<const char *> {
protected:
    Scenario scenario{QString::fromLatin1(GetParam()), calendarWithSeries()};

    mailhost::MainWindowController *main() { return scenario.host().mainWindowController(); }
    mailhost::CalendarGrid *calendar() { return main()->mainWindow()->calendar(); }
    void select(const QString &uid, const QString &day = QString()) {
        ASSERT_TRUE(calendar()->select(uid, day)) << qPrintable(uid);
    }
    void command(const QString &name) {
        QAction *action = main()->mainWindow()->command(name);
        ASSERT_TRUE(action && action->isEnabled()) << qPrintable(name);
        action->trigger();
        scenario.settle();
    }
    void rename(const QString &subject) {
        main()->commands()->renameTo(subject);
        scenario.settle();
    }
    // Runs a command that asks a question, and presses the button of the answer.
    void command(const QString &name, const QString &answer) {
        command(name);
        auto *button = main()->mainWindow()->findChild<QPushButton *>(answer);
        ASSERT_NE(button, nullptr) << qPrintable(answer);
        QTest::mouseClick(button, Qt::LeftButton);
        scenario.settle();
    }
    void deleteSelected() { command(controls::deleteAction, controls::deleteConfirmButton); }
    void cancelSelected() { command(controls::cancelMeetingAction, controls::deleteConfirmButton); }
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
        ASSERT_FALSE(scenario.meetingKey(uid).isEmpty());
        scenario.forget();
    }
    bool isInFile(const QString &uid) {
        return mailhost::CalendarFile::open(scenario.calendarPath(), nullptr)->find(uid).has_value();
    }
    qint64 startInFile(const QString &uid) { return scenario.inFile(uid).start.value.toSecsSinceEpoch(); }
    qint64 startAtClient(const QString &uid) { return scenario.meeting(uid)["startTime"].toInteger(); }
    // The grid shows the values in the file.
    void expectTheGridShowsTheFile(const QString &uid) {
        const bool exists = isInFile(uid);
        ASSERT_EQ(calendar()->select(uid), exists);
        if (!exists)
            return;
        const mailhost::Appointment appointment = scenario.inFile(uid);
        EXPECT_EQ(calendar()->selected()->start, appointment.start.value);
        EXPECT_EQ(calendar()->selected()->end, appointment.end.value);
        EXPECT_EQ(calendar()->selected()->summary, appointment.summary);
    }
    int cancellationsSent() {
        const QDir outbox(QFileInfo(scenario.calendarPath()).path() + u"/outbox"_s);
        return int(outbox.entryList({u"*-cancel-*.eml"_s}).size());
    }
};

} // namespace scenarios
