#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

using Kind = CalendarTime::Kind;
const QString one = u"one"_s;

// In UTC; of dates and floating times the local clock time.
QString shown(const CalendarTime &time) {
    const bool local = time.kind == Kind::Date || time.kind == Kind::Floating;
    const QDateTime value = local ? time.value.toLocalTime() : time.value.toUTC();
    return value.toString(u"yyyy-MM-dd HH:mm"_s);
}

class TimesTest : public StoreTest {};

} // namespace

TEST_F(TimesTest, TimesAreReadAsTheFormatSays) {
    const struct {
        const char *lines;
        Kind kind;
        const char *start;
        const char *end;
    } cases[] = {
        {"DTSTART;TZID=/a.b/c/America/Argentina/Buenos_Aires:20250312T100000", Kind::Zoned,
         "2025-03-12 13:00", "2025-03-12 13:00"},
        {"DTSTART;VALUE=DATE:20250312", Kind::Date, "2025-03-12 00:00", "2025-03-13 00:00"},
        {"DTSTART:20250312\r\nDTEND:20250314", Kind::Date, "2025-03-12 00:00", "2025-03-14 00:00"},
        // A day over the change to daylight saving has 23 hours, 24 hours are 24 hours.
        {"DTSTART;TZID=Europe/Berlin:20250329T120000\r\nDURATION:P1D", Kind::Zoned, "2025-03-29 11:00",
         "2025-03-30 10:00"},
        {"DTSTART;TZID=Europe/Berlin:20250329T120000\r\nDURATION:PT24H", Kind::Zoned, "2025-03-29 11:00",
         "2025-03-30 11:00"},
        // Skipped by the clock, and shown twice by it.
        {"DTSTART;TZID=Europe/Berlin:20250330T023000", Kind::Zoned, "2025-03-30 01:30", "2025-03-30 01:30"},
        {"DTSTART;TZID=Europe/Berlin:20251026T023000", Kind::Zoned, "2025-10-26 00:30", "2025-10-26 00:30"},
        {"DTSTART:20250312T235960Z\r\nDURATION:-PT1H", Kind::Utc, "2025-03-12 23:59", "2025-03-12 23:59"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.lines);
        const Appointment read = *openedEvent(test.lines)->find(one);
        EXPECT_EQ(read.start.kind, test.kind);
        EXPECT_EQ(shown(read.start), QString::fromLatin1(test.start));
        EXPECT_EQ(shown(read.end), QString::fromLatin1(test.end));
    }
}

TEST_F(TimesTest, ZonesOfTheFileCountBeforeTheSystemsUnlessTheyAreBroken) {
    auto file = opened(fixture(u"windows_zones.ics"_s));
    const CalendarTime custom = file->find(u"custom-zone"_s)->start;
    EXPECT_EQ(shown(custom), u"2025-03-06 05:15"_s);
    EXPECT_EQ(custom.value.offsetFromUtc(), 3 * 3600 + 45 * 60);
    const CalendarTime windows = file->find(u"numbers@example"_s)->start;
    EXPECT_EQ(windows.zoneId, u"W. Europe Standard Time"_s);
    EXPECT_EQ(windows.value.timeZone().id(), QByteArray("Europe/Berlin"));
    EXPECT_EQ(windows.value.time(), QTime(9, 0));
    for (const QByteArray &rules :
         {"", "TZOFFSETFROM:+99\r\nTZOFFSETTO:x\r\n",
          "DTSTART:16010101T000000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0100\r\nRRULE:FREQ=SECONDLY\r\n"}) {
        auto broken = openedEvent("DTSTART;TZID=Asia/Tokyo:20250312T090000",
                                  "BEGIN:VTIMEZONE\r\nTZID:Asia/Tokyo\r\nBEGIN:STANDARD\r\n" + rules +
                                      "END:STANDARD\r\nEND:VTIMEZONE\r\n");
        EXPECT_EQ(shown(broken->find(one)->start), u"2025-03-12 00:00"_s);
    }
}

TEST_F(TimesTest, AnAppointmentIsMovedInTheWayThatItTellsItsTimes) {
    const struct {
        const char *fixture;
        const char *uid;
        int hours;
        const char *line; // after the move
    } cases[] = {
        {"zones.ics", "ship", 3, "DTSTART;TZID=\"(UTC+03:45) Ship's time\":20250712T120000"},
        // Into the hour that the system's own clock shows twice.
        {"zones.ics", "lost", 2, "DTSTART;X-P=1;TZID=\"Custom: 7\":20251026T023000"},
        {"zones.ics", "floating", 3, "DTSTART:20250712T120000"},
        {"windows_zones.ics", "numbers@example", 744,
         "DTSTART;TZID=\"W. Europe Standard Time\":20250403T100000"},
        {"prefixed_zones.ics", "prefixed@example", 745,
         "dtstart;tzid=/freeassociation.sourceforge.net/America/New_York:20250410T093000"},
        {"mixed.ics", "lost-zone", 744, "DTSTART;TZID=Atlantis/Capital:20250414T110000"},
        {"mixed.ics", "all-day", 744, "DTSTART;VALUE=DATE:20250413"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.uid);
        const QByteArray before = fixture(QString::fromLatin1(test.fixture));
        auto file = opened(before);
        Appointment moved = *file->find(QString::fromLatin1(test.uid));
        moved.start.value = moved.start.value.addSecs(test.hours * 3600);
        moved.end.value = moved.end.value.addSecs(test.hours * 3600);
        ASSERT_TRUE(file->update(moved));
        const QByteArray text = unfolded(saved(*file));
        EXPECT_TRUE(text.contains(test.line)) << text.data();
        EXPECT_EQ(text.count("BEGIN:VTIMEZONE"), before.count("BEGIN:VTIMEZONE")) << "its zones are known";
    }
}

TEST_F(TimesTest, ALengthMovesAlongAndIsWrittenOnlyWhenItChanges) {
    auto file = openedEvent("DTSTART:20250312T100000Z\r\nDURATION;X-P=1:PT90M");
    Appointment changed = *file->find(one);
    changed.start.value = changed.start.value.addSecs(3600);
    changed.end.value = changed.end.value.addSecs(3600);
    ASSERT_TRUE(file->update(changed));
    EXPECT_TRUE(saved(*file).contains("DTSTART:20250312T110000Z\r\nDURATION;X-P=1:PT90M\r\n"));
    changed.end.value = changed.end.value.addSecs(900);
    ASSERT_TRUE(file->update(changed));
    const QByteArray text = saved(*file);
    EXPECT_TRUE(text.contains("DURATION;X-P=1:PT1H45M\r\n"));
    EXPECT_FALSE(text.contains("DTEND"));
}

TEST_F(TimesTest, AnInstantOfTheRepeatedHourIsNotMovedByWritingIt) {
    auto file = openedEvent("DTSTART;TZID=Europe/Berlin:20251026T023000");
    Appointment changed = *file->find(one);
    changed.start.value = changed.end.value = changed.start.value.addSecs(3600);
    ASSERT_TRUE(file->update(changed));
    EXPECT_EQ(opened(saved(*file))->find(one)->start.value, changed.start.value);
}

TEST_F(TimesTest, ANewZoneBringsItsRulesIntoTheFileOnceAndTheyAgreeWithTheSystem) {
    const char *const zones[] = {"America/New_York",  "Europe/London",      "Australia/Lord_Howe",
                                 "Africa/Casablanca", "Asia/Kolkata",       "America/Sao_Paulo",
                                 "Europe/Moscow",     "Tokyo Standard Time"};
    for (const char *lineEnd : {"\n", "\r\n"}) {
        auto file = opened(
            QByteArray("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n").replace("\r\n", lineEnd));
        QList<QDateTime> instants;
        for (const char *zone : zones) {
            for (QDateTime t(QDate(1990, 1, 5), QTime(12, 0), Qt::UTC); t.date().year() < 2035;
                 t = t.addDays(71)) {
                Appointment added;
                added.start = added.end = {Kind::Zoned, t, QString::fromLatin1(zone)};
                file->add(added);
                instants.append(t);
            }
        }
        const QByteArray written = saved(*file);
        EXPECT_EQ(written.count("BEGIN:VTIMEZONE"), qsizetype(std::size(zones)));
        EXPECT_TRUE(written.contains("DTSTART;TZID=America/New_York:20110315T080000"));
        EXPECT_LT(written.lastIndexOf("END:VTIMEZONE"), written.indexOf("BEGIN:VEVENT"));
        EXPECT_EQ(written.count('\n'), written.count(lineEnd));
        EXPECT_EQ(written.contains('\r'), qstrlen(lineEnd) == 2);
        EXPECT_FALSE(written.contains("TZOFFSETFROM:-0456")) << "rules of the nineteenth century";
        const auto read = opened(written)->appointments();
        for (qsizetype i = 0; i < read.size(); ++i)
            ASSERT_EQ(read[i].start.value, instants[i]) << qPrintable(read[i].start.zoneId);
    }
}
