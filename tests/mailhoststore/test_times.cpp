#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

using Kind = CalendarTime::Kind;

struct TimeCase {
    const char *lines;
    Kind kind;
    const char *startUtc; // for dates and floating times: the local clock time
    const char *endUtc;
    int warnings = 0;
};

QString shown(const CalendarTime &time) {
    const bool local = time.kind == Kind::Date || time.kind == Kind::Floating;
    const QDateTime value = local ? time.value.toLocalTime() : time.value.toUTC();
    return value.toString(u"yyyy-MM-dd HH:mm"_s);
}

class TimesTest : public StoreTest {};

} // namespace

TEST_F(TimesTest, TimesAreReadAsTheFormatSays) {
    const TimeCase cases[] = {
        {"DTSTART:20250312T100000Z\r\nDTEND:20250312T110000Z", Kind::Utc, "2025-03-12 10:00",
         "2025-03-12 11:00"},
        {"DTSTART;TZID=Europe/Berlin:20250312T100000\r\nDURATION:PT90M", Kind::Zoned, "2025-03-12 09:00",
         "2025-03-12 10:30"},
        {"DTSTART;TZID=Europe/Berlin:20250712T100000", Kind::Zoned, "2025-07-12 08:00", "2025-07-12 08:00"},
        {"DTSTART;TZID=\"Tokyo Standard Time\":20250312T100000", Kind::Zoned, "2025-03-12 01:00",
         "2025-03-12 01:00"},
        {"DTSTART;TZID=/freeassociation.sourceforge.net/America/New_York:20250312T100000", Kind::Zoned,
         "2025-03-12 14:00", "2025-03-12 14:00"},
        {"DTSTART;TZID=/a.b/c/America/Argentina/Buenos_Aires:20250312T100000", Kind::Zoned,
         "2025-03-12 13:00", "2025-03-12 13:00"},
        {"DTSTART;TZID=Nowhere:20250312T100000", Kind::Zoned, "2025-03-12 09:00", "2025-03-12 09:00", 1},
        {"DTSTART:20250312T100000\r\nDTEND:20250312T110000", Kind::Floating, "2025-03-12 10:00",
         "2025-03-12 11:00"},
        {"DTSTART;VALUE=DATE:20250312", Kind::Date, "2025-03-12 00:00", "2025-03-13 00:00"},
        {"DTSTART;VALUE=DATE:20250312\r\nDURATION:P1W", Kind::Date, "2025-03-12 00:00", "2025-03-19 00:00"},
        {"DTSTART:20250312\r\nDTEND:20250314", Kind::Date, "2025-03-12 00:00", "2025-03-14 00:00"},
        // A day over the change to daylight saving has 23 hours, 24 hours are 24 hours.
        {"DTSTART;TZID=Europe/Berlin:20250329T120000\r\nDURATION:P1D", Kind::Zoned, "2025-03-29 11:00",
         "2025-03-30 10:00"},
        {"DTSTART;TZID=Europe/Berlin:20250329T120000\r\nDURATION:PT24H", Kind::Zoned, "2025-03-29 11:00",
         "2025-03-30 11:00"},
        // Skipped by the clock, and shown twice by it.
        {"DTSTART;TZID=Europe/Berlin:20250330T023000", Kind::Zoned, "2025-03-30 01:30", "2025-03-30 01:30"},
        {"DTSTART;TZID=Europe/Berlin:20251026T023000", Kind::Zoned, "2025-10-26 00:30", "2025-10-26 00:30"},
        {"DTSTART:20250312T100000Z\r\nDTEND:20250312T090000Z", Kind::Utc, "2025-03-12 10:00",
         "2025-03-12 10:00"},
        {"DTSTART:20250312T100000Z\r\nDURATION:-PT1H", Kind::Utc, "2025-03-12 10:00", "2025-03-12 10:00"},
    };
    for (const TimeCase &test : cases) {
        SCOPED_TRACE(test.lines);
        auto file = openedEvent(test.lines);
        const Appointment read = *file->find(u"one"_s);
        EXPECT_EQ(read.start.kind, test.kind);
        EXPECT_EQ(shown(read.start), QString::fromLatin1(test.startUtc));
        EXPECT_EQ(shown(read.end), QString::fromLatin1(test.endUtc));
    }
}

TEST_F(TimesTest, ZonesOfTheFileCountBeforeTheSystems) {
    auto file = opened(fixture(u"windows_zones.ics"_s));
    const CalendarTime custom = file->find(u"custom-zone"_s)->start;
    EXPECT_EQ(shown(custom), u"2025-03-06 05:15"_s);
    EXPECT_EQ(custom.value.offsetFromUtc(), 3 * 3600 + 45 * 60);
    const CalendarTime windows = file->find(u"numbers@example"_s)->start;
    EXPECT_EQ(windows.zoneId, u"W. Europe Standard Time"_s);
    EXPECT_EQ(windows.value.timeZone().id(), QByteArray("Europe/Berlin"));
    EXPECT_EQ(windows.value.time(), QTime(9, 0));
}

TEST_F(TimesTest, ALengthMovesAlongAndIsWrittenOnlyWhenItChanges) {
    auto file = openedEvent("DTSTART:20250312T100000Z\r\nDURATION;X-P=1:PT90M");
    Appointment changed = *file->find(u"one"_s);
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
    Appointment changed = *file->find(u"one"_s);
    changed.start.value = changed.end.value = changed.start.value.addSecs(3600);
    const QDateTime wanted = changed.start.value;
    ASSERT_TRUE(file->update(changed));
    (void)saved(*file);
    EXPECT_EQ(CalendarFile::open(path(), nullptr)->find(u"one"_s)->start.value, wanted);
}

TEST_F(TimesTest, ANewZoneBringsItsRulesIntoTheFileOnce) {
    for (const char *lineEnd : {"\n", "\r\n"}) {
        QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n";
        auto file = opened(text.replace("\r\n", lineEnd));
        for (const char *zone :
             {"America/New_York", "America/New_York", "Asia/Kolkata", "Tokyo Standard Time"}) {
            Appointment added;
            added.start.zoneId = added.end.zoneId = QString::fromLatin1(zone);
            added.start.value = QDateTime(QDate(2025, 7, 1), QTime(13, 0), Qt::UTC);
            added.end.value = added.start.value.addSecs(3600);
            file->add(added);
        }
        QByteArray written = saved(*file);
        EXPECT_EQ(written.count("BEGIN:VTIMEZONE"), 3);
        EXPECT_TRUE(written.contains("DTSTART;TZID=America/New_York:20250701T090000"));
        EXPECT_TRUE(written.contains("DTSTART;TZID=Asia/Kolkata:20250701T183000"));
        EXPECT_LT(written.lastIndexOf("END:VTIMEZONE"), written.indexOf("BEGIN:VEVENT"));
        EXPECT_EQ(written.count('\n'), written.count(lineEnd));
        EXPECT_EQ(written.contains('\r'), qstrlen(lineEnd) == 2);
        EXPECT_FALSE(written.contains("-0456")) << "rules of the nineteenth century";
        for (const Appointment &read : CalendarFile::open(path(), nullptr)->appointments())
            EXPECT_EQ(read.start.value, QDateTime(QDate(2025, 7, 1), QTime(13, 0), Qt::UTC))
                << qPrintable(read.start.zoneId);
    }
}

TEST_F(TimesTest, WrittenZoneRulesAgreeWithTheSystem) {
    for (const char *zone : {"America/New_York", "Europe/London", "Australia/Lord_Howe", "Africa/Casablanca",
                             "Asia/Kolkata", "America/Sao_Paulo", "Europe/Moscow"}) {
        auto file = CalendarFile::create(path(QString::fromLatin1(zone).replace(u'/', u'_')));
        QList<QDateTime> instants;
        for (QDateTime t(QDate(1990, 1, 5), QTime(12, 0), Qt::UTC); t.date().year() < 2035;
             t = t.addDays(71)) {
            Appointment added;
            added.start.zoneId = added.end.zoneId = QString::fromLatin1(zone);
            added.start.value = added.end.value = t;
            file->add(added);
            instants.append(t);
        }
        (void)saved(*file);
        const auto read = CalendarFile::open(file->path(), nullptr)->appointments();
        for (qsizetype i = 0; i < read.size(); ++i)
            ASSERT_EQ(read[i].start.value, instants[i]) << zone << ' ' << qPrintable(instants[i].toString());
    }
}
