#include "tests/workflow/WorkflowFixture.h"

#include "plugin/workflow/vlCalendarActionMgr.h"

namespace {

class Calendar : public WorkflowTest {
protected:
    Calendar() { appointment->carriesTheMeeting(key, joinUrl); }
    static vlCalendarActionMgr &calendar() { return vlCalendarActionMgr::sharedInstance(); }
    // What the plug-in knows of the appointment after it has sent the grid's change.
    static QVariant known(const QString &member) {
        return MeetingContext::all().back()->savedApptInfo.value(member);
    }
    static QString utc(const QString &member) {
        return known(member).toMap().value(vl_ApptInfo_CalDate_UTCTime).toString();
    }
    QWidget gridWindow;
    FakeObject controller{
        "CCGridViewController",
        {{"view", rt::fromWidget(&gridWindow)}, {"selectedEvent", rt::fromObject(appointment.get())}}};
    FakeObject grid{"OLCalendarGridViewWrapper", {{"gridViewController", rt::fromObject(&controller)}}};
    FakeDate noon{QDateTime(QDate(2026, 11, 24), QTime(12, 0), Qt::UTC)};
};

} // namespace

TEST_F(Calendar, AResizeSetsStartEndAndWholeMinutes) {
    for (const auto &[seconds, duration, end] : {std::tuple{5400., "90", "2026-11-24 13:30:00"},
                                                 {59.9, "0", "2026-11-24 12:00:59"},
                                                 {-90., "-1", "2026-11-24 11:58:30"}}) {
        SCOPED_TRACE(seconds);
        EXPECT_EQ(calendar().updateDuration(&grid, &noon, seconds), 0);
        EXPECT_EQ(known(vl_ApptInfo_Duration), duration);
        EXPECT_EQ(utc(vl_ApptInfo_StartTime), "2026-11-24 12:00:00");
        EXPECT_EQ(utc(vl_ApptInfo_EndTime), end);
    }
    calendar().updateDuration(&grid, &noon, 1e300);
    EXPECT_EQ(known(vl_ApptInfo_Duration), "35791394"); // the largest number of seconds in 32 bits
}

TEST_F(Calendar, AMoveKeepsTheLengthAndTheMeetingsOwnSettings) {
    client.holdsTheMeeting(theMeeting({{"enableJBH", true}}));
    client.schedulesAs(key, invitation);
    EXPECT_EQ(calendar().updateStartTime(&grid, &noon), 0);
    EXPECT_EQ(utc(vl_ApptInfo_EndTime), "2026-11-24 13:00:00");
    EXPECT_FALSE(calendar().getActionResult()) << "before the answer";
    turn();
    EXPECT_EQ(client.asked(), (QList<Asked>{Asked::GetMeeting, Asked::Update}));
    const QVariantMap update = client.last().json;
    EXPECT_EQ(update.value("meetingKey"), key);
    EXPECT_EQ(update.value("apptInfo").toMap().value("duration"), "60");
    EXPECT_EQ(update.value("setting").toMap().value("enableJBH"), true);
    EXPECT_TRUE(calendar().getActionResult());
    for (const auto &context : MeetingContext::all())
        EXPECT_NE(context->meetingKey, key) << "the finished change is still known";
}

TEST_F(Calendar, ARenameLeavesTheDatesAsTheyAre) {
    for (const QString &subject : {QString("New name"), QString("")}) {
        EXPECT_EQ(calendar().updateSubject(&grid, subject), 0);
        EXPECT_EQ(known(vl_ApptInfo_Subject), subject);
        EXPECT_EQ(utc(vl_ApptInfo_StartTime), "2026-11-24 09:00:00");
    }
    EXPECT_EQ(appointment->subject(), "Review"); // changing it is left to the host
}

TEST_F(Calendar, WhatCannotHaveAMeetingSendsNothing) {
    for (const auto &[obstacle, value] :
         {std::pair{"isOccurrence", true}, {"isModifiedException", true}, {"isOwner", false}}) {
        appointment->values.insert(obstacle, value);
        EXPECT_EQ(calendar().deleteMeeting(appointment.get()), 0);
        EXPECT_EQ(calendar().updateStartTime(&grid, &noon), 0);
        appointment->values.insert(obstacle, !value);
    }
    EXPECT_EQ(calendar().deleteMeeting(nullptr), 0);
    EXPECT_EQ(calendar().updateStartTime(nullptr, &noon), 0);
    turn();
    EXPECT_TRUE(client.requests().isEmpty());
}
