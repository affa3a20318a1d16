// The record that the plug-in makes of an appointment and its unsaved changes.
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlECCalendarEventAttendee.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/link/meetingKeys.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

namespace {

const QTimeZone twoHoursAhead(7200);

QVariantMap snapshotOf(const QVariantMap &stored, const QVariantMap &pending = {}) {
    FakeObject event("ECCalendarEvent", stored);
    return vlECCalendarEvent(&event, pending).getVlMeetingData();
}

} // namespace

TEST(MergedRead, PrefersThePendingChangeAndKnowsAClearedOneFromNone) {
    FakeObject event("ECCalendarEvent", {{"summary", "Old"}, {"location", "Room"}, {"body", "<p>old"}});
    const vlECCalendarEvent changed(&event,
                                    {{"content.summary", rt::nullMarker()}, {"content.body", "<p>new"}});
    const rt::Value subject = changed.getOneMergedItem("summary");
    EXPECT_EQ(subject, QString(""));
    EXPECT_FALSE(subject.toString().isNull());
    EXPECT_EQ(changed.getEmailBody(), "<p>new");
    EXPECT_EQ(changed.summary(), "Old"); // the stored one
    // An entry without a value, and a key without the prefix, are no changes.
    const vlECCalendarEvent untouched(&event, {{"content.location", rt::Value()}, {"summary", "x"}});
    EXPECT_EQ(untouched.getOneMergedItem("summary"), "Old");
    EXPECT_EQ(untouched.location(), "Room");
}

TEST(Snapshot, HoldsWhatTheAppointmentHas) {
    FakeDate start("2026-11-24 07:00:00", twoHoursAhead), end("2026-11-24 08:30:00", twoHoursAhead);
    FakeObject pattern("ECEmailAccount"), attendee("ECCalendarEventAttendee", {{"name", "A"}});
    const QVariantMap snapshot = snapshotOf({{"summary", "S"},
                                             {"location", "L"},
                                             {"body", "<p>"},
                                             {"olmUCCapabilities", "{}"},
                                             {"startTime", rt::fromObject(&start)},
                                             {"endTime", rt::fromObject(&end)},
                                             {"recurrence", rt::fromObject(&pattern)},
                                             {"attendeeList", QVariantList{rt::fromObject(&attendee)}}},
                                            {{"content.olmUCCapabilities", "never merged"}});
    const QVariant zone = QVariant::fromValue(twoHoursAhead);
    const QVariantMap expected{
        {"subject", "S"},
        {"location", "L"},
        {"emailBody", "<p>"},
        {"vlOIProperty", "{}"},
        {"duration", "90"},
        {"recurrence", true},
        {"startTime", QVariantMap{{"UTCTime", "2026-11-24 07:00:00"},
                                  {"localTime", "2026-11-24 09:00:00"},
                                  {"timezone", zone}}},
        {"endTime", QVariantMap{{"UTCTime", "2026-11-24 08:30:00"},
                                {"localTime", "2026-11-24 10:30:00"},
                                {"timezone", zone}}},
        {"attendees", QVariantList{QVariantMap{{"name", "A"}}}},
    };
    EXPECT_EQ(snapshot, expected);
}

TEST(Snapshot, OfNothingHasEmptyDatesNoDurationAndNoRecurrence) {
    const QVariantMap expected{
        {"duration", "0"}, {"recurrence", false}, {"startTime", QVariantMap()}, {"endTime", QVariantMap()}};
    EXPECT_EQ(vlECCalendarEvent(nullptr).getVlMeetingData(), expected);
    EXPECT_EQ(snapshotOf({}), expected);
    // What the user has cleared.
    QVariantMap cleared = expected;
    cleared.insert("subject", "");
    cleared.insert("location", rt::nullMarker());
    QVariantMap pending;
    for (const char *member : {"summary", "location", "startTime", "endTime", "recurrence", "attendeeList"})
        pending.insert(u"content."_s + member, rt::nullMarker());
    FakeDate date("2026-11-24 07:00:00", QTimeZone::utc());
    EXPECT_EQ(snapshotOf({{"summary", "S"}, {"startTime", rt::fromObject(&date)}, {"recurrence", "weekly"}},
                         pending),
              cleared);
}

TEST(Snapshot, DurationIsInWholeMinutesTowardZero) {
    FakeDate start("2026-11-24 09:00:00", QTimeZone::utc());
    for (const auto &[endTime, minutes] : {std::pair{"2026-11-24 10:30:00", "90"},
                                           {"2026-11-24 09:59:59", "59"},
                                           {"2026-11-24 08:00:30", "-59"},
                                           {"9999-01-01 00:00:00", "2147483647"}}) {
        FakeDate end(endTime, twoHoursAhead);
        EXPECT_EQ(snapshotOf({{"startTime", rt::fromObject(&start)}, {"endTime", rt::fromObject(&end)}})
                      .value(vl_ApptInfo_Duration),
                  minutes);
        EXPECT_EQ(snapshotOf({{"endTime", rt::fromObject(&end)}}).value(vl_ApptInfo_Duration), "0");
    }
}

TEST(Snapshot, AttendeesKeepTheirOrderAndEndAtTheFirstMissingValue) {
    FakeObject full("ECCalendarEventAttendee",
                    {{"name", "Room"}, {"emailAddress", "r@x"}, {"attendeeType", 2}});
    FakeObject untyped("ECCalendarEventAttendee", {{"name", ""}, {"emailAddress", ""}});
    FakeObject unreachable("ECCalendarEventAttendee", {{"name", "B"}, {"attendeeType", 1}});
    FakeObject nameless("ECCalendarEventAttendee", {{"emailAddress", "n@x"}, {"attendeeType", 1}});
    FakeObject stranger("ECEmailAccount", {{"emailAddress", "s@x"}});
    QVariantList invited;
    for (FakeObject *object : {&full, &untyped, &unreachable, &nameless, &stranger})
        invited.append(rt::fromObject(object));
    invited.append(rt::nullMarker());
    const QVariantList expected{QVariantMap{{"name", "Room"}, {"email", "r@x"}, {"type", "2"}},
                                QVariantMap{{"name", ""}, {"email", ""}, {"type", "0"}},
                                QVariantMap{{"name", "B"}},
                                QVariantMap(),
                                QVariantMap(),
                                QVariantMap()};
    EXPECT_EQ(snapshotOf({{"attendeeList", invited}}).value(vl_ApptInfo_Attendees), expected);
    EXPECT_FALSE(snapshotOf({{"attendeeList", QVariantList()}}).contains(vl_ApptInfo_Attendees));
}

TEST(Date, RecordFollowsTheZoneAndItsDaylightSaving) {
    const std::tuple<const char *, QString, QString> cases[] = {
        {"Europe/Berlin", "2026-07-01 22:30:00", "2026-07-02 00:30:00"},
        {"Europe/Berlin", "2026-12-31 23:30:00", "2027-01-01 00:30:00"},
        {"Asia/Kolkata", "2026-02-28 20:00:05", "2026-03-01 01:30:05"},
    };
    for (const auto &[zone, utc, local] : cases) {
        FakeDate date(utc, QTimeZone(zone));
        const vlOLCalendarDate adapter(&date);
        EXPECT_EQ(adapter.UTCTime(), utc);
        EXPECT_EQ(adapter.LocalTime(), local);
        EXPECT_EQ(adapter.getVlMeetingData().value("timezone").value<QTimeZone>().id(), zone);
    }
    FakeDate zoneless("2026-02-28 20:00:05", QTimeZone::utc());
    zoneless.values.clear();
    EXPECT_EQ(vlOLCalendarDate(&zoneless).getVlMeetingData(),
              (QVariantMap{{"UTCTime", "2026-02-28 20:00:05"}}));
    EXPECT_TRUE(vlOLCalendarDate(nullptr).LocalTime().isNull());
}

TEST(Date, CountsToAndFromOtherDates) {
    FakeDate date("2026-11-24 09:00:00", QTimeZone::utc());
    const vlOLCalendarDate adapter(&date);
    rt::Object *moved = adapter.dateByAddingTimeInterval(-90);
    EXPECT_EQ(vlOLCalendarDate(moved).UTCTime(), "2026-11-24 08:58:30");
    EXPECT_EQ(adapter.timeIntervalSinceDate(moved), 90.0);
    EXPECT_EQ(adapter.timeIntervalSinceDate(nullptr), 0.0);
    EXPECT_EQ(vlOLCalendarDate(nullptr).dateByAddingTimeInterval(1), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
