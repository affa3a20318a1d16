// Days of series, editors and windows beside the calendar, undo, and the tool-bar.
#include "tests/roads/OnTheCalendar.h"

using namespace roads;

namespace {

class AroundTheCalendar : public OnTheCalendar {};

INSTANTIATE_TEST_SUITE_P(Generations, AroundTheCalendar, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(AroundTheCalendar, OneDayOfASeriesChangesTheFileAloneAndNotTheMeeting) {
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

TEST_P(AroundTheCalendar, ADayOpensAsADayOrAsItsSeries) {
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

TEST_P(AroundTheCalendar, ALateAnswerDoesNotTouchTheEditorThatWasOpenedMeanwhile) {
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

TEST_P(AroundTheCalendar, ALateAnswerFindsTheMainWindowClosed) {
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

TEST_P(AroundTheCalendar, AnOpenEditorFollowsAMoveOnTheCalendar) {
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

TEST_P(AroundTheCalendar, AnEditorThatIsBroughtForwardAgainKeepsItsChangesForTheClient) {
    giveMeeting(Desk::plain);
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    const qint64 before = startInFile(Desk::plain);
    auto *time = editor->findChild<QTimeEdit *>(controls::startTimeField);
    time->setTime(time->time().addSecs(3600));
    desk.settle();
    EXPECT_EQ(desk.open(Desk::plain), editor);
    EXPECT_EQ(startInFile(Desk::plain), before) << "nobody has saved";
    desk.pressSave(editor);
    EXPECT_EQ(startInFile(Desk::plain), before + 3600);
    EXPECT_EQ(meetingOf(Desk::plain)["startTime"].toInteger(), before + 3600);
}

TEST_P(AroundTheCalendar, AnEditorWhoseMeetingWasForgottenHasItAgainWhenItIsBroughtForward) {
    giveMeeting(Desk::plain);
    mailhost::EditorWindow *editor = desk.open(Desk::plain);
    desk.open(Desk::other)->closeNow();
    desk.settle();
    desk.wait(1);
    EXPECT_EQ(desk.open(Desk::plain), editor);
    desk.typeSubject(editor, "Changed");
    desk.pressSave(editor);
    EXPECT_EQ(meetingOf(Desk::plain)["subject"], "Changed");
}

TEST_P(AroundTheCalendar, WhatTheHostAloneChangedIsUndoneAndWhatTheClientFollowedIsNot) {
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

TEST_P(AroundTheCalendar, ASecondMainWindowShowsAndChangesTheSameCalendar) {
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

TEST_P(AroundTheCalendar, EveryMainWindowHasThePluginsItemsAndKeepsThePersonsArrangement) {
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
