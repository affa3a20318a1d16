#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

const QByteArray zoned =
    "DTSTART;TZID=Europe/Berlin:20260309T090000\r\nDTEND;TZID=Europe/Berlin:20260309T093000\r\n"
    "RRULE:FREQ=DAILY;COUNT=5\r\nSUMMARY:Round\r\nX-ODD;X-P=\"a;b\":kept\r\n"
    "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT5M\r\nX-IN:kept\r\nEND:VALARM";

class SeriesTest : public StoreTest {
protected:
    static QStringList days(const CalendarFile &file) {
        QStringList found;
        const QDateTime from(QDate(2026, 3, 1), QTime(0, 0));
        for (const Occurrence &occurrence : file.occurrences(from, from.addMonths(2)))
            found.append(occurrence.start.toString(u"MM-dd HH:mm"_s));
        return found;
    }
    static QString instance(const CalendarFile &file, int index) {
        const QDateTime from(QDate(2026, 3, 1), QTime(0, 0));
        return file.occurrences(from, from.addMonths(2)).value(index).instanceId;
    }
    static Appointment day(const CalendarFile &file, const QString &instanceId, int addedSeconds) {
        Appointment changed = *file.find(u"one"_s);
        const qint64 length = changed.start.value.secsTo(changed.end.value);
        changed.recurrenceId = instanceId;
        changed.recurrenceRule.clear();
        changed.start.value = changed.start.value.addSecs(addedSeconds);
        changed.end.value = changed.start.value.addSecs(length);
        return changed;
    }
};

} // namespace

TEST_F(SeriesTest, ADayIsNamedInTheFormOfItsSeries) {
    const struct {
        const char *lines;
        const char *first;
        const char *recurrenceId;
    } forms[] = {{"DTSTART;TZID=Europe/Berlin:20260309T090000\r\nRRULE:FREQ=DAILY;COUNT=2", "20260309T090000",
                  "RECURRENCE-ID;TZID=Europe/Berlin:20260309T090000"},
                 {"DTSTART:20260309T090000Z\r\nRRULE:FREQ=DAILY;COUNT=2", "20260309T090000Z",
                  "RECURRENCE-ID:20260309T090000Z"},
                 {"DTSTART:20260309T090000\r\nRRULE:FREQ=DAILY;COUNT=2", "20260309T090000",
                  "RECURRENCE-ID:20260309T090000"},
                 {"DTSTART;VALUE=DATE:20260309\r\nRRULE:FREQ=DAILY;COUNT=2", "20260309",
                  "RECURRENCE-ID;VALUE=DATE:20260309"}};
    for (const auto &form : forms) {
        SCOPED_TRACE(form.lines);
        auto file = openedEvent(form.lines);
        EXPECT_EQ(instance(*file, 0), form.first);
        Appointment changed = day(*file, form.first, 0);
        changed.summary = u"Changed"_s;
        file->add(changed);
        EXPECT_TRUE(saved(*file).contains(QByteArray(form.recurrenceId) + "\r\n")) << saved(*file).data();
        EXPECT_EQ(days(*file).size(), 2);
        EXPECT_TRUE(file->remove(u"one"_s, form.first));
        EXPECT_EQ(days(*file).size(), 1);
    }
}

TEST_F(SeriesTest, AChangedDayBeginsAsItsSeriesWithAllThatNobodyHereKnows) {
    auto file = openedEvent(zoned);
    file->add(day(*file, instance(*file, 2), 2 * 86400 + 3600));
    const QByteArray text = saved(*file);
    EXPECT_EQ(text.count("X-ODD;X-P=\"a;b\":kept"), 2);
    EXPECT_EQ(text.count("X-IN:kept"), 2);
    EXPECT_EQ(text.count("RRULE:FREQ=DAILY"), 1);
    EXPECT_EQ(days(*file),
              (QStringList{"03-09 09:00", "03-10 09:00", "03-11 10:00", "03-12 09:00", "03-13 09:00"}));
}

TEST_F(SeriesTest, ADeletedDayStaysAwayAndOnlyARealOneCanBeDeleted) {
    auto file = openedEvent(zoned);
    EXPECT_TRUE(file->remove(u"one"_s, instance(*file, 1)));
    EXPECT_FALSE(file->remove(u"one"_s, u"20260310T090000"_s)) << "it is gone";
    EXPECT_FALSE(file->remove(u"one"_s, u"20260310T100000"_s));
    EXPECT_FALSE(file->remove(u"one"_s, u"rubbish\r\nX-BAD:1"_s));
    EXPECT_EQ(days(*file), (QStringList{"03-09 09:00", "03-11 09:00", "03-12 09:00", "03-13 09:00"}));
    EXPECT_TRUE(saved(*file).contains("EXDATE;TZID=Europe/Berlin:20260310T090000\r\n"));
}

TEST_F(SeriesTest, DeletedAndChangedDaysMoveWithTheirSeries) {
    const struct {
        const char *rule;
        int days;
        int seconds;
        QStringList expected;
    } moves[] = {
        {"FREQ=DAILY;COUNT=4", 0, 5400, {"03-09 10:30", "03-11 15:00", "03-12 10:30"}},
        {"FREQ=DAILY;UNTIL=20260312T080000Z", 0, -3600, {"03-09 08:00", "03-11 15:00", "03-12 08:00"}},
        {"FREQ=DAILY;COUNT=4", 1, 0, {"03-10 09:00", "03-11 15:00", "03-13 09:00"}},
        // Over the change of the clocks on 29 March.
        {"FREQ=DAILY;COUNT=4", 18, 0, {"03-11 15:00", "03-27 09:00", "03-30 09:00"}}};
    for (const auto &move : moves) {
        SCOPED_TRACE(move.rule);
        auto file = opened("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:one\r\n"
                           "DTSTART;TZID=Europe/Berlin:20260309T090000\r\n"
                           "DTEND;TZID=Europe/Berlin:20260309T093000\r\nRRULE:" +
                           QByteArray(move.rule) +
                           "\r\nEXDATE;TZID=Europe/Berlin:20260310T090000\r\nEND:VEVENT\r\n"
                           "BEGIN:VEVENT\r\nUID:one\r\nRECURRENCE-ID;TZID=Europe/Berlin:20260311T090000\r\n"
                           "DTSTART;TZID=Europe/Berlin:20260311T150000\r\n"
                           "DTEND;TZID=Europe/Berlin:20260311T153000\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
        Appointment series = *file->find(u"one"_s);
        series.start.value = series.start.value.addDays(move.days).addSecs(move.seconds);
        series.end.value = series.end.value.addDays(move.days).addSecs(move.seconds);
        ASSERT_TRUE(file->update(series));
        EXPECT_EQ(days(*file), move.expected) << saved(*file).data();
        auto again = opened(saved(*file));
        EXPECT_EQ(days(*again), move.expected);
    }
}

TEST_F(SeriesTest, AWeeklyRuleGoesToTheNewWeekday) {
    auto file = openedEvent("DTSTART:20260309T090000Z\r\nDTEND:20260309T093000Z\r\n"
                            "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=2");
    Appointment series = *file->find(u"one"_s);
    series.start.value = series.start.value.addDays(1);
    series.end.value = series.end.value.addDays(1);
    file->update(series);
    EXPECT_EQ(days(*file), (QStringList{"03-10 10:00", "03-17 10:00"}));
}

TEST_F(SeriesTest, WhatIsPutBackIsThereToTheLetter) {
    const QByteArray text = fixture(u"series.ics"_s);
    auto file = opened(text);
    for (const Appointment &appointment : file->appointments()) {
        const QByteArray before = file->componentsOf(appointment.uid);
        ASSERT_TRUE(file->remove(appointment.uid));
        EXPECT_TRUE(file->componentsOf(appointment.uid).isEmpty());
        ASSERT_TRUE(file->restore(appointment.uid, before));
        EXPECT_EQ(file->componentsOf(appointment.uid), before);
        EXPECT_TRUE(file->find(appointment.uid, appointment.recurrenceId));
    }
    EXPECT_TRUE(changedNames(text, saved(*file)).isEmpty());
    auto changed = opened(text);
    Appointment first = changed->appointments().first();
    const QByteArray before = changed->componentsOf(first.uid);
    first.summary = u"Changed"_s;
    ASSERT_TRUE(changed->update(first));
    EXPECT_FALSE(changed->restore(first.uid, "BEGIN:VTODO\r\nEND:VTODO\r\n"));
    EXPECT_FALSE(changed->restore(first.uid, "END:VCALENDAR\r\nBEGIN:VCALENDAR\r\n"));
    EXPECT_FALSE(changed->restore(u"other"_s, before));
    ASSERT_TRUE(changed->restore(first.uid, before));
    EXPECT_EQ(saved(*changed), text) << "in its old place";
}

TEST_F(SeriesTest, AJoinLinkInTheLocationIsOfferedToOtherCalendars) {
    const QByteArray others = "CONFERENCE;VALUE=URI;FEATURE=PHONE:tel:+1-555-0100\r\n"
                              "CONFERENCE;VALUE=URI;LABEL=\"Theirs; odd\":https://them.example/x\r\n";
    auto file = openedEvent("DTSTART:20260309T090000Z\r\n" + others + "SUMMARY:a");
    const auto own = [&](const QString &location, const QString &record) {
        Appointment changed = *file->find(u"one"_s);
        changed.location = location;
        changed.ucCapabilities = record;
        file->update(changed);
        const QByteArray text = saved(*file).replace("\r\n ", "");
        EXPECT_TRUE(text.contains(others)) << text.data();
        const qsizetype at = text.indexOf("X-PARLO-LINK=LOCATION:");
        return at < 0 ? QByteArray() : text.mid(at + 22, text.indexOf("\r\n", at) - at - 22);
    };
    const QString record = u"{\"joinUrl\":\"https://m.example/j/1?p=a,b\"}"_s;
    EXPECT_EQ(own(u"See https://map.example/7, https://m.example/j/1?p=a,b Room"_s, record),
              "https://m.example/j/1?p=a,b");
    EXPECT_EQ(own(u"Room (https://other.example/j/2)."_s, {}), "https://other.example/j/2");
    EXPECT_EQ(own(u"https://them.example/x"_s, {}), "") << "theirs offers it already";
    EXPECT_EQ(own(u"https://m.example/ä\"x"_s, {}), "https://m.example/%C3%A4");
    EXPECT_EQ(own(u"Room 7"_s, record), "");
    EXPECT_EQ(own(u"https://m.example/"_s + QString(5000, u'a'), {}), "");
    EXPECT_EQ(own(u"https:// nothing"_s, {}), "");
    EXPECT_EQ(own(u"https://m.example/a\r\nX-BAD:1"_s, {}), "https://m.example/a");
    EXPECT_FALSE(saved(*file).contains("\nX-BAD"));
    EXPECT_EQ(own(QString(), {}), "");
}
