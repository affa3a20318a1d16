#include "standin/mailhost/store/SampleCalendar.h"
#include "tests/mailhoststore/ManyAppointments.h"
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
            list.append(o.start.toString(u"MM-dd HH:mm"_s));
        return list.join(u", "_s);
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

TEST_F(OccurrencesTest, TheSampleFillsTheWeekThatIsAskedFor) {
    const QDate monday(2027, 3, 22); // before the change of the clocks, in another year than the resource
    auto file = opened(sampleCalendar(monday.addDays(3)));
    EXPECT_EQ(starts(*file, monday, 7),
              u"03-22 09:15, 03-22 10:00, 03-22 11:00, 03-23 09:00, 03-23 09:15, 03-23 14:00, 03-24 00:00, "
              "03-24 10:00, 03-24 16:15, 03-25 09:15, 03-25 13:30, 03-25 14:30, 03-26 12:15, 03-26 15:00"_s);
}

TEST_F(OccurrencesTest, TenThousandAppointmentsOpenAndListQuicklyAlsoAfterAChange) {
    const QDate monday(2026, 11, 23);
    const QByteArray text = manyAppointments(10000, monday);
    const auto week = [](const CalendarFile &file, const QDate &from) {
        return file.occurrences(from.startOfDay(), from.addDays(7).startOfDay());
    };
    QElapsedTimer timer;
    timer.start();
    auto file = opened(text);
    const auto first = week(*file, monday);
    const qint64 opening = timer.restart();
    const auto second = week(*file, monday.addDays(7));
    const qint64 listing = timer.restart();
    Appointment changed = *file->find(first[0].uid, first[0].recurrenceId);
    changed.summary = u"Changed"_s;
    ASSERT_TRUE(file->update(changed));
    const auto third = week(*file, monday);
    const qint64 again = timer.elapsed();
    std::printf("opened in %lld ms, next week listed in %lld ms, after a change in %lld ms\n",
                (long long)opening, (long long)listing, (long long)again);
    EXPECT_GT(first.size(), 35);
    EXPECT_GT(second.size(), 35);
    ASSERT_EQ(third.size(), first.size());
    EXPECT_EQ(third[0].summary, changed.summary);
    EXPECT_LT(opening, 9000); // loose: this also runs under sanitizers on a busy machine
    EXPECT_LT(listing, 300);
    EXPECT_LT(again, 300); // reading everything again takes longer
}

TEST_F(OccurrencesTest, AListIsTheSameHoweverItsCalendarCameToBe) {
    const QDate monday(2026, 11, 23);
    auto file = opened(manyAppointments(600, monday));
    const auto day = [&](const CalendarFile &of, int number) {
        QStringList rows;
        for (const Occurrence &o :
             of.occurrences(monday.addDays(number).startOfDay(), monday.addDays(number + 1).startOfDay()))
            rows.append(o.start.toString(Qt::ISODate) + o.end.toString(Qt::ISODate) + o.uid + o.instanceId);
        return rows;
    };
    const auto appointments = file->appointments();
    for (int i = 0; i < appointments.size(); i += 7) {
        Appointment changed = appointments[i];
        (void)day(*file, 1);
        changed.start.value = changed.start.value.addDays(i % 20 - 10);
        changed.end.value = changed.end.value.addDays(i % 3 == 0 ? 5 : i % 20 - 10);
        if (i % 2 == 0)
            EXPECT_TRUE(file->update(changed) || file->keepsStart(changed.uid));
        else
            (void)file->remove(changed.uid, changed.recurrenceId);
    }
    const auto again = opened(saved(*file));
    const auto all = file->occurrences(monday.addDays(-30).startOfDay(), monday.addDays(200).startOfDay());
    EXPECT_GT(all.size(), 500);
    for (int number = -20; number < 190; ++number) {
        const QStringList shown = day(*file, number);
        EXPECT_EQ(shown, day(*again, number)) << number;
        const qsizetype overlapping = std::count_if(all.begin(), all.end(), [&](const Occurrence &o) {
            return o.start < monday.addDays(number + 1).startOfDay() &&
                   o.end > monday.addDays(number).startOfDay();
        });
        EXPECT_EQ(shown.size(), overlapping) << number;
    }
}
