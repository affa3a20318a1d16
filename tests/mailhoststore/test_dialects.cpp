#include "standin/mailhost/store/ComponentTree.h"
#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

// What a stored meeting may change in its own appointment.
const QList<QByteArray> linesOfAMeeting = {"LOCATION",           "CONFERENCE", "X-PARLO-UC-CAPABILITIES",
                                           "DESCRIPTION",        "X-ALT-DESC", "LAST-MODIFIED",
                                           "STYLED-DESCRIPTION", "DTSTAMP"};

bool isMeetingLine(const ComponentItem &item) {
    const auto *line = std::get_if<ContentLine>(&item);
    return line && linesOfAMeeting.contains(line->name());
}

QByteArray textOf(const ComponentItem &item) {
    if (const auto *line = std::get_if<ContentLine>(&item))
        return line->source();
    QByteArray text;
    std::get<std::unique_ptr<Component>>(item)->appendText(text);
    return text;
}

// All that another program would not expect to be touched, in its order.
QByteArray withoutMeetingLines(const Component &component) {
    QByteArray text;
    for (const ComponentItem &item : component.items) {
        if (!isMeetingLine(item))
            text += textOf(item);
    }
    return text;
}

class DialectsTest : public StoreTest {
protected:
    // Compares the two files component by component; the appointment at `changed` (counted over all of them)
    // may have another meeting.
    static void compare(const QByteArray &before, const QByteArray &after, int changed) {
        Document was;
        Document is;
        ASSERT_EQ(parseDocument(before, &was).failure, ParseFailure::None);
        ASSERT_EQ(parseDocument(after, &is).failure, ParseFailure::None);
        ASSERT_EQ(was.items.size(), is.items.size());
        const auto calendars = was.calendars();
        int appointment = 0;
        for (size_t c = 0; c < calendars.size(); ++c) {
            const auto &items = calendars[c]->items;
            const auto &itemsNow = is.calendars()[c]->items;
            ASSERT_EQ(items.size(), itemsNow.size());
            for (size_t i = 0; i < items.size(); ++i) {
                const auto *component = std::get_if<std::unique_ptr<Component>>(&items[i]);
                const bool counts = component && (*component)->name == "VEVENT";
                if (!counts || appointment++ != changed) {
                    EXPECT_EQ(textOf(itemsNow[i]), textOf(items[i]));
                    continue;
                }
                EXPECT_EQ(withoutMeetingLines(*std::get<std::unique_ptr<Component>>(itemsNow[i])),
                          withoutMeetingLines(**component));
            }
        }
    }
};

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
            if (file->find(changed.uid, changed.recurrenceId)->summary != changed.summary)
                continue; // the file has another one of that name before it
            changed.location = link + u"; "_s + changed.location;
            changed.ucCapabilities = u"{\"joinUrl\":\"%1\"}"_s.arg(link);
            changed.bodyHtml = u"<p>Bis später,\tTomáš</p>"_s;
            ASSERT_TRUE(file->update(changed));
            QByteArray after = saved(*file);
            if (!before.contains(changed.uid.left(20).toUtf8()))
                after.replace("UID:" + changed.uid.toUtf8() + "\r\n", ""); // it had none
            compare(before, after, i);
            EXPECT_TRUE(QByteArray(after)
                            .replace("\r\n ", "")
                            .replace("\n ", "")
                            .contains("X-PARLO-LINK=LOCATION:" + link.toUtf8()));

            auto again = CalendarFile::open(path(), nullptr);
            const Appointment read = *again->find(changed.uid, changed.recurrenceId);
            EXPECT_EQ(read.location, changed.location);
            EXPECT_EQ(read.ucCapabilities, changed.ucCapabilities);
            EXPECT_EQ(read.bodyHtml, changed.bodyHtml);
            EXPECT_EQ(read.start, changed.start);
            EXPECT_EQ(read.attendees, changed.attendees);
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
        const char *uid;
        int hours;
        const char *startUtc; // now
        const char *line;     // after the move
    } cases[] = {
        {"no-daylight-saving", 3, "2025-07-12 08:00", "DTSTART;TZID=Europe/Berlin:20250712T120000"},
        {"ship", 3, "2025-07-12 05:15", "DTSTART;TZID=\"(UTC+03:45) Ship's time\":20250712T120000"},
        // Into the hour that the system's own clock shows twice.
        {"lost", 2, "2025-10-25 23:30", "DTSTART;X-P=1;TZID=\"Custom: 7\":20251026T023000"},
        {"floating", 3, "2025-07-12 07:00", "DTSTART:20250712T120000"},
        {"history", 3, "2006-04-10 13:00", "DTSTART;TZID=America/New_York:20060410T120000"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.uid);
        auto file = opened(fixture(u"zones.ics"_s));
        Appointment moved = *file->find(QString::fromLatin1(test.uid));
        const CalendarTime former = moved.start;
        EXPECT_EQ(former.value.toUTC().toString(u"yyyy-MM-dd HH:mm"_s), QString::fromLatin1(test.startUtc));
        moved.start.value = moved.start.value.addSecs(test.hours * 3600);
        moved.end.value = moved.end.value.addSecs(test.hours * 3600);
        ASSERT_TRUE(file->update(moved));
        const QByteArray text = saved(*file);
        EXPECT_TRUE(text.contains(QByteArray(test.line) + "\r\n")) << text.data();
        EXPECT_EQ(text.count("BEGIN:VTIMEZONE"), 3) << "the file explains its zones already";
        const CalendarTime read = CalendarFile::open(path(), nullptr)->find(moved.uid)->start;
        EXPECT_EQ(read.kind, former.kind);
        EXPECT_EQ(read.zoneId, former.zoneId);
    }
}
