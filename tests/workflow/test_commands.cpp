#include "tests/workflow/WorkflowFixture.h"

#include "plugin/link/requests/vlAPIMgr.h"

namespace {

class Commands : public WorkflowTest {
protected:
    // The calendar's request about the appointment, with or without an editor.
    [[nodiscard]] QVariantMap calendarRequest(QWidget *window, const QString &record) const {
        return {{vl_Outlook_ApptInfo,
                 QVariantMap{{vl_ApptInfo_Subject, "Review"}, {vl_ApptInfo_VlOIProperty, record}}},
                {keyEventOwnerWindow, rt::fromWidget(window)},
                {keyApptWindowID, rt::identifier(window)},
                {keyDragAndMoveOnCalendar, true}};
    }
    [[nodiscard]] QString record() const { return u"{\"meetingKey\":\"%1\"}"_s.arg(key); }
};

} // namespace

TEST_F(Commands, AnAddWaitsForTheProfileBeforeItDecidesAboutTheSheet) {
    givenAnAppointment();
    givenSavedSettings({{vl_Setting_NotShowMeAgain, true}});
    EXPECT_FALSE(manager().notShowSetting()); // the user is not known yet
    manager().sendVlMeetingCommand(CmdAddMeeting, strip.get());
    turn();
    EXPECT_TRUE(manager().notShowSetting());
    EXPECT_TRUE(sheets.shown.isEmpty());
    EXPECT_EQ(client.timesAsked(Asked::Schedule), 1);
}

TEST_F(Commands, AChangeOfSettingsReadsTheMeetingUnlessItIsLoaded) {
    givenAnAppointmentWithAMeeting();
    givenTheProfileIsLoaded();
    manager().sendVlMeetingCommand(CmdChangeSettings, strip.get());
    EXPECT_TRUE(sheets.shown.isEmpty());
    EXPECT_EQ(alerts.shownOn, QList<QWidget *>{editor->window()});
    turn();
    EXPECT_EQ(client.last().key, key);
    EXPECT_EQ(sheets.shown.size(), 1);
    manager().sendVlMeetingCommand(CmdChangeSettings, strip.get()); // it is loaded by now
    EXPECT_EQ(sheets.shown.size(), 2);
    EXPECT_EQ(client.timesAsked(Asked::GetMeeting), 1);
}

TEST_F(Commands, OnlySomeReportThatTheClientDoesNotRun) {
    givenAnAppointmentWithAMeeting();
    client.quits();
    constexpr int notRunning = 5;
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdScheduleMeeting, editor.get()), 0);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdUpdateMeeting, editor.get()), 0);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdAddMeeting, strip.get()), 0);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, editor.get()), notRunning);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdStartInstantVideo), notRunning);
    const QVariantMap request = calendarRequest(&mainWindow, record());
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdUpdateMeeting, request), 1);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, request), 1);
    strip->blocked = true;
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, editor.get()), 0) << "the strip blocks it";
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, static_cast<rt::Object *>(nullptr)), 0);
}

TEST_F(Commands, WithoutAKeyInTheRecordTheCalendarAsksForTheEmptyKey) {
    store().setMeetingKey("another");
    for (const char *record : {"", "no JSON", "{\"joinUrl\":\"x\"}"}) {
        client.forget();
        EXPECT_EQ(manager().sendVlMeetingCommand(CmdUpdateMeeting, calendarRequest(nullptr, record)), 0);
        turn();
        ASSERT_EQ(client.asked(), QList<Asked>{Asked::GetMeeting}) << record;
        EXPECT_EQ(client.last().key, "") << record;
        EXPECT_EQ(store().meetingKey(), "another") << record;
    }
}

TEST_F(Commands, AnEditorThatIsOpenLearnsOfTheDragAndTheDeleteStaysWithTheCalendarsWindow) {
    givenAnAppointmentWithAMeeting();
    QVariantMap request = calendarRequest(&mainWindow, record());
    request.insert(keyApptWindowID, windowID());
    manager().setState(StateAdd);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdDeleteMeeting, request), 0);
    EXPECT_EQ(strip->action, HostAction::ActionCalendarDrag);
    EXPECT_EQ(manager().state(), StateAdd);
    EXPECT_EQ(alerts.shownOn, QList<QWidget *>{&mainWindow});
    turn();
    EXPECT_EQ(client.last().what, Asked::Delete);
    EXPECT_EQ(client.last().key, key);
    EXPECT_EQ(manager().sendVlMeetingCommand(CmdAddMeeting, request), 0); // not one of the calendar's
    EXPECT_EQ(manager().state(), StateAdd);
}
