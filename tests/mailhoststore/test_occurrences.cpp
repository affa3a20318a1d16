#include "standin/mailhost/store/SampleCalendar.h"
#include "tests/mailhoststore/StoreFixture.h"

#include <QElapsedTimer>

using namespace mailhost;

namespace {

class OccurrencesTest : public StoreTest {
protected:
    // Local starts, "MM-dd HH:mm", of [from, from + days).
    static QString starts(const CalendarFile &file, const QDate &from, int days) {
        QStringList list;
        for (const Occurrence &o : file.occurrences(from.startOfDay(), from.addDays(days).startOfDay()))
            list.append(o.start.toString(QStringLiteral("MM-dd HH:mm")));
        return list.join(QStringLiteral(", "));
    }
};

} // namespace

TEST_F(OccurrencesTest, RulesGiveTheirDays) {
    const struct {
        const char *lines;
        const char *starts; // of March 2025
    } cases[] = {
        {"DTSTART:20250310T080000Z", "03-10 09:00"},
        {"DTSTART:20250310T080000Z\r\nRRULE:FREQ=WEEKLY;COUNT=2", "03-10 09:00, 03-17 09:00"},
        {"DTSTART:20250110T080000Z\r\nRRULE:FREQ=WEEKLY;INTERVAL=4", "03-07 09:00"},
        {"DTSTART:20250110T080000Z\r\nRRULE:FREQ=MONTHLY;BYDAY=TU;BYSETPOS=-1", "03-25 09:00"},
        {"DTSTART:20240331T080000Z\r\nRRULE:FREQ=MONTHLY;BYMONTHDAY=-1", "03-31 10:00"},
        {"DTSTART:20200229T080000Z\r\nRRULE:FREQ=YEARLY", ""},
        {"DTSTART:20250310T080000Z\r\nRRULE:RSCALE=GREGORIAN;FREQ=WEEKLY;SKIP=OMIT;COUNT=2",
         "03-10 09:00, 03-17 09:00"},
        // The clock time stays over the change to daylight saving.
        {"DTSTART;TZID=Europe/Berlin:20250328T090000\r\nRRULE:FREQ=DAILY;UNTIL=20250331T070000Z",
         "03-28 09:00, 03-29 09:00, 03-30 09:00, 03-31 09:00"},
        {"DTSTART;TZID=Europe/Berlin:20250328T090000\r\nRRULE:FREQ=DAILY;UNTIL=20250331T065959Z",
         "03-28 09:00, 03-29 09:00, 03-30 09:00"},
        {"DTSTART;TZID=America/New_York:20250307T090000\r\nRRULE:FREQ=DAILY;COUNT=4",
         "03-07 15:00, 03-08 15:00, 03-09 14:00, 03-10 14:00"},
        {"DTSTART;TZID=Europe/Berlin:20250328T090000\r\nRRULE:FREQ=DAILY;UNTIL=20250329",
         "03-28 09:00, 03-29 09:00"},
        {"DTSTART;TZID=Europe/Berlin:20250310T090000\r\nRRULE:FREQ=DAILY;COUNT=4\r\n"
         "EXDATE;TZID=Europe/Berlin:20250311T090000\r\nEXDATE;VALUE=DATE:20250312\r\nEXDATE:20250313T080000Z",
         "03-10 09:00"},
        {"DTSTART:20250310T080000Z\r\nRDATE:20250312T080000Z,20250314T090000Z\r\nEXDATE:20250310T080000Z",
         "03-12 09:00, 03-14 10:00"},
        {"DTSTART:20250310T080000Z\r\nRDATE;VALUE=PERIOD:20250312T080000Z/PT3H", "03-10 09:00, 03-12 09:00"},
        {"DTSTART;VALUE=DATE:20250310\r\nRRULE:FREQ=DAILY;COUNT=2\r\nEXDATE;VALUE=DATE:20250310",
         "03-11 00:00"},
        // Its first day counts although the rule does not name it.
        {"DTSTART:20250311T080000Z\r\nRRULE:FREQ=WEEKLY;BYDAY=MO;UNTIL=20250320T000000Z",
         "03-11 09:00, 03-17 09:00"},
        // Reaches into the month.
        {"DTSTART:20250228T200000Z\r\nDTEND:20250301T200000Z\r\nRRULE:FREQ=YEARLY", "02-28 21:00"},
        {"DTSTART:20250228T200000Z\r\nDTEND:20250228T230000Z", ""},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.lines);
        auto file = openedEvent(test.lines);
        EXPECT_EQ(starts(*file, QDate(2025, 3, 1), 31), QString::fromLatin1(test.starts));
        EXPECT_TRUE(file->warnings().isEmpty());
    }
}

TEST_F(OccurrencesTest, ALaterWeekIsListedAsIfTheSeriesHadBeenFollowedFromItsStart) {
    for (const char *rule :
         {"FREQ=WEEKLY;INTERVAL=3;BYDAY=TU,SU;WKST=SU", "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,SU",
          "FREQ=DAILY;INTERVAL=17", "FREQ=MONTHLY;INTERVAL=5;BYMONTHDAY=31",
          "FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=2,-2", "FREQ=YEARLY;INTERVAL=3;BYMONTH=2,11;BYDAY=1SU",
          "FREQ=DAILY;BYMONTH=1,6;INTERVAL=4", "FREQ=HOURLY;INTERVAL=35"}) {
        SCOPED_TRACE(rule);
        const QByteArray lines = "DTSTART;TZID=Europe/Berlin:20190102T083000\r\nRRULE:" + QByteArray(rule);
        // A count makes it start from the beginning.
        auto counted = openedEvent(lines + ";COUNT=90000");
        auto open = openedEvent(lines);
        for (int year = 2019; year < 2032; year += 3) {
            const QDate from(year, 5, 14);
            EXPECT_EQ(starts(*open, from, 400).toStdString(), starts(*counted, from, 400).toStdString());
        }
    }
}

TEST_F(OccurrencesTest, ChangedDaysTakeThePlaceOfTheirOccurrence) {
    auto file = opened(fixture(QStringLiteral("series.ics")));
    EXPECT_EQ(starts(*file, QDate(2025, 3, 17), 7), QStringLiteral("03-17 09:00, 03-21 15:00"));
    EXPECT_EQ(starts(*file, QDate(2025, 3, 24), 7), QStringLiteral("03-24 09:00, 03-28 00:00"));
    EXPECT_EQ(starts(*file, QDate(2025, 3, 31), 7), QStringLiteral("03-31 09:00, 04-02 13:00"));
    EXPECT_EQ(starts(*file, QDate(2025, 4, 18), 1), QStringLiteral("04-18 11:00"));
    const auto april = file->occurrences(QDate(2025, 4, 2).startOfDay(), QDate(2025, 4, 8).startOfDay());
    ASSERT_EQ(april.size(), 2);
    EXPECT_TRUE(april[0].isException && !april[0].isOccurrence);
    EXPECT_EQ(april[0].recurrenceId, QStringLiteral("20250402T070000Z"));
    EXPECT_TRUE(april[1].isOccurrence && !april[1].isException);
    const auto days = file->occurrences(QDate(2025, 3, 29).startOfDay(), QDate(2025, 3, 30).startOfDay());
    ASSERT_EQ(days.size(), 1) << "the second of its two days";
    EXPECT_TRUE(days[0].allDay);
    EXPECT_EQ(days[0].end, QDate(2025, 3, 30).startOfDay());
}

TEST_F(OccurrencesTest, AChangeIsSeenInTheNextListing) {
    auto file = opened(fixture(QStringLiteral("series.ics")));
    EXPECT_EQ(starts(*file, QDate(2025, 4, 7), 5), QStringLiteral("04-07 09:00, 04-09 09:00"));
    Appointment series = *file->find(QStringLiteral("weekly"));
    series.recurrenceRule = QStringLiteral("FREQ=WEEKLY;BYDAY=TU");
    ASSERT_TRUE(file->update(series));
    EXPECT_EQ(starts(*file, QDate(2025, 4, 7), 5), QStringLiteral("04-08 09:00"));
    Appointment day;
    day.uid = series.uid;
    day.recurrenceId = QStringLiteral("20250408T090000");
    day.start.zoneId = day.end.zoneId = QStringLiteral("Europe/Berlin");
    day.start.value = day.end.value = QDateTime(QDate(2025, 4, 10), QTime(12, 0), QTimeZone("Europe/Berlin"));
    file->add(day);
    EXPECT_EQ(starts(*file, QDate(2025, 4, 7), 5), QStringLiteral("04-10 12:00"));
}

TEST_F(OccurrencesTest, TheSampleWeekIsAWeekOfWork) {
    const QDate monday(2025, 3, 24);
    auto file = opened(sampleCalendar(monday.addDays(3)));
    EXPECT_TRUE(file->warnings().isEmpty());
    const auto week = file->occurrences(monday.startOfDay(), monday.addDays(7).startOfDay());
    EXPECT_GE(week.size(), 13);
    EXPECT_EQ(std::count_if(week.begin(), week.end(), [](const Occurrence &o) { return o.isException; }), 1);
    EXPECT_EQ(std::count_if(week.begin(), week.end(), [](const Occurrence &o) { return o.allDay; }), 1);
    int mine = 0;
    int others = 0;
    int rooms = 0;
    const auto all = file->appointments();
    for (const Appointment &appointment : all) {
        mine += appointment.organizerEmail == QStringLiteral("ada@parlo.example");
        others += appointment.organizerEmail == QStringLiteral("grace@parlo.example");
        for (const Attendee &attendee : appointment.attendees)
            rooms += attendee.type == AttendeeType::Resource;
    }
    EXPECT_GE(mine, 6);
    EXPECT_EQ(others, 1);
    EXPECT_GE(rooms, 3);
}

TEST_F(OccurrencesTest, TenThousandAppointmentsOpenAndListQuickly) {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
    for (int i = 0; i < 10000; ++i) {
        const QByteArray date =
            QDate(2020, 1, 1).addDays(i / 5).toString(QStringLiteral("yyyyMMdd")).toLatin1();
        text += "BEGIN:VEVENT\r\nUID:" + QByteArray::number(i) + "\r\nDTSTAMP:20250101T000000Z\r\n";
        text += "DTSTART;TZID=Europe/Berlin:" + date + "T100000\r\nDTEND;TZID=Europe/Berlin:" + date +
                "T110000\r\n";
        text += "SUMMARY:Appointment\r\nDESCRIPTION:Some words about "
                "it\r\nATTENDEE;CN=G:mailto:g@parlo.example\r\n";
        text += i % 10 == 0 ? "RRULE:FREQ=WEEKLY\r\nEND:VEVENT\r\n" : "END:VEVENT\r\n";
    }
    text += "END:VCALENDAR\r\n";
    QElapsedTimer timer;
    timer.start();
    auto file = opened(text);
    const auto first = file->occurrences(QDate(2023, 5, 1).startOfDay(), QDate(2023, 5, 8).startOfDay());
    const qint64 opening = timer.restart();
    const auto second = file->occurrences(QDate(2023, 5, 8).startOfDay(), QDate(2023, 5, 15).startOfDay());
    const qint64 listing = timer.elapsed();
    std::printf("opened in %lld ms, next week listed in %lld ms\n", (long long)opening, (long long)listing);
    EXPECT_GT(first.size(), 100);
    EXPECT_GT(second.size(), first.size());
    EXPECT_LT(opening, 6000); // loose: this also runs under sanitizers on a busy machine
    EXPECT_LT(listing, 1000);
}
