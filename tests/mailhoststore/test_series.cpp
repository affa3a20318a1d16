// Series, single days of them, and days that follow a changed one.
#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

using Kind = CalendarTime::Kind;
const QString one = u"one"_s;
const QByteArray berlinStart = "DTSTART;TZID=Europe/Berlin:20260309T090000\r\n"; // the second Monday of March

class SeriesTest : public StoreTest {
protected:
    static QList<Occurrence> occurrences(const CalendarFile &file) {
        return file.occurrences(QDate(2026, 3, 1).startOfDay(), QDate(2026, 8, 1).startOfDay());
    }
    static QString days(const CalendarFile &file) { return starts(file, QDate(2026, 3, 1), 150); }
    // That day of the series, moved.
    static Appointment day(const CalendarFile &file, const QString &instanceId, int addedSeconds = 0) {
        Appointment changed = *file.find(one);
        changed.recurrenceId = instanceId;
        changed.recurrenceRule.clear();
        changed.start.value = changed.start.value.addSecs(addedSeconds);
        changed.end.value = changed.end.value.addSecs(addedSeconds);
        return changed;
    }
    static QByteArray exception(const QByteArray &lines) {
        return "BEGIN:VEVENT\r\nUID:one\r\n" + lines + "\r\nEND:VEVENT\r\n";
    }
    static bool move(CalendarFile &file, const CalendarTime &start) {
        Appointment changed = *file.find(one);
        changed.start = changed.end = start;
        changed.end.value = start.kind == Kind::Date ? start.value.addDays(1) : start.value.addSecs(1800);
        return file.update(changed);
    }
    static CalendarTime berlin(int month, int day, int hour) {
        return {Kind::Zoned, QDateTime(QDate(2026, month, day), QTime(hour, 0), QTimeZone("Europe/Berlin")),
                u"Europe/Berlin"_s};
    }
};

} // namespace

TEST_F(SeriesTest, ADayIsNamedInTheFormOfItsSeries) {
    const struct {
        const char *start;
        const char *first;
        const char *recurrenceId;
    } forms[] = {
        {";TZID=Europe/Berlin:20260309T090000", "20260309T090000", ";TZID=Europe/Berlin:20260309T090000"},
        {":20260309T090000Z", "20260309T090000Z", ":20260309T090000Z"},
        {":20260309T090000", "20260309T090000", ":20260309T090000"},
        {";VALUE=DATE:20260309", "20260309", ";VALUE=DATE:20260309"}};
    for (const auto &form : forms) {
        SCOPED_TRACE(form.start);
        auto file = openedEvent(QByteArray("DTSTART") + form.start + "\r\nRRULE:FREQ=DAILY;COUNT=2");
        EXPECT_EQ(occurrences(*file).value(0).instanceId, form.first);
        Appointment changed = day(*file, form.first);
        changed.summary = u"Changed"_s;
        file->add(changed);
        EXPECT_TRUE(saved(*file).contains(QByteArray("RECURRENCE-ID") + form.recurrenceId + "\r\n"));
        EXPECT_EQ(occurrences(*file).size(), 2);
        EXPECT_TRUE(file->remove(one, form.first));
        EXPECT_EQ(occurrences(*file).size(), 1);
    }
}

TEST_F(SeriesTest, ADayIsChangedWithAllThatNobodyHereKnowsOrTakenOut) {
    auto file = openedEvent(berlinStart + "RRULE:FREQ=DAILY;COUNT=5\r\nX-ODD;X-P=\"a;b\":kept\r\n"
                                          "BEGIN:VALARM\r\nTRIGGER:-PT5M\r\nX-IN:kept\r\nEND:VALARM");
    file->add(day(*file, u"20260311T090000"_s, 2 * 86400 + 3600));
    EXPECT_TRUE(file->remove(one, u"20260310T090000"_s));
    for (const QString &none : {u"20260310T090000"_s, u"20260310T100000"_s, u"rubbish\r\nX-BAD:1"_s})
        EXPECT_FALSE(file->remove(one, none));
    const QByteArray text = saved(*file);
    EXPECT_EQ(text.count("X-ODD;X-P=\"a;b\":kept"), 2);
    EXPECT_EQ(text.count("X-IN:kept"), 2);
    EXPECT_EQ(text.count("RRULE:FREQ=DAILY"), 1);
    EXPECT_TRUE(text.contains("EXDATE;TZID=Europe/Berlin:20260310T090000\r\n"));
    EXPECT_EQ(days(*file), u"03-09 09:00, 03-11 10:00, 03-12 09:00, 03-13 09:00"_s);
}

TEST_F(SeriesTest, ARuleFollowsTheStartOfItsSeries) {
    const CalendarTime whole{Kind::Date, QDate(2026, 3, 26).startOfDay(), {}};
    const CalendarTime floating{Kind::Floating, QDateTime(QDate(2026, 3, 26), QTime(7, 0)), {}};
    const QByteArray dates = "DTSTART;VALUE=DATE:20260326\r\n";
    const struct {
        const char *rule;
        CalendarTime to;
        const char *days;
        const char *after;
        QByteArray start = berlinStart;
    } moves[] = {
        {"FREQ=WEEKLY;COUNT=3;BYDAY=MO", berlin(3, 11, 9), "03-11 09:00, 03-18 09:00, 03-25 09:00",
         "FREQ=WEEKLY;COUNT=3;BYDAY=WE"},
        // Several weekdays are the user's own choice.
        {"FREQ=WEEKLY;BYDAY=MO,WE;COUNT=3", berlin(3, 9, 23), "03-09 23:00, 03-11 23:00, 03-16 23:00",
         "FREQ=WEEKLY;BYDAY=MO,WE;COUNT=3"},
        {"FREQ=MONTHLY;BYDAY=2MO;UNTIL=20260511T070000Z", berlin(3, 11, 9),
         "03-11 09:00, 04-08 09:00, 05-13 09:00", "FREQ=MONTHLY;BYDAY=2WE;UNTIL=20260513T070000Z"},
        {"FREQ=MONTHLY;BYDAY=MO;BYSETPOS=2;COUNT=2", berlin(3, 20, 9), "03-20 09:00, 04-17 09:00",
         "FREQ=MONTHLY;BYDAY=FR;BYSETPOS=3;COUNT=2"},
        {"FREQ=MONTHLY;BYMONTHDAY=9;COUNT=2", berlin(3, 30, 9), "03-30 09:00, 04-30 09:00",
         "FREQ=MONTHLY;BYMONTHDAY=30;COUNT=2"},
        {"FREQ=DAILY;BYHOUR=9;BYMINUTE=0;COUNT=2", berlin(3, 9, 14), "03-09 14:00, 03-10 14:00",
         "FREQ=DAILY;BYHOUR=14;BYMINUTE=0;COUNT=2"},
        // Over the change of the clocks.
        {"FREQ=DAILY;UNTIL=20260311T080000Z", berlin(3, 28, 9), "03-28 09:00, 03-29 09:00, 03-30 09:00",
         "FREQ=DAILY;UNTIL=20260330T070000Z"},
        {"FREQ=DAILY;UNTIL=20260310", berlin(3, 26, 9), "03-26 09:00, 03-27 09:00",
         "FREQ=DAILY;UNTIL=20260327"},
        {"FREQ=DAILY;UNTIL=20260310T080000Z", whole, "03-26 00:00, 03-27 00:00", "FREQ=DAILY;UNTIL=20260327"},
        {"FREQ=DAILY;UNTIL=20260310T080000Z", floating, "03-26 07:00, 03-27 07:00",
         "FREQ=DAILY;UNTIL=20260327T070000"},
        {"FREQ=DAILY;COUNT=2;UNTIL=never", berlin(3, 10, 9), "03-10 09:00", "FREQ=DAILY;COUNT=2;UNTIL=never"},
        {"FREQ=DAILY;UNTIL=20260327", berlin(3, 26, 9), "03-26 09:00, 03-27 09:00",
         "FREQ=DAILY;UNTIL=20260327T080000Z", dates},
    };
    for (const auto &test : moves) {
        SCOPED_TRACE(test.after);
        auto file = openedEvent(test.start + "RRULE:" + test.rule);
        ASSERT_TRUE(move(*file, test.to));
        EXPECT_EQ(days(*file), QString::fromLatin1(test.days));
        const QByteArray text = saved(*file);
        EXPECT_TRUE(text.contains("RRULE:" + QByteArray(test.after) + "\r\n")) << text.data();
        EXPECT_EQ(text.contains("VALUE=DATE"), test.to.kind == Kind::Date);
    }
}

// Whatever names such a day names it by the start that it has.
TEST_F(SeriesTest, ASeriesWithDaysOfItsOwnKeepsItsStartAndNothingElse) {
    const QByteArray rule = berlinStart + "RRULE:FREQ=DAILY;COUNT=4\r\n";
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"EXDATE;VALUE=DATE:20260310", {}},
        {"RDATE:20260320T080000Z", {}},
        {"X:1", exception("RECURRENCE-ID:20260310T080000Z\r\nDTSTART:20260310T140000Z")},
    };
    for (const auto &[lines, more] : cases) {
        auto file = openedEvent(rule + lines, more);
        const QByteArray before = file->componentsOf(one);
        EXPECT_TRUE(file->keepsStart(one));
        EXPECT_FALSE(move(*file, berlin(3, 9, 10)));
        EXPECT_EQ(file->componentsOf(one), before);
        Appointment longer = *file->find(one);
        longer.end.value = longer.start.value.addSecs(7200);
        EXPECT_TRUE(file->update(longer));
        EXPECT_EQ(file->find(one)->end, longer.end);
    }
    auto single = openedEvent("DTSTART:20260309T080000Z\r\nEXDATE:20260310T080000Z");
    EXPECT_TRUE(move(*single, berlin(3, 9, 10))) << "it is no series";
}

TEST_F(SeriesTest, TheDaysBehindAChangeOfThisAndAllFollowingOnesFollowIt) {
    const QByteArray lines = berlinStart +
                             "DTEND;TZID=Europe/Berlin:20260309T093000\r\n"
                             "RRULE:FREQ=WEEKLY;COUNT=6\r\nEXDATE;TZID=Europe/Berlin:20260330T090000";
    const QByteArray changes =
        exception("RECURRENCE-ID;RANGE=THISANDFUTURE;TZID=Europe/Berlin:20260323T090000\r\n"
                  "DTSTART;TZID=Europe/Berlin:20260324T140000\r\nDURATION:PT2H\r\n"
                  "SUMMARY:Later\r\nLOCATION:There\r\nX-NEW:kept") +
        exception("RECURRENCE-ID;TZID=Europe/Berlin:20260406T090000\r\n"
                  "DTSTART;TZID=Europe/Berlin:20260406T110000\r\nSUMMARY:Alone");
    auto file = openedEvent(lines, changes);
    EXPECT_EQ(days(*file), u"03-09 09:00, 03-16 09:00, 03-24 14:00, 04-06 11:00, 04-14 14:00"_s);
    // Also where the series itself has nothing.
    const auto last = file->occurrences(QDate(2026, 4, 14).startOfDay(), QDate(2026, 4, 15).startOfDay());
    ASSERT_EQ(last.size(), 1);
    EXPECT_EQ(last[0].summary, u"Later"_s);
    EXPECT_EQ(last[0].location, u"There"_s);
    EXPECT_EQ(last[0].start.secsTo(last[0].end), 7200);
    EXPECT_EQ(last[0].instanceId, u"20260413T090000"_s);
    EXPECT_TRUE(last[0].isOccurrence && !last[0].isException);

    // The first of them alone goes; what followed it stays where it is.
    ASSERT_TRUE(file->remove(one, u"20260323T090000"_s));
    EXPECT_EQ(days(*file), u"03-09 09:00, 03-16 09:00, 04-06 11:00, 04-14 14:00"_s);
    EXPECT_EQ(days(*opened(saved(*file))), days(*file));

    QByteArray cancelled = changes;
    cancelled.replace("SUMMARY:Later", "STATUS:CANCELLED");
    EXPECT_EQ(days(*openedEvent(lines, cancelled)), u"03-09 09:00, 03-16 09:00, 04-06 11:00"_s);
}

TEST_F(SeriesTest, ADayIsNamedAndTakenOutByWhatItIsHoweverTheFileTellsIt) {
    // Extra days in another zone, and an exception in UTC.
    auto file =
        openedEvent(berlinStart + "RDATE;TZID=America/New_York:20260320T090000\r\nRRULE:FREQ=DAILY;COUNT=2",
                    exception("RECURRENCE-ID:20260310T080000Z\r\nDTSTART:20260310T140000Z"));
    EXPECT_EQ(days(*file), u"03-09 09:00, 03-10 15:00, 03-20 14:00"_s);
    EXPECT_EQ(occurrences(*file).last().instanceId, u"20260320T140000"_s) << "in the words of the series";
    EXPECT_TRUE(file->add(day(*file, u"20260310T090000"_s)).isNull())
        << "the exception in UTC is for that day";
    EXPECT_TRUE(file->add(*file->find(one)).isNull());
    EXPECT_TRUE(file->remove(one, u"20260320T140000"_s));
    EXPECT_TRUE(file->remove(one, u"20260310T080000Z"_s));
    EXPECT_TRUE(saved(*file).contains("EXDATE;TZID=Europe/Berlin:20260310T090000\r\n"));
    EXPECT_TRUE(file->remove(one, u"20260309T090000"_s));
    EXPECT_EQ(days(*file), QString()) << "a series may be without days";
    EXPECT_TRUE(file->find(one));
}
