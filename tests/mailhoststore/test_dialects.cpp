#include "standin/mailhost/store/ComponentTree.h"
#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

// What a stored meeting may change in its own appointment.
const char *const linesOfAMeeting[] = {"LOCATION",    "CONFERENCE", "X-PARLO-UC-CAPABILITIES",
                                       "DESCRIPTION", "X-ALT-DESC", "STYLED-DESCRIPTION",
                                       "DTSTAMP",     "UID",        "LAST-MODIFIED"};

QByteArray withoutMeetingLines(const QByteArray &text) {
    Document document;
    EXPECT_EQ(parseDocument(text, &document).failure, ParseFailure::None);
    for (const Component *calendar : document.calendars()) {
        for (Component *component : calendar->components()) {
            for (const char *name : linesOfAMeeting)
                component->removeLines(name);
        }
    }
    return document.text();
}

class DialectsTest : public StoreTest {};

} // namespace

TEST_F(DialectsTest, AMeetingStoredIntoOneAppointmentLeavesEveryOtherLineOfTheFileAlone) {
    const QString link = u"https://meetings.parlo.example/j/123?p=a,b;c"_s;
    for (const QString &name : fixtures()) {
        const QByteArray before = fixture(name);
        const auto appointments = opened(before)->appointments();
        for (int i = 0; i < appointments.size(); ++i) {
            SCOPED_TRACE(qPrintable(name + u' ' + appointments[i].uid));
            auto file = opened(before);
            Appointment changed = appointments[i];
            if (file->find(changed.uid, changed.recurrenceId) != changed)
                continue; // the file has another one of that name before it
            changed.location = link + u"; "_s + changed.location;
            changed.ucCapabilities = u"{\"joinUrl\":\"%1\"}"_s.arg(link);
            changed.bodyHtml = u"<p>Bis später,\tTomáš</p>"_s;
            ASSERT_TRUE(file->update(changed));
            const QByteArray after = saved(*file);
            EXPECT_EQ(withoutMeetingLines(after), withoutMeetingLines(before));
            EXPECT_TRUE(QByteArray(after)
                            .replace("\r\n ", "")
                            .replace("\n ", "")
                            .contains("X-PARLO-LINK=LOCATION:" + link.toUtf8()));
            QList<Appointment> expected = appointments;
            expected[i] = changed;
            EXPECT_EQ(opened(after)->appointments(), expected);
        }
    }
}

TEST_F(DialectsTest, TakingAMeetingBackOutLeavesNoTrace) {
    for (const QString &name : fixtures()) {
        const QByteArray before = fixture(name);
        const auto appointments = opened(before)->appointments();
        for (const Appointment &original : appointments) {
            SCOPED_TRACE(qPrintable(name + u' ' + original.uid));
            auto file = opened(before);
            const QByteArray components = file->componentsOf(original.uid);
            Appointment changed = original;
            changed.location = u"https://meetings.parlo.example/j/1"_s;
            changed.bodyHtml = u"<p>x</p>"_s;
            ASSERT_TRUE(file->update(changed));
            ASSERT_TRUE(file->restore(original.uid, components));
            EXPECT_EQ(saved(*file), before) << "a change";
            ASSERT_TRUE(file->remove(original.uid, original.recurrenceId));
            ASSERT_TRUE(file->restore(original.uid, components));
            EXPECT_EQ(saved(*file), before) << "a removal";
            EXPECT_EQ(file->appointments().size(), appointments.size());
        }
    }
}

TEST_F(DialectsTest, WhatPeopleReadIsReadFromEveryDialect) {
    const struct {
        const char *fixture;
        const char *uid;
        const char *summary;
        const char *location;
        int attendees;
        const char *startUtc;
    } cases[] = {
        {"groupware.ics", "7F3A0C5512E94D0BA6C1-0001-0002-0003-000000000004@groups.parlo.example",
         "Monthly review", "Room 4711", 3, "2025-03-12 13:00"},
        {"desktop.ics", "desktop-1", "lower case", "", 0, "2025-03-12 09:00"},
        {"desktop.ics", "desktop-2", "Whole days", "", 0, "2025-03-13 23:00"},
        {"telephone.ics", "2C1F0E9A-TELEFON",
         "Frühstück für zwölf Gäste — größtenteils äußerst hungrig 🥐🥐🥐",
         "Café „Größenwahn“\nStraße der Ärzte 5, 10115 Köln", 0, "2025-03-12 06:30"},
        {"web_export.ics", "web-1@parlo.example", "Web; with an unescaped semicolon, and comma", "", 1,
         "2025-03-12 09:00"},
        {"script.ics", "script-1", "Grüße in Latin-1", "Zürich", 1, "2025-03-12 10:00"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.uid);
        const Appointment read =
            *opened(fixture(QString::fromLatin1(test.fixture)))->find(QString::fromLatin1(test.uid));
        EXPECT_EQ(read.summary, QString::fromUtf8(test.summary));
        EXPECT_EQ(read.location, QString::fromUtf8(test.location));
        EXPECT_EQ(read.attendees.size(), test.attendees);
        EXPECT_EQ(read.start.value.toUTC().toString(u"yyyy-MM-dd HH:mm"_s),
                  QString::fromLatin1(test.startUtc));
    }
}

TEST_F(DialectsTest, AnAppointmentIsMovedInTheWayThatItTellsItsTimes) {
    const struct {
        const char *fixture;
        const char *uid;
        int hours;
        const char *line; // after the move
    } cases[] = {
        {"zones.ics", "no-daylight-saving", 3, "DTSTART;TZID=Europe/Berlin:20250712T120000"},
        {"zones.ics", "ship", 3, "DTSTART;TZID=\"(UTC+03:45) Ship's time\":20250712T120000"},
        // Into the hour that the system's own clock shows twice.
        {"zones.ics", "lost", 2, "DTSTART;X-P=1;TZID=\"Custom: 7\":20251026T023000"},
        {"zones.ics", "floating", 3, "DTSTART:20250712T120000"},
        {"zones.ics", "history", 3, "DTSTART;TZID=America/New_York:20060410T120000"},
        {"windows_zones.ics", "numbers@example", 744,
         "DTSTART;TZID=\"W. Europe Standard Time\":20250403T100000"},
        {"windows_zones.ics", "custom-zone", 745, "DTSTART;TZID=Customized Time Zone:20250406T100000"},
        {"prefixed_zones.ics", "prefixed@example", 745,
         "dtstart;tzid=/freeassociation.sourceforge.net/America/New_York:20250410T093000"},
        {"mixed.ics", "lost-zone", 744, "DTSTART;TZID=Atlantis/Capital:20250414T110000"},
        {"mixed.ics", "all-day", 744, "DTSTART;VALUE=DATE:20250413"},
        {"mixed.ics", "second-calendar", 744, "DTSTART:20250415T100000Z"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.uid);
        const QByteArray before = fixture(QString::fromLatin1(test.fixture));
        auto file = opened(before);
        Appointment moved = *file->find(QString::fromLatin1(test.uid));
        moved.start.value = moved.start.value.addSecs(test.hours * 3600);
        moved.end.value = moved.end.value.addSecs(test.hours * 3600);
        ASSERT_TRUE(file->update(moved));
        const QByteArray text = saved(*file).replace("\r\n ", "").replace("\n ", "");
        EXPECT_TRUE(text.contains(test.line)) << text.data();
        EXPECT_EQ(text.count("BEGIN:VTIMEZONE"), before.count("BEGIN:VTIMEZONE")) << "its zones are known";
        const Appointment read = *CalendarFile::open(path(), nullptr)->find(moved.uid);
        EXPECT_EQ(read.start.kind, moved.start.kind);
        EXPECT_EQ(read.start.zoneId, moved.start.zoneId);
    }
}

TEST_F(DialectsTest, AnAppointmentWithoutIdentifierKeepsTheOneItIsGiven) {
    const auto uidOf = [](const CalendarFile &file) {
        for (const Appointment &appointment : file.appointments()) {
            if (appointment.summary.startsWith(u"Floating"_s))
                return appointment.uid;
        }
        return QString();
    };
    auto file = opened(fixture(u"mixed.ics"_s));
    const QString uid = uidOf(*file);
    EXPECT_FALSE(uid.isEmpty());
    EXPECT_EQ(uidOf(*CalendarFile::open(path(), nullptr)), uid);
    Appointment changed = *file->find(uid);
    changed.location = u"Here"_s;
    ASSERT_TRUE(file->update(changed));
    (void)saved(*file);
    EXPECT_EQ(CalendarFile::open(path(), nullptr)->find(uid)->location, u"Here"_s);
}

TEST_F(DialectsTest, FoldingNeverCutsACharacterAndKeepsLinesShort) {
    auto file = CalendarFile::create(path());
    Appointment appointment;
    appointment.summary = u"a"_s + QString(40, QChar(0x20AC)) + QString::fromUcs4(U"\U0001F600").repeated(40);
    const QString uid = file->add(appointment);
    const auto lines = saved(*file).split('\n');
    for (const QByteArray &line : lines) {
        EXPECT_LE(line.size(), 76); // with the CR
        EXPECT_TRUE(line.isValidUtf8()) << line.constData();
    }
    EXPECT_EQ(CalendarFile::open(path(), nullptr)->find(uid)->summary, appointment.summary);
}
