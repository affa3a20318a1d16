// A scenario on whose calendar itself things are done, with no editor open.
#pragma once

#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "plugin/load/pluginLoad.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/scenarios/Scenario.h"
#include "tests/support/FreshWorkflow.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QJsonObject>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace scenarios {

namespace controls = mailhost::controls;

inline const QString seriesUid = u"series@scenario"_s;
inline const QString changedDay = u"20261125T080000Z"_s;

// The scenario's usual appointments and a daily series with one changed day.
inline OpenedCalendar calendarWithSeries() {
    return {"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\n"
            "BEGIN:VEVENT\r\nUID:plain@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T100000Z\r\n"
            "DTEND:20261124T110000Z\r\nSUMMARY:Quarterly review\r\nLOCATION:Room 7\r\n"
            "X-UNKNOWN;X-P=1:kept\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:invited@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261125T100000Z\r\n"
            "DTEND:20261125T110000Z\r\nSUMMARY:Planning\r\n"
            "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\r\n"
            "ATTENDEE;CN=Bo Guest:mailto:bo@parlo.example\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:other@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261126T100000Z\r\n"
            "DTEND:20261126T110000Z\r\nSUMMARY:Another one\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:series@scenario\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261123T080000Z\r\n"
            "DTEND:20261123T083000Z\r\nSUMMARY:Stand-up\r\nRRULE:FREQ=DAILY;COUNT=5\r\n"
            "X-SERIES:kept\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:series@scenario\r\nRECURRENCE-ID:20261125T080000Z\r\n"
            "DTSTAMP:20261101T080000Z\r\nDTSTART:20261125T130000Z\r\nDTEND:20261125T133000Z\r\n"
            "SUMMARY:Stand-up, later\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n"};
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
        ASSERT_NE(action, nullptr);
        ASSERT_TRUE(action->isEnabled()) << qPrintable(name);
        action->trigger();
        scenario.settle();
    }
    void answer(const QString &button) {
        auto *found = main()->mainWindow()->findChild<QPushButton *>(button);
        ASSERT_NE(found, nullptr) << qPrintable(button);
        QTest::mouseClick(found, Qt::LeftButton);
        scenario.settle();
    }
    void deleteSelected() {
        command(controls::deleteAction);
        answer(controls::deleteConfirmButton);
    }
    void cancelSelected() {
        command(controls::cancelMeetingAction);
        answer(controls::deleteConfirmButton);
    }
    // A saved appointment with a meeting, and no editor.
    void giveMeeting(const QString &uid) {
        const QPointer<mailhost::EditorWindow> editor = scenario.open(uid);
        scenario.addMeeting(editor);
        if (editor->viewController()->isMeeting())
            scenario.pressSend(editor);
        else
            scenario.pressSave(editor);
        scenario.settle();
        if (editor)
            editor->closeNow();
        scenario.settle();
        scenario.wait(1);
        ASSERT_FALSE(scenario.meetingKey(uid).isEmpty());
        scenario.forget();
    }
    // The same after the programs were started anew: nothing has been answered yet.
    static void startAfresh() {
        startWorkflowAfresh();
        fillPluginPorts();
    }
    std::optional<QJsonObject> meeting(const QString &key) { return scenario.client().meeting(key); }
    QJsonObject meetingOf(const QString &uid) {
        return scenario.client().meeting(scenario.meetingKey(uid)).value_or(QJsonObject());
    }
    bool isInFile(const QString &uid) {
        QString error;
        const auto file = mailhost::CalendarFile::open(scenario.calendarPath(), &error);
        return file && file->find(uid);
    }
    qint64 startInFile(const QString &uid) { return scenario.inFile(uid).start.value.toSecsSinceEpoch(); }
    // What the person sees is what the file has.
    void theGridShowsTheFile(const QString &uid) {
        for (const mailhost::MainWindowController *window : scenario.host().mainWindowControllers()) {
            mailhost::CalendarGrid *grid = window->mainWindow()->calendar();
            const bool exists = isInFile(uid);
            ASSERT_EQ(grid->select(uid), exists);
            if (!exists)
                continue;
            EXPECT_EQ(grid->selected()->start.toSecsSinceEpoch(), startInFile(uid));
            EXPECT_EQ(grid->selected()->end.toSecsSinceEpoch(),
                      scenario.inFile(uid).end.value.toSecsSinceEpoch());
            EXPECT_EQ(grid->selected()->summary, scenario.inFile(uid).summary);
        }
    }
    // Cancellations.
    int cancellationsSent() {
        const QDir outbox(QFileInfo(scenario.calendarPath()).path() + u"/outbox"_s);
        return int(outbox.entryList({u"*-cancel-*.eml"_s}).size());
    }
};

} // namespace scenarios
