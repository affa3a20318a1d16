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
    EXPECT_EQ(known(vl_ApptInfo_Duration), "35791394"); // minutes; seconds are limited to 32 bits
}
