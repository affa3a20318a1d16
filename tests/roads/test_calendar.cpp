// What a person does to appointments on the calendar itself, with no editor open.
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

using namespace roads;
namespace controls = mailhost::controls;

namespace {

const QString seriesUid = QStringLiteral("series@desk");
const QString changedDay = QStringLiteral("20261125T080000Z");

// The desk's usual appointments and a daily series with one changed day.
OpenedCalendar calendarWithSeries() {
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
    command(controls::laterAction);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start + 3600) << "the next change catches up";
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

TEST_P(OnTheCalendar, OneDayOfASeriesChangesTheFileAloneAndNotTheMeeting) {
    giveMeeting(seriesUid);
    const QJsonObject before = meetingOf(seriesUid);
    const QString day = QStringLiteral("20261126T080000Z");
    desk.forget();
    select(seriesUid, day);
    command(controls::laterAction);
    main()->commands()->renameTo("Thursday's");
    desk.settle();
    select(seriesUid, changedDay);
    command(controls::laterAction);
    select(seriesUid, QStringLiteral("20261127T080000Z"));
    deleteSelected();
    EXPECT_TRUE(desk.desktop().bus->posted().isEmpty()) << "the client is not asked about single days";
    EXPECT_EQ(meetingOf(seriesUid), before);
    const auto thursday = mailhost::CalendarFile::open(desk.calendarPath(), nullptr)->find(seriesUid, day);
    ASSERT_TRUE(thursday);
    EXPECT_EQ(thursday->summary, "Thursday's");
    EXPECT_EQ(thursday->start.value.toUTC().time(), QTime(8, 30));
    EXPECT_EQ(desk.fileBytes().count("X-SERIES:kept"), 2) << "the new exception begins as the series";
    EXPECT_TRUE(desk.fileBytes().contains("EXDATE"));
    EXPECT_FALSE(calendar()->select(seriesUid, QStringLiteral("20261127T080000Z")));
    EXPECT_FALSE(desk.meetingKey(seriesUid).isEmpty());
}

TEST_P(OnTheCalendar, ADayOpensAsADayOrAsItsSeries) {
    giveMeeting(seriesUid);
    const auto openedEditor = [] {
        const auto open = mailhost::EditorWindowController::open();
        return open.size() == 1 ? open.first()->editorWindow() : nullptr;
    };
    const auto offersMeeting = [](mailhost::EditorWindow *editor) {
        const auto buttons = Desk::stripOf(editor)->findChildren<QAbstractButton *>();
        return std::any_of(buttons.begin(), buttons.end(),
                           [](const QAbstractButton *button) { return button->isVisible(); });
    };
    for (const QString &day : {changedDay, QStringLiteral("20261124T080000Z")}) {
        select(seriesUid, day);
        command(controls::openAction);
        ASSERT_NE(openedEditor(), nullptr);
        EXPECT_TRUE(openedEditor()->viewController()->isOccurrenceOrException());
        EXPECT_FALSE(offersMeeting(openedEditor())) << "the meeting is the series'";
        if (day == changedDay) {
            openedEditor()->closeNow();
            desk.settle();
            desk.wait(1);
        }
    }
    QTest::mouseClick(openedEditor()->findChild<QPushButton *>(controls::openSeriesButton), Qt::LeftButton);
    desk.settle();
    EXPECT_FALSE(openedEditor()->viewController()->isOccurrenceOrException());
    EXPECT_TRUE(offersMeeting(openedEditor()));
    EXPECT_EQ(Desk::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
    openedEditor()->closeNow();
    desk.settle();
    desk.wait(1);
    select(seriesUid, changedDay);
    command(controls::openSeriesAction);
    ASSERT_NE(openedEditor(), nullptr);
    EXPECT_EQ(Desk::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
}

TEST_P(OnTheCalendar, ALateAnswerDoesNotTouchTheEditorThatWasOpenedMeanwhile) {
    giveMeeting(Desk::plain);
    const qint64 start = startInFile(Desk::plain);
    desk.given("delay update 5000");
    select(Desk::plain);
    command(controls::laterAction);
    mailhost::EditorWindow *editor = desk.open(Desk::other);
    desk.typeSubject(editor, "Being typed");
    desk.wait(6);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start + 1800);
    EXPECT_EQ(startInFile(Desk::plain), start + 1800);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->viewController()->uncommittedChanges().keys(), QStringList{"content.summary"});
    EXPECT_TRUE(desk.inFile(Desk::other).ucCapabilities.isEmpty());
    desk.pressSave(editor);
    EXPECT_EQ(desk.inFile(Desk::other).summary, "Being typed");
    EXPECT_TRUE(desk.inFile(Desk::other).ucCapabilities.isEmpty());
}

TEST_P(OnTheCalendar, ALateAnswerFindsTheMainWindowClosed) {
    giveMeeting(Desk::plain);
    const qint64 start = startInFile(Desk::plain);
    mailhost::EditorWindow *editor = desk.open(Desk::other);
    for (const char *rule : {"delay update 5000", "once error update 0;Error 3001"}) {
        desk.given(rule);
        if (!main())
            desk.host().addMainWindow()->window()->show();
        select(Desk::plain);
        command(controls::laterAction);
        main()->window()->close();
        desk.settle();
        EXPECT_EQ(main(), nullptr);
        desk.wait(6);
        if (!Desk::alertText().isNull())
            desk.dismissAlert();
    }
    EXPECT_EQ(startInFile(Desk::plain), start + 3600);
    EXPECT_TRUE(editor->isVisible());
    desk.given("clear");
    desk.addMeeting(editor);
    desk.pressSave(editor);
    EXPECT_FALSE(desk.meetingKey(Desk::other).isEmpty()) << "the road is open";
}

TEST_P(OnTheCalendar, AnOpenEditorFollowsAMoveOnTheCalendar) {
    giveMeeting(Desk::plain);
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.typeSubject(editor, "Typed meanwhile");
    select(Desk::plain);
    command(controls::laterAction);
    desk.wait(1);
    const qint64 start = startInFile(Desk::plain);
    desk.pressSave(editor);
    EXPECT_EQ(startInFile(Desk::plain), start) << "saving what was typed does not move it back";
    EXPECT_EQ(desk.inFile(Desk::plain).summary, "Typed meanwhile");
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start);
}

TEST_P(OnTheCalendar, WhatTheHostAloneChangedIsUndoneAndWhatTheClientFollowedIsNot) {
    const QByteArray before = desk.fileBytes();
    const auto undo = [this] { return main()->mainWindow()->command(controls::undoAction); };
    select(Desk::other);
    command(controls::laterAction);
    select(Desk::other);
    deleteSelected();
    select(seriesUid, QStringLiteral("20261126T080000Z"));
    command(controls::laterAction);
    for (int i = 0; i < 3; ++i)
        command(controls::undoAction);
    EXPECT_EQ(desk.fileBytes().length(), before.length());
    EXPECT_EQ(startInFile(Desk::other), QDateTime({2026, 11, 26}, {10, 0}, Qt::UTC).toSecsSinceEpoch());
    command(controls::redoAction);
    EXPECT_EQ(startInFile(Desk::other), QDateTime({2026, 11, 26}, {10, 30}, Qt::UTC).toSecsSinceEpoch());
    command(controls::undoAction);
    EXPECT_FALSE(undo()->isEnabled());
    giveMeeting(Desk::plain);
    select(Desk::plain);
    command(controls::laterAction);
    EXPECT_FALSE(undo()->isEnabled()) << "the client would be left with another time";
}

TEST_P(OnTheCalendar, ASecondMainWindowShowsAndChangesTheSameCalendar) {
    giveMeeting(Desk::plain);
    command(controls::newWindowAction);
    ASSERT_EQ(desk.host().mainWindowControllers().size(), 2);
    mailhost::MainWindowController *second = desk.host().mainWindowControllers().last();
    select(Desk::other); // in the first one
    const qint64 start = startInFile(Desk::plain);
    ASSERT_TRUE(second->mainWindow()->calendar()->select(Desk::plain));
    second->mainWindow()->command(controls::laterAction)->trigger();
    desk.settle();
    EXPECT_EQ(startInFile(Desk::plain), start + 1800);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), start + 1800);
    theGridShowsTheFile(Desk::plain);
    main()->window()->close();
    desk.settle();
    EXPECT_EQ(main(), second);
    select(Desk::plain);
    command(controls::laterAction);
    EXPECT_EQ(startInFile(Desk::plain), start + 3600);
}

TEST_P(OnTheCalendar, EveryMainWindowHasThePluginsItemsAndKeepsThePersonsArrangement) {
    vlHookERageMainWindowController &hook = vlHookERageMainWindowController::sharedInstance();
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier); // as loading does, once for a process
    hook.addUIToMainWindow(vlStartToolbarItemIdentifier);
    platform::Toolbar *first = main()->mainWindow()->toolBar();
    const auto identifiers = [](platform::Toolbar *toolbar) {
        QStringList found;
        for (const platform::ToolbarItem *item : toolbar->visibleItems())
            found.append(item->itemIdentifier());
        return found;
    };
    const QStringList usual = identifiers(first);
    EXPECT_EQ(usual.indexOf(vlStartToolbarItemIdentifier), usual.indexOf(vlScheduleToolbarItemIdentifier) + 2)
        << qPrintable(usual.join(u' '));
    const auto at = int(usual.indexOf(vlScheduleToolbarItemIdentifier));
    first->moveItem(at, 0);
    command(controls::newWindowAction);
    platform::Toolbar *second = desk.host().mainWindowControllers().last()->mainWindow()->toolBar();
    EXPECT_EQ(identifiers(second), identifiers(first));
    EXPECT_EQ(identifiers(second).first(), vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    EXPECT_EQ(identifiers(second).count(vlScheduleToolbarItemIdentifier), 1);

    main()->window()->close();
    desk.settle();
    QWidget *control = second->controlFor(vlScheduleToolbarItemIdentifier);
    ASSERT_NE(control, nullptr);
    QTest::mouseClick(control, Qt::LeftButton);
    desk.settle();
    ASSERT_EQ(mailhost::EditorWindowController::open().size(), 1);
    ASSERT_TRUE(Desk::sheetIsUp());
    desk.confirmSheet();
    EXPECT_EQ(Desk::stripOf(mailhost::EditorWindowController::open().first()->editorWindow())->uiStatus(),
              StripState::MeetingAttached);
}
