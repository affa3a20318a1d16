// The calendar beside the rest: days of a series, editors, several main windows and the tool-bar.
#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "tests/scenarios/OnTheCalendar.h"

using namespace scenarios;

namespace {

class BesideTheCalendar : public OnTheCalendar {
protected:
    // The editor that is open, and no other.
    static mailhost::EditorWindow *openedEditor() {
        EXPECT_EQ(Scenario::openEditors().size(), 1);
        return Scenario::openEditors().first()->editorWindow();
    }
    static bool offersMeeting(mailhost::EditorWindow *editor) {
        const auto buttons = Scenario::stripOf(editor)->findChildren<QAbstractButton *>();
        return std::any_of(buttons.begin(), buttons.end(),
                           [](const QAbstractButton *button) { return button->isVisible(); });
    }
};

INSTANTIATE_TEST_SUITE_P(Hosts, BesideTheCalendar, bothHosts);

} // namespace

TEST_P(BesideTheCalendar, ADayOfASeriesChangesTheFileAloneAndNotTheMeeting) {
    giveMeeting(series);
    const QJsonObject before = scenario.meeting(series);
    const QString day = u"20261126T080000Z"_s;
    select(series, day);
    command(controls::laterAction);
    rename("Thursday's");
    select(series, changedDay);
    command(controls::laterAction);
    select(series, u"20261127T080000Z"_s);
    deleteSelected();
    EXPECT_TRUE(scenario.desktop().bus->posted().isEmpty()) << "the client is not asked about single days";
    EXPECT_EQ(scenario.meeting(series), before);
    const auto thursday = mailhost::CalendarFile::open(scenario.calendarPath(), nullptr)->find(series, day);
    ASSERT_TRUE(thursday);
    EXPECT_EQ(thursday->summary, "Thursday's");
    EXPECT_EQ(thursday->start.value.toUTC().time(), QTime(8, 30));
    EXPECT_FALSE(calendar()->select(series, u"20261127T080000Z"_s));
}

TEST_P(BesideTheCalendar, ADayOpensAsADayOrAsItsSeries) {
    giveMeeting(series);
    for (const QString &day : {changedDay, u"20261124T080000Z"_s}) {
        select(series, day);
        command(controls::openAction);
        EXPECT_TRUE(openedEditor()->viewController()->isOccurrenceOrException());
        EXPECT_FALSE(offersMeeting(openedEditor())) << "the meeting is the series'";
        if (day == changedDay)
            scenario.close(openedEditor());
    }
    QTest::mouseClick(openedEditor()->findChild<QPushButton *>(controls::openSeriesButton), Qt::LeftButton);
    scenario.settle();
    EXPECT_FALSE(openedEditor()->viewController()->isOccurrenceOrException());
    EXPECT_TRUE(offersMeeting(openedEditor()));
    scenario.close(openedEditor());
    select(series, changedDay);
    command(controls::openSeriesAction);
    EXPECT_EQ(Scenario::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
}

TEST_P(BesideTheCalendar, ALateAnswerFindsTheMainWindowClosed) {
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
        scenario.dismissAlert();
    }
    EXPECT_EQ(startInFile(Scenario::plain), start + 3600);
    scenario.given("clear");
    scenario.addMeetingAndSave(editor);
    EXPECT_FALSE(scenario.meetingKey(Scenario::other).isEmpty());
}

TEST_P(BesideTheCalendar, AnOpenEditorFollowsAMoveOnTheCalendar) {
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
    EXPECT_EQ(startAtClient(Scenario::plain), start);
}

TEST_P(BesideTheCalendar, EveryMainWindowHasThePluginsItemsAndKeepsTheUsersArrangement) {
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
    const qsizetype place = identifiers(first).indexOf(vlScheduleToolbarItemIdentifier);
    EXPECT_EQ(identifiers(first).indexOf(vlStartToolbarItemIdentifier), place + 2);
    first->moveItem(int(place), 0);
    command(controls::newWindowAction);
    platform::Toolbar *second = scenario.host().mainWindowControllers().last()->mainWindow()->toolBar();
    EXPECT_EQ(identifiers(second), identifiers(first));
    EXPECT_EQ(identifiers(second).first(), vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    EXPECT_EQ(identifiers(second).count(vlScheduleToolbarItemIdentifier), 1);

    main()->window()->close();
    scenario.settle();
    QTest::mouseClick(second->controlFor(vlScheduleToolbarItemIdentifier), Qt::LeftButton);
    scenario.settle();
    scenario.confirmSheet();
    EXPECT_EQ(Scenario::stripOf(openedEditor())->uiStatus(), StripState::MeetingAttached);
}
