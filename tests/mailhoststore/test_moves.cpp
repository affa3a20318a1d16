// Series whose start is moved, and days that follow a changed one.
#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

using Kind = CalendarTime::Kind;
const QString one = u"one"_s;

class MovesTest : public StoreTest {
protected:
    static QStringList days(const CalendarFile &file, const char *format = "MM-dd HH:mm") {
        QStringList found;
        const QDateTime from(QDate(2026, 3, 1), QTime(0, 0));
        for (const Occurrence &occurrence : file.occurrences(from, from.addMonths(5)))
            found.append(occurrence.start.toString(QString::fromLatin1(format)));
        return found;
    }
    static QString listed(const CalendarFile &file, const char *format = "MM-dd HH:mm") {
        return days(file, format).join(u", "_s);
    }
    // A series of half hours with an exception, and what else names its days.
    [[nodiscard]] std::unique_ptr<CalendarFile> series(const QByteArray &lines,
                                                       const QByteArray &exception = {}) const {
        return opened("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:one\r\n" + lines +
                      "\r\nSUMMARY:Round\r\nEND:VEVENT\r\n" + exception + "END:VCALENDAR\r\n");
    }
    static QByteArray change(const QByteArray &lines) {
        return "BEGIN:VEVENT\r\nUID:one\r\n" + lines + "\r\nEND:VEVENT\r\n";
    }
    static void move(CalendarFile &file, const CalendarTime &start, int minutes) {
        Appointment changed = *file.find(one);
        changed.start = changed.end = start;
        changed.end.value = start.value.addSecs(minutes * 60);
        if (start.kind == Kind::Date)
            changed.end.value = start.value.addDays(1);
        ASSERT_TRUE(file.update(changed));
    }
    static CalendarTime berlin(int month, int day, int hour) {
        return {Kind::Zoned, QDateTime(QDate(2026, month, day), QTime(hour, 0), QTimeZone("Europe/Berlin")),
                u"Europe/Berlin"_s};
    }
};

} // namespace

TEST_F(MovesTest, ADeletedDayNeverComesBackByMovingTheSeries) {
    const QByteArray start = "DTSTART;TZID=Europe/Berlin:20260309T090000\r\n"; // the second Monday of March
    const struct {
        const char *lines;
        CalendarTime to;
        const char *days;
        const char *rule;
    } moves[] = {
        // The second of four is deleted. Only its day is told.
        {"RRULE:FREQ=DAILY;COUNT=4\r\nEXDATE;VALUE=DATE:20260310", berlin(3, 10, 11),
         "03-10 11:00, 03-12 11:00, 03-13 11:00", "RRULE:FREQ=DAILY;COUNT=4"},
        // A weekly one goes to the new weekday.
        {"RRULE:FREQ=WEEKLY;COUNT=3;BYDAY=MO\r\nEXDATE;TZID=Europe/Berlin:20260316T090000", berlin(3, 11, 9),
         "03-11 09:00, 03-25 09:00", "RRULE:FREQ=WEEKLY;COUNT=3;BYDAY=WE"},
        // Several weekdays are the person's own: they stay, and so does the deleted one of them.
        {"RRULE:FREQ=WEEKLY;BYDAY=MO,WE;UNTIL=20260325T080000Z\r\n"
         "EXDATE;TZID=Europe/Berlin:20260316T090000",
         berlin(3, 10, 11), "03-10 11:00, 03-11 11:00, 03-18 11:00, 03-23 11:00, 03-25 11:00",
         "RRULE:FREQ=WEEKLY;BYDAY=MO,WE;UNTIL=20260325T100000Z"},
        {"RRULE:FREQ=WEEKLY;BYDAY=MO,WE;COUNT=4\r\nEXDATE;TZID=Europe/Berlin:20260316T090000",
         berlin(3, 9, 23), "03-09 23:00, 03-11 23:00, 03-18 23:00", "RRULE:FREQ=WEEKLY;BYDAY=MO,WE;COUNT=4"},
        // "The second Monday" and "the second Tuesday" are not always in the same week.
        {"RRULE:FREQ=MONTHLY;BYDAY=2MO;COUNT=5\r\nEXDATE;TZID=Europe/Berlin:20260608T090000",
         berlin(3, 10, 9), "03-10 09:00, 04-14 09:00, 05-12 09:00, 07-14 09:00",
         "RRULE:FREQ=MONTHLY;BYDAY=2TU;COUNT=5"},
        {"RRULE:FREQ=MONTHLY;BYDAY=2MO;UNTIL=20260713T070000Z\r\n"
         "EXDATE;TZID=Europe/Berlin:20260413T090000",
         berlin(3, 11, 9), "03-11 09:00, 05-13 09:00, 06-10 09:00, 07-08 09:00",
         "RRULE:FREQ=MONTHLY;BYDAY=2WE;UNTIL=20260708T070000Z"},
        {"RRULE:FREQ=MONTHLY;BYDAY=MO;BYSETPOS=2;COUNT=3\r\nEXDATE;TZID=Europe/Berlin:20260413T090000",
         berlin(3, 20, 9), "03-20 09:00, 05-15 09:00", "RRULE:FREQ=MONTHLY;BYDAY=FR;BYSETPOS=3;COUNT=3"},
        {"RRULE:FREQ=MONTHLY;BYMONTHDAY=9;COUNT=3\r\nEXDATE;TZID=Europe/Berlin:20260409T090000",
         berlin(3, 30, 9), "03-30 09:00, 05-30 09:00", "RRULE:FREQ=MONTHLY;BYMONTHDAY=30;COUNT=3"},
        {"RRULE:FREQ=DAILY;BYHOUR=9;BYMINUTE=0;COUNT=3\r\nEXDATE;TZID=Europe/Berlin:20260310T090000",
         berlin(3, 9, 14), "03-09 14:00, 03-11 14:00", "RRULE:FREQ=DAILY;BYHOUR=14;BYMINUTE=0;COUNT=3"},
        // Over the change of the clocks, told in UTC.
        {"RRULE:FREQ=DAILY;UNTIL=20260312T080000Z\r\nEXDATE:20260310T080000Z", berlin(3, 27, 9),
         "03-27 09:00, 03-29 09:00, 03-30 09:00", "RRULE:FREQ=DAILY;UNTIL=20260330T070000Z"},
        // Extra days go along, and keep their length.
        {"RDATE;TZID=Europe/Berlin;VALUE=PERIOD:20260320T100000/PT2H,20260321T100000/20260321T113000",
         berlin(3, 10, 9), "03-10 09:00, 03-21 10:00, 03-22 10:00",
         "RDATE;TZID=Europe/Berlin;VALUE=PERIOD:20260321T100000/PT2H,20260322T100000/20260322T113000"},
        // What cannot be read stays.
        {"RRULE:FREQ=DAILY;COUNT=1\r\nEXDATE:never", berlin(3, 10, 9), "03-10 09:00", "EXDATE:never"},
    };
    for (const auto &test : moves) {
        SCOPED_TRACE(test.lines);
        auto file = series(start + test.lines);
        move(*file, test.to, 30);
        EXPECT_EQ(listed(*file), QString::fromLatin1(test.days));
        const QByteArray text = saved(*file).replace("\r\n ", "");
        EXPECT_TRUE(text.contains(QByteArray(test.rule) + "\r\n")) << text.data();
        EXPECT_EQ(listed(*opened(text)), QString::fromLatin1(test.days));
    }
}

TEST_F(MovesTest, ASeriesThatTellsItsTimesInAnotherWayNowKeepsItsDeletedAndChangedDays) {
    const QByteArray zoned = "DTSTART;TZID=Europe/Berlin:20260326T090000\r\n"
                             "EXDATE;TZID=Europe/Berlin:20260327T090000\r\nRRULE:FREQ=DAILY;UNTIL=20260330T"
                             "070000Z";
    const QByteArray zonedDay = change("RECURRENCE-ID;TZID=Europe/Berlin:20260328T090000\r\n"
                                       "DTSTART;TZID=Europe/Berlin:20260328T150000");
    const QByteArray whole = "DTSTART;VALUE=DATE:20260326\r\nEXDATE;VALUE=DATE:20260327\r\n"
                             "RRULE:FREQ=DAILY;UNTIL=20260330";
    const QByteArray wholeDay = change("RECURRENCE-ID;VALUE=DATE:20260328\r\nDTSTART:20260328T140000Z");
    const QDateTime utc(QDate(2026, 3, 26), QTime(8, 0), Qt::UTC);
    const CalendarTime newYork{Kind::Zoned,
                               QDateTime(QDate(2026, 3, 26), QTime(9, 0), QTimeZone("America/New_York")),
                               u"America/New_York"_s};
    const struct {
        const char *what;
        QByteArray lines;
        QByteArray exception;
        CalendarTime to;
        const char *days;
        QList<QByteArray> has;
    } moves[] = {
        {"to whole days",
         zoned,
         zonedDay,
         {Kind::Date, QDate(2026, 3, 26).startOfDay(), {}},
         "03-26 00:00, 03-28 15:00, 03-29 00:00, 03-30 00:00",
         {"EXDATE;VALUE=DATE:20260327", "RECURRENCE-ID;VALUE=DATE:20260328",
          "RRULE:FREQ=DAILY;UNTIL=20260330"}},
        {"to times",
         whole,
         wholeDay,
         berlin(3, 26, 9),
         "03-26 09:00, 03-28 15:00, 03-29 09:00, 03-30 09:00",
         {"EXDATE;TZID=Europe/Berlin:20260327T090000", "RECURRENCE-ID;TZID=Europe/Berlin:20260328T090000",
          "RRULE:FREQ=DAILY;UNTIL=20260330T070000Z"}},
        // At nine there, which is an hour later here from the 29th.
        {"to another zone",
         zoned,
         zonedDay,
         newYork,
         "03-26 14:00, 03-28 15:00, 03-29 15:00, 03-30 15:00",
         {"EXDATE;TZID=America/New_York:20260327T090000",
          "RECURRENCE-ID;TZID=America/New_York:20260328T090000", "RRULE:FREQ=DAILY;UNTIL=20260330T130000Z"}},
        {"to UTC",
         zoned,
         zonedDay,
         {Kind::Utc, utc, {}},
         "03-26 09:00, 03-28 15:00, 03-29 10:00, 03-30 10:00",
         {"EXDATE:20260327T080000Z", "RECURRENCE-ID:20260328T080000Z",
          "RRULE:FREQ=DAILY;UNTIL=20260330T080000Z"}},
        {"to a clock without zone",
         zoned,
         zonedDay,
         {Kind::Floating, QDateTime(QDate(2026, 3, 26), QTime(7, 0)), {}},
         "03-26 07:00, 03-28 15:00, 03-29 07:00, 03-30 07:00",
         {"EXDATE:20260327T070000", "RECURRENCE-ID:20260328T070000",
          "RRULE:FREQ=DAILY;UNTIL=20260330T070000"}},
    };
    for (const auto &test : moves) {
        SCOPED_TRACE(test.what);
        auto file = series(test.lines, test.exception);
        move(*file, test.to, 30);
        EXPECT_EQ(listed(*file), QString::fromLatin1(test.days));
        const QByteArray text = saved(*file);
        for (const QByteArray &line : test.has)
            EXPECT_TRUE(text.contains(line + "\r\n")) << line.data() << "\n" << text.data();
        EXPECT_EQ(listed(*opened(text)), QString::fromLatin1(test.days));
    }
}

TEST_F(MovesTest, ChangedDaysInARowAllFollow) {
    QByteArray changes;
    for (const char *date : {"20260310", "20260311", "20260312"})
        changes += change(QByteArray("RECURRENCE-ID;TZID=Europe/Berlin:") + date +
                          "T090000\r\nDTSTART;TZID=Europe/Berlin:" + date + "T150000");
    auto file = series("DTSTART;TZID=Europe/Berlin:20260309T090000\r\nRRULE:FREQ=DAILY;COUNT=5", changes);
    const QByteArray before = file->componentsOf(one);
    move(*file, berlin(3, 10, 9), 30);
    EXPECT_EQ(listed(*file), u"03-10 09:00, 03-10 15:00, 03-11 15:00, 03-12 15:00, 03-14 09:00"_s);
    for (const char *day : {"20260311T090000", "20260312T090000", "20260313T090000"})
        EXPECT_TRUE(file->find(one, QString::fromLatin1(day))) << day;
    EXPECT_FALSE(file->find(one, u"20260310T090000"_s));
    ASSERT_TRUE(file->restore(one, before));
    EXPECT_EQ(file->componentsOf(one), before) << "each in its place under its former name";
    EXPECT_TRUE(file->find(one, u"20260310T090000"_s));
}

TEST_F(MovesTest, ASeriesWithoutIdentifierIsGivenOneTogetherWithItsFirstChangedDay) {
    auto file = opened("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nDTSTART:20260309T090000Z\r\n"
                       "RRULE:FREQ=DAILY;COUNT=2\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    Appointment day = file->appointments().value(0);
    day.recurrenceId = u"20260310T090000Z"_s;
    day.recurrenceRule.clear();
    day.start.value = day.end.value = day.start.value.addDays(1).addSecs(3600);
    EXPECT_EQ(file->add(day), day.uid);
    EXPECT_EQ(listed(*opened(saved(*file))), u"03-09 10:00, 03-10 11:00"_s);
}

TEST_F(MovesTest, TheDaysBehindAChangeOfThisAndAllFollowingOnesFollowIt) {
    const QByteArray lines = "DTSTART;TZID=Europe/Berlin:20260309T090000\r\n"
                             "DTEND;TZID=Europe/Berlin:20260309T093000\r\nRRULE:FREQ=WEEKLY;COUNT=6\r\n"
                             "EXDATE;TZID=Europe/Berlin:20260330T090000";
    const QByteArray changes =
        change("RECURRENCE-ID;RANGE=THISANDFUTURE;TZID=Europe/Berlin:20260323T090000\r\n"
               "DTSTART;TZID=Europe/Berlin:20260324T140000\r\nDURATION:PT2H\r\n"
               "SUMMARY:Later\r\nLOCATION:There\r\nX-NEW:kept") +
        change("RECURRENCE-ID;TZID=Europe/Berlin:20260406T090000\r\n"
               "DTSTART;TZID=Europe/Berlin:20260406T110000\r\nSUMMARY:Alone");
    auto file = series(lines, changes);
    const QString expected = u"03-09 09:00, 03-16 09:00, 03-24 14:00, 04-06 11:00, 04-14 14:00"_s;
    EXPECT_EQ(listed(*file), expected);
    // Also where the series itself has nothing.
    const auto last = file->occurrences(QDate(2026, 4, 14).startOfDay(), QDate(2026, 4, 15).startOfDay());
    ASSERT_EQ(last.size(), 1);
    EXPECT_EQ(last[0].summary, u"Later"_s);
    EXPECT_EQ(last[0].location, u"There"_s);
    EXPECT_EQ(last[0].start.secsTo(last[0].end), 7200);
    EXPECT_EQ(last[0].instanceId, u"20260413T090000"_s);
    EXPECT_TRUE(last[0].isOccurrence && !last[0].isException);

    Appointment day = *file->find(one, u"20260323T090000"_s);
    day.recurrenceId = last[0].instanceId;
    day.start.value = last[0].start.addDays(1);
    day.end.value = last[0].end.addDays(1);
    EXPECT_FALSE(file->add(day).isNull());
    EXPECT_EQ(listed(*file), QString(expected).replace(u"04-14"_s, u"04-15"_s));
    EXPECT_EQ(saved(*file).count("X-NEW:kept"), 2) << "it begins as what it followed";
    ASSERT_TRUE(file->remove(one, day.recurrenceId));

    // The first of them alone goes; what followed it stays where it is.
    auto again = series(lines, changes);
    ASSERT_TRUE(again->remove(one, u"20260323T090000"_s));
    EXPECT_EQ(listed(*again), u"03-09 09:00, 03-16 09:00, 04-06 11:00, 04-14 14:00"_s);
    EXPECT_EQ(listed(*opened(saved(*again))), listed(*again));

    QByteArray cancelled = changes;
    cancelled.replace("SUMMARY:Later", "STATUS:CANCELLED");
    EXPECT_EQ(listed(*series(lines, cancelled)), u"03-09 09:00, 03-16 09:00, 04-06 11:00"_s);
}

TEST_F(MovesTest, ADayIsNamedAndTakenOutByWhatItIsHoweverTheFileTellsIt) {
    // Extra days in another zone, and an exception in UTC.
    auto file = series("DTSTART;TZID=Europe/Berlin:20260309T090000\r\n"
                       "RDATE;TZID=America/New_York:20260320T090000\r\nRRULE:FREQ=DAILY;COUNT=2",
                       change("RECURRENCE-ID:20260310T080000Z\r\nDTSTART:20260310T140000Z"));
    EXPECT_EQ(listed(*file), u"03-09 09:00, 03-10 15:00, 03-20 14:00"_s);
    const auto extra = file->occurrences(QDate(2026, 3, 20).startOfDay(), QDate(2026, 3, 21).startOfDay());
    EXPECT_EQ(extra.value(0).instanceId, u"20260320T140000"_s) << "in the words of the series";
    Appointment day = *file->find(one);
    day.recurrenceRule.clear();
    day.recurrenceId = u"20260310T090000"_s;
    EXPECT_TRUE(file->add(day).isNull()) << "the exception in UTC is for that day";
    EXPECT_TRUE(file->add(*file->find(one)).isNull());
    EXPECT_TRUE(file->remove(one, extra.value(0).instanceId));
    EXPECT_TRUE(file->remove(one, u"20260310T080000Z"_s));
    EXPECT_EQ(listed(*file), u"03-09 09:00"_s);
    EXPECT_TRUE(saved(*file).contains("EXDATE;TZID=Europe/Berlin:20260310T090000\r\n"));
    EXPECT_TRUE(file->remove(one, u"20260309T090000"_s));
    EXPECT_EQ(listed(*file), QString()) << "a series may be without days";
    EXPECT_TRUE(file->find(one));
}
