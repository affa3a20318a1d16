#include "tests/mailhoststore/StoreFixture.h"

#include <QElapsedTimer>

using namespace mailhost;

namespace {

class OccurrencesTest : public StoreTest {};

} // namespace

TEST_F(OccurrencesTest, RulesGiveTheirDays) {
    const struct {
        const char *lines;
        const char *starts; // of March 2025
    } cases[] = {
        {"DTSTART:20250110T080000Z\r\nRRULE:FREQ=MONTHLY;BYDAY=TU;BYSETPOS=-1", "03-25 09:00"},
        {"DTSTART:20250310T080000Z\r\nRRULE:RSCALE=GREGORIAN;FREQ=WEEKLY;SKIP=OMIT;COUNT=2",
         "03-10 09:00, 03-17 09:00"},
        {"DTSTART:20250310T080000Z\r\nRRULE:FREQ=WEEKLY;COUNT=9;UNTIL=20250317T080000Z",
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
        {"DTSTART:20250310T080000Z\r\nRRULE:FREQ=DAILY;COUNT=4\r\nEXRULE:FREQ=DAILY;INTERVAL=2",
         "03-11 09:00, 03-13 09:00"},
        {"DTSTART:20250310T080000Z\r\nRDATE:20250312T080000Z,20250314T090000Z\r\nEXDATE:20250310T080000Z",
         "03-12 09:00, 03-14 10:00"},
        {"DTSTART;VALUE=DATE:20250310\r\nRRULE:FREQ=DAILY;COUNT=2\r\nEXDATE;VALUE=DATE:20250310",
         "03-11 00:00"},
        // Its first day counts although the rule does not name it.
        {"DTSTART:20250311T080000Z\r\nRRULE:FREQ=WEEKLY;BYDAY=MO;UNTIL=20250320T000000Z",
         "03-11 09:00, 03-17 09:00"},
        // Reach into the month.
        {"DTSTART:20250228T200000Z\r\nDTEND:20250301T200000Z\r\nRRULE:FREQ=YEARLY", "02-28 21:00"},
        {"DTSTART:20250210T080000Z\r\nDTEND:20250210T090000Z\r\nRDATE;VALUE=PERIOD:20250227T080000Z/P3D,"
         "20250228T080000Z/20250303T080000Z\r\nRDATE:20250228T220000Z,20250228T223000Z",
         "02-27 09:00, 02-28 09:00, 02-28 23:30"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.lines);
        EXPECT_EQ(starts(*openedEvent(test.lines), QDate(2025, 3, 1), 31), QString::fromLatin1(test.starts));
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
    auto file = opened(fixture(u"series.ics"_s));
    EXPECT_EQ(starts(*file, QDate(2025, 3, 17), 7), u"03-17 09:00, 03-21 15:00"_s);
    EXPECT_EQ(starts(*file, QDate(2025, 3, 24), 7), u"03-24 09:00, 03-28 00:00"_s);
    EXPECT_EQ(starts(*file, QDate(2025, 3, 31), 7), u"03-31 09:00, 04-02 13:00"_s);
    EXPECT_EQ(starts(*file, QDate(2025, 4, 18), 1), u"04-18 11:00"_s);
    const auto april = file->occurrences(QDate(2025, 4, 2).startOfDay(), QDate(2025, 4, 8).startOfDay());
    ASSERT_EQ(april.size(), 2);
    EXPECT_TRUE(april[0].isException && !april[0].isOccurrence);
    EXPECT_EQ(april[0].recurrenceId, u"20250402T070000Z"_s);
    EXPECT_TRUE(april[1].isOccurrence && !april[1].isException);
    const auto days = file->occurrences(QDate(2025, 3, 29).startOfDay(), QDate(2025, 3, 30).startOfDay());
    ASSERT_EQ(days.size(), 1) << "the second of its two days";
    EXPECT_TRUE(days[0].allDay);
    EXPECT_EQ(days[0].end, QDate(2025, 3, 30).startOfDay());
}

TEST_F(OccurrencesTest, RulesThatNeverEndDo) {
    QElapsedTimer timer;
    timer.start();
    for (const QByteArray &rule : {
             QByteArray("FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"),
             QByteArray("FREQ=MINUTELY"),
             QByteArray("FREQ=HOURLY;COUNT=2000000000"),
             QByteArray("FREQ=DAILY;INTERVAL=0"),
             QByteArray("FREQ=YEARLY;BYHOUR=0,1,2,3,4,5,6;BYMINUTE=1,2,3,4;BYSECOND=0,1,2,3,4,5,6,7,8,9"),
             QByteArray("FREQ=YEARLY;BYYEARDAY=" + QByteArray("1,").repeated(490)),
             QByteArray("RSCALE=HEBREW;FREQ=YEARLY"),
             QByteArray("FREQ=DAILY;X=" + QByteArray(100000, 'x')),
         }) {
        for (const char *start : {"00010101T000000", "20250310T100000", "99991231T235959"}) {
            auto file = openedEvent("DTSTART:" + QByteArray(start) + "\r\nDURATION:PT1H\r\nRRULE:" + rule);
            const auto week =
                file->occurrences(QDate(2025, 3, 10).startOfDay(), QDate(2025, 3, 17).startOfDay());
            EXPECT_LE(week.size(), 11000) << rule.constData();
            const int least = QByteArray(start).startsWith("2025") ? 1 : 0; // the first day is always shown
            EXPECT_GE(week.size(), least) << rule.constData();
        }
    }
    EXPECT_LT(timer.elapsed(), 30000);
}
