// Days of series, editors and windows beside the calendar, undo, and the tool-bar.
#include "tests/scenarios/OnTheCalendar.h"

using namespace scenarios;

namespace {

class AroundTheCalendar : public OnTheCalendar {};

INSTANTIATE_TEST_SUITE_P(Generations, AroundTheCalendar, testing::Values("15.8", "16"), [](const auto &info) {
    return QString::fromLatin1(info.param).replace(u'.', u'_').toStdString();
});

} // namespace

TEST_P(AroundTheCalendar, OneDayOfASeriesChangesTheFileAloneAndNotTheMeeting) {
    giveMeeting(seriesUid);
    const QJsonObject before = meetingOf(seriesUid);
    const QString day = u"20261126T080000Z"_s;
    scenario.forget();
    select(seriesUid, day);
    command(controls::laterAction);
    main()->commands()->renameTo("Thursday's");
    scenario.settle();
    select(seriesUid, changedDay);
    command(controls::laterAction);
    select(seriesUid, u"20261127T080000Z"_s);
    deleteSelected();
    EXPECT_TRUE(scenario.desktop().bus->posted().isEmpty()) << "the client is not asked about single days";
    EXPECT_EQ(meetingOf(seriesUid), before);
    const auto thursday =
        mailhost::CalendarFile::open(scenario.calendarPath(), nullptr)->find(seriesUid, day);
    ASSERT_TRUE(thursday);
    EXPECT_EQ(thursday->summary, "Thursday's");
    EXPECT_EQ(thursday->start.value.toUTC().time(), QTime(8, 30));
    EXPECT_EQ(scenario.fileBytes().count("X-SERIES:kept"), 2) << "the new exception begins as the series";
    EXPECT_TRUE(scenario.fileBytes().contains("EXDATE"));
    EXPECT_FALSE(calendar()->select(seriesUid, u"20261127T080000Z"_s));
    EXPECT_FALSE(scenario.meetingKey(seriesUid).isEmpty());
}

TEST_P(AroundTheCalendar, ADayOpensAsADayOrAsItsSeries) {
    giveMeeting(seriesUid);
    const auto openedEditor = [] {
        const auto open = mailhost::EditorWindowController::open();
        return open.size() == 1 ? open.first()->editorWindow() : nullptr;
    };
    const auto offersMeeting = [](mailhost::EditorWindow *editor) {
        const auto buttons = Scenario::stripOf(editor)->findChildren<QAbstractButton *>();
        return std::any_of(buttons.begin(), buttons.end(),
                           [](const QAbstractButton *button) { return button->isVisible(); });
    };
    for (const QString &day : {changedDay, u"20261124T080000Z"_s}) {
        select(seriesUid, day);
        command(controls::openAction);
        ASSERT_NE(openedEditor(), nullptr);
        EXPECT_TRUE(openedEditor()->viewController()->isOccurrenceOrException());
        EXPECT_FALSE(offersMeeting(openedEditor())) << "the meeting is the series'";
        if (day == changedDay) {
            openedEditor()->closeNow();
            scenario.settle();
            scenario.wait(1);
        }
    }
    QTest::mouseClick(openedEditor()->findChild<QPushButton *>(controls::openSeriesButton), Qt::LeftButton);
    scenario.settle();
    EXPECT_FALSE(openedEditor()->viewController()->isOccurrenceOrException());
    EXPECT_TRUE(offersMeeting(openedEditor()));
    EXPECT_EQ(Scenario::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
    openedEditor()->closeNow();
    scenario.settle();
    scenario.wait(1);
    select(seriesUid, changedDay);
    command(controls::openSeriesAction);
    ASSERT_NE(openedEditor(), nullptr);
    EXPECT_EQ(Scenario::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
}

TEST_P(AroundTheCalendar, ALateAnswerDoesNotTouchTheEditorThatWasOpenedMeanwhile) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    scenario.given("delay update 5000");
    select(Scenario::plain);
    command(controls::laterAction);
    mailhost::EditorWindow *editor = scenario.open(Scenario::other);
    scenario.typeSubject(editor, "Being typed");
    scenario.wait(6);
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), start + 1800);
    EXPECT_EQ(startInFile(Scenario::plain), start + 1800);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->viewController()->uncommittedChanges().keys(), QStringList{"content.summary"});
    EXPECT_TRUE(scenario.inFile(Scenario::other).ucCapabilities.isEmpty());
    scenario.pressSave(editor);
    EXPECT_EQ(scenario.inFile(Scenario::other).summary, "Being typed");
    EXPECT_TRUE(scenario.inFile(Scenario::other).ucCapabilities.isEmpty());
}

TEST_P(AroundTheCalendar, ALateAnswerFindsTheMainWindowClosed) {
    giveMeeting(Scenario::plain);
    const qint64 start = startInFile(Scenario::plain);
    mailhost::EditorWindow *editor = scenario.open(Scenario::other);
    for (const char *rule : {"delay update 5000", "once error update 0;Error 3001"}) {
        scenario.given(rule);
        if (!main())
            scenario.host().addMainWindow()->window()->show();
        select(Scenario::plain);
        command(controls::laterAction);
        main()->window()->close();
        scenario.settle();
        EXPECT_EQ(main(), nullptr);
        scenario.wait(6);
        if (!Scenario::alertText().isNull())
            scenario.dismissAlert();
    }
    EXPECT_EQ(startInFile(Scenario::plain), start + 3600);
    EXPECT_TRUE(editor->isVisible());
    scenario.given("clear");
    scenario.addMeeting(editor);
    scenario.pressSave(editor);
    EXPECT_FALSE(scenario.meetingKey(Scenario::other).isEmpty()) << "the road is open";
}

TEST_P(AroundTheCalendar, AnOpenEditorFollowsAMoveOnTheCalendar) {
    giveMeeting(Scenario::plain);
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.typeSubject(editor, "Typed meanwhile");
    select(Scenario::plain);
    command(controls::laterAction);
    scenario.wait(1);
    const qint64 start = startInFile(Scenario::plain);
    scenario.pressSave(editor);
    EXPECT_EQ(startInFile(Scenario::plain), start) << "saving what was typed does not move it back";
    EXPECT_EQ(scenario.inFile(Scenario::plain).summary, "Typed meanwhile");
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), start);
}

TEST_P(AroundTheCalendar, AnEditorThatIsBroughtForwardAgainKeepsItsChangesForTheClient) {
    giveMeeting(Scenario::plain);
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    const qint64 before = startInFile(Scenario::plain);
    auto *time = editor->findChild<QTimeEdit *>(controls::startTimeField);
    time->setTime(time->time().addSecs(3600));
    scenario.settle();
    EXPECT_EQ(scenario.open(Scenario::plain), editor);
    EXPECT_EQ(startInFile(Scenario::plain), before) << "nobody has saved";
    scenario.pressSave(editor);
    EXPECT_EQ(startInFile(Scenario::plain), before + 3600);
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), before + 3600);
}

TEST_P(AroundTheCalendar, AnEditorWhoseMeetingWasForgottenHasItAgainWhenItIsBroughtForward) {
    giveMeeting(Scenario::plain);
    mailhost::EditorWindow *editor = scenario.open(Scenario::plain);
    scenario.open(Scenario::other)->closeNow();
    scenario.settle();
    scenario.wait(1);
    EXPECT_EQ(scenario.open(Scenario::plain), editor);
    scenario.typeSubject(editor, "Changed");
    scenario.pressSave(editor);
    EXPECT_EQ(meetingOf(Scenario::plain)["subject"], "Changed");
}

TEST_P(AroundTheCalendar, WhatTheHostAloneChangedIsUndoneAndWhatTheClientFollowedIsNot) {
    const QByteArray before = scenario.fileBytes();
    const auto undo = [this] { return main()->mainWindow()->command(controls::undoAction); };
    select(Scenario::other);
    command(controls::laterAction);
    select(Scenario::other);
    deleteSelected();
    select(seriesUid, u"20261126T080000Z"_s);
    command(controls::laterAction);
    for (int i = 0; i < 3; ++i)
        command(controls::undoAction);
    EXPECT_EQ(scenario.fileBytes().length(), before.length());
    EXPECT_EQ(startInFile(Scenario::other), QDateTime({2026, 11, 26}, {10, 0}, Qt::UTC).toSecsSinceEpoch());
    command(controls::redoAction);
    EXPECT_EQ(startInFile(Scenario::other), QDateTime({2026, 11, 26}, {10, 30}, Qt::UTC).toSecsSinceEpoch());
    command(controls::undoAction);
    EXPECT_FALSE(undo()->isEnabled());
    giveMeeting(Scenario::plain);
    select(Scenario::plain);
    command(controls::laterAction);
    EXPECT_FALSE(undo()->isEnabled()) << "the client would be left with another time";
}

TEST_P(AroundTheCalendar, ASecondMainWindowShowsAndChangesTheSameCalendar) {
    giveMeeting(Scenario::plain);
    command(controls::newWindowAction);
    ASSERT_EQ(scenario.host().mainWindowControllers().size(), 2);
    mailhost::MainWindowController *second = scenario.host().mainWindowControllers().last();
    select(Scenario::other); // in the first one
    const qint64 start = startInFile(Scenario::plain);
    ASSERT_TRUE(second->mainWindow()->calendar()->select(Scenario::plain));
    second->mainWindow()->command(controls::laterAction)->trigger();
    scenario.settle();
    EXPECT_EQ(startInFile(Scenario::plain), start + 1800);
    EXPECT_EQ(meetingOf(Scenario::plain)["startTime"].toInteger(), start + 1800);
    theGridShowsTheFile(Scenario::plain);
    main()->window()->close();
    scenario.settle();
    EXPECT_EQ(main(), second);
    select(Scenario::plain);
    command(controls::laterAction);
    EXPECT_EQ(startInFile(Scenario::plain), start + 3600);
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
    platform::Toolbar *second = scenario.host().mainWindowControllers().last()->mainWindow()->toolBar();
    EXPECT_EQ(identifiers(second), identifiers(first));
    EXPECT_EQ(identifiers(second).first(), vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    EXPECT_EQ(identifiers(second).count(vlScheduleToolbarItemIdentifier), 1);

    main()->window()->close();
    scenario.settle();
    QWidget *control = second->controlFor(vlScheduleToolbarItemIdentifier);
    ASSERT_NE(control, nullptr);
    QTest::mouseClick(control, Qt::LeftButton);
    scenario.settle();
    ASSERT_EQ(mailhost::EditorWindowController::open().size(), 1);
    ASSERT_TRUE(Scenario::sheetIsUp());
    scenario.confirmSheet();
    EXPECT_EQ(Scenario::stripOf(mailhost::EditorWindowController::open().first()->editorWindow())->uiStatus(),
              StripState::MeetingAttached);
}
