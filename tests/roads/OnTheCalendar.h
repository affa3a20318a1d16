// A desk on whose calendar itself things are done, with no editor open.
#pragma once

#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "plugin/load/pluginLoad.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/workflow/workflowSession.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "tests/roads/Desk.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QJsonObject>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace roads {

namespace controls = mailhost::controls;

inline const QString seriesUid = QStringLiteral("series@desk");
inline const QString changedDay = QStringLiteral("20261125T080000Z");

// The desk's usual appointments and a daily series with one changed day.
inline OpenedCalendar calendarWithSeries() {
    return {"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Somebody//Else//EN\r\n"
            "BEGIN:VEVENT\r\nUID:plain@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261124T100000Z\r\n"
            "DTEND:20261124T110000Z\r\nSUMMARY:Quarterly review\r\nLOCATION:Room 7\r\n"
            "X-UNKNOWN;X-P=1:kept\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:invited@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261125T100000Z\r\n"
            "DTEND:20261125T110000Z\r\nSUMMARY:Planning\r\n"
            "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\r\n"
            "ATTENDEE;CN=Bo Guest:mailto:bo@parlo.example\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:other@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261126T100000Z\r\n"
            "DTEND:20261126T110000Z\r\nSUMMARY:Another one\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:series@desk\r\nDTSTAMP:20261101T080000Z\r\nDTSTART:20261123T080000Z\r\n"
            "DTEND:20261123T083000Z\r\nSUMMARY:Stand-up\r\nRRULE:FREQ=DAILY;COUNT=5\r\n"
            "X-SERIES:kept\r\nEND:VEVENT\r\n"
            "BEGIN:VEVENT\r\nUID:series@desk\r\nRECURRENCE-ID:20261125T080000Z\r\n"
            "DTSTAMP:20261101T080000Z\r\nDTSTART:20261125T130000Z\r\nDTEND:20261125T133000Z\r\n"
            "SUMMARY:Stand-up, later\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n"};
}

class OnTheCalendar : public testing::TestWithParam<const char *> {
protected:
    Desk desk{QString::fromLatin1(GetParam()), calendarWithSeries()};

    mailhost::MainWindowController *main() { return desk.host().mainWindowController(); }
    mailhost::CalendarGrid *calendar() { return main()->mainWindow()->calendar(); }
    void select(const QString &uid, const QString &day = QString()) {
        ASSERT_TRUE(calendar()->select(uid, day)) << qPrintable(uid);
    }
    void command(const QString &name) {
        QAction *action = main()->mainWindow()->command(name);
        ASSERT_NE(action, nullptr);
        ASSERT_TRUE(action->isEnabled()) << qPrintable(name);
        action->trigger();
        desk.settle();
    }
    void answer(const QString &button) {
        auto *found = main()->mainWindow()->findChild<QPushButton *>(button);
        ASSERT_NE(found, nullptr) << qPrintable(button);
        QTest::mouseClick(found, Qt::LeftButton);
        desk.settle();
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
        const QPointer<mailhost::EditorWindow> editor = desk.open(uid);
        desk.addMeeting(editor);
        if (editor->viewController()->isMeeting())
            desk.pressSend(editor);
        else
            desk.pressSave(editor);
        desk.settle();
        if (editor)
            editor->closeNow();
        desk.settle();
        desk.wait(1);
        ASSERT_FALSE(desk.meetingKey(uid).isEmpty());
        desk.forget();
    }
    // The same after the programs were started anew: nothing has been answered yet.
    static void startAfresh() {
        startWorkflowAfresh();
        fillPluginPorts();
    }
    std::optional<QJsonObject> meeting(const QString &key) { return desk.client().meeting(key); }
    QJsonObject meetingOf(const QString &uid) {
        return desk.client().meeting(desk.meetingKey(uid)).value_or(QJsonObject());
    }
    bool isInFile(const QString &uid) {
        QString error;
        const auto file = mailhost::CalendarFile::open(desk.calendarPath(), &error);
        return file && file->find(uid);
    }
    qint64 startInFile(const QString &uid) { return desk.inFile(uid).start.value.toSecsSinceEpoch(); }
    // What the person sees is what the file has.
    void theGridShowsTheFile(const QString &uid) {
        for (const mailhost::MainWindowController *window : desk.host().mainWindowControllers()) {
            mailhost::CalendarGrid *grid = window->mainWindow()->calendar();
            const bool exists = isInFile(uid);
            ASSERT_EQ(grid->select(uid), exists);
            if (!exists)
                continue;
            EXPECT_EQ(grid->selected()->start.toSecsSinceEpoch(), startInFile(uid));
            EXPECT_EQ(grid->selected()->end.toSecsSinceEpoch(),
                      desk.inFile(uid).end.value.toSecsSinceEpoch());
            EXPECT_EQ(grid->selected()->summary, desk.inFile(uid).summary);
        }
    }
    // Cancellations.
    int cancellationsSent() {
        const QDir outbox(QFileInfo(desk.calendarPath()).path() + QStringLiteral("/outbox"));
        return int(outbox.entryList({QStringLiteral("*-cancel-*.eml")}).size());
    }
};

} // namespace roads
