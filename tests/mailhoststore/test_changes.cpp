// What a change leaves alone, and what is read again.
#include "tests/mailhoststore/StoreFixture.h"

using namespace mailhost;

namespace {

const QString numbersUid = u"numbers@example"_s;

class ChangesTest : public StoreTest {};

} // namespace

TEST_F(ChangesTest, EachFieldChangesItsOwnLinesOnlyAndIsReadBack) {
    const struct {
        const char *lines; // besides DTSTAMP and LAST-MODIFIED
        void (*change)(Appointment &);
    } changes[] = {
        {"+SUMMARY -SUMMARY", [](Appointment &a) { a.summary = u"x"_s; }},
        {"-SUMMARY", [](Appointment &a) { a.summary = QString(); }},
        {"+LOCATION -LOCATION", [](Appointment &a) { a.location = u""_s; }},
        {"+DTSTART -DTSTART", [](Appointment &a) { a.start.value = a.start.value.addSecs(-1800); }},
        {"+DTEND -DTEND", [](Appointment &a) { a.end.value = a.end.value.addSecs(1800); }},
        {"+RRULE", [](Appointment &a) { a.recurrenceRule = u"FREQ=DAILY;COUNT=3"_s; }},
        {"+ORGANIZER -ORGANIZER", [](Appointment &a) { a.organizerName = u"Ada \"E\" Example"_s; }},
        {"-ORGANIZER", [](Appointment &a) { a.organizerName = a.organizerEmail = QString(); }},
        {"-ATTENDEE", [](Appointment &a) { a.attendees.removeAt(1); }},
        {"+ATTENDEE",
         [](Appointment &a) {
             a.attendees.insert(1, {u"Mei, V."_s, u"mei@x.example"_s, {}});
         }},
        {"+ATTENDEE -ATTENDEE", [](Appointment &a) { a.attendees[0].type = AttendeeType::Optional; }},
        {"+X-PARLO-UC-CAPABILITIES",
         [](Appointment &a) { a.ucCapabilities = u"{\"a\": \" \r\n\\n,;  \"}\n"_s; }},
        {"+X-PARLO-UC-CAPABILITIES", [](Appointment &a) { a.ucCapabilities = u""_s; }},
        {"+STATUS", [](Appointment &a) { a.status = u"TENTATIVE"_s; }},
        {"+SEQUENCE -SEQUENCE", [](Appointment &a) { a.sequence = 4; }},
        {"+STYLED-DESCRIPTION +X-ALT-DESC -X-ALT-DESC +DESCRIPTION -DESCRIPTION",
         [](Appointment &a) { a.bodyHtml = u"<p>a  b</p>\r\n<p>c,d;\\n</p> "_s; }},
        {"-X-ALT-DESC -DESCRIPTION", [](Appointment &a) { a.bodyHtml = QString(); }},
    };
    const QByteArray before = fixture(u"windows_zones.ics"_s);
    for (const auto &change : changes) {
        SCOPED_TRACE(change.lines);
        auto file = opened(before);
        Appointment wanted = *file->find(numbersUid);
        change.change(wanted);
        ASSERT_TRUE(file->update(wanted));
        QStringList expected = QString::fromLatin1(change.lines).split(u' ');
        expected += {u"+DTSTAMP"_s, u"-DTSTAMP"_s, u"+LAST-MODIFIED"_s, u"-LAST-MODIFIED"_s};
        expected.sort();
        EXPECT_EQ(changedNames(before, saved(*file)), expected);

        const Appointment read = *CalendarFile::open(path(), nullptr)->find(numbersUid);
        EXPECT_EQ(read.summary.isNull(), wanted.summary.isNull());
        EXPECT_EQ(read.ucCapabilities.isNull(), wanted.ucCapabilities.isNull());
        EXPECT_TRUE(read == wanted);
    }
}

TEST_F(ChangesTest, AttendeesAreReadWithTheirKindAndKeepUnknownParameters) {
    auto file = opened(fixture(u"windows_zones.ics"_s));
    Appointment changed = *file->find(numbersUid);
    const QList<Attendee> expected = {
        {u"Sample, Grace"_s, u"grace@parlo.example"_s, AttendeeType::Required},
        {u"Tomás Muster"_s, u"tomas@parlo.example"_s, AttendeeType::Optional},
        {u"Room 'Süd'"_s, u"room.sued@parlo.example"_s, AttendeeType::Resource}};
    EXPECT_EQ(changed.attendees, expected);
    changed.attendees[0].name = u"Grace"_s;
    ASSERT_TRUE(file->update(changed));
    EXPECT_TRUE(
        unfolded(saved(*file))
            .contains("ATTENDEE;CN=Grace;RSVP=TRUE;X-EXAMPLE-ROW=\"7:a;b\":mailto:grace@parlo.example"));
}

TEST_F(ChangesTest, BodiesAndRecordsOfOtherProgramsAreReadFromTheBestOfTheirForms) {
    auto file = opened(fixture(u"styled.ics"_s));
    const auto body = [&](const char *uid) { return file->find(QString::fromLatin1(uid))->bodyHtml; };
    EXPECT_EQ(body("styled"), u"<p>Styled</p>"_s);
    EXPECT_EQ(body("alternative"), u"<p>Only   the\nalternative</p>"_s);
    EXPECT_EQ(body("data-address"), u"<p>In the address</p>"_s);
    EXPECT_EQ(body("plain"), u"<html><body>1 &lt; 2 &amp; more<br>&nbsp;&nbsp;two blanks</body></html>"_s);
    EXPECT_TRUE(body("nothing").isNull());
    EXPECT_EQ(file->find(u"plain"_s)->ucCapabilities,
              u"{\"meetingKey\":\"7\",\"encodeMailBody\":\"x\\ny\","
              "\"joinUrl\":\"https:\\/\\/parlo.example\\/j?a=1;b\"}"_s);
    EXPECT_EQ(file->find(u"nothing"_s)->ucCapabilities,
              u"{\"meetingKey\":\"8\",\"joinUrl\":\"https://parlo.example\"}"_s);
    EXPECT_TRUE(file->find(u"styled"_s)->ucCapabilities.isNull());
}

TEST_F(ChangesTest, AWrittenBodyReplacesAllItsFormsAndNoOther) {
    auto file = opened(fixture(u"styled.ics"_s));
    for (const char *uid : {"styled", "data-address", "nothing"}) {
        Appointment changed = *file->find(QString::fromLatin1(uid));
        changed.bodyHtml = u"<p>New &amp; short</p>"_s;
        ASSERT_TRUE(file->update(changed));
    }
    const QByteArray text = unfolded(saved(*file));
    EXPECT_EQ(text.count("STYLED-DESCRIPTION;VALUE=URI:https://parlo.example/agenda\r\n"), 1);
    EXPECT_EQ(text.count("FMTTYPE=text/markdown:*Styled*\r\n"), 1);
    EXPECT_EQ(text.count(":<p>New &amp\\; short</p>\r\n"), 6);
    EXPECT_EQ(text.count(":New & short\r\n"), 3);
    EXPECT_FALSE(text.contains("Older twin"));
    EXPECT_TRUE(text.contains("data:text/html,%3Cp%3ENew%20%26amp%3B%20short%3C%2Fp%3E"));
}

TEST_F(ChangesTest, NoTextOfAnAppointmentCanAddALineToTheFile) {
    const QString evil = u"\r\rx\r\nATTACH:evil\nEND:VEVENT\r:\";,"_s;
    auto file = openedEvent("DTSTART:20250312T100000Z");
    Appointment changed = *file->find(u"one"_s);
    changed.summary = changed.location = changed.organizerName = changed.organizerEmail = evil;
    changed.recurrenceRule = changed.status = changed.start.zoneId = evil;
    changed.attendees = {{evil, evil, AttendeeType::Required}};
    ASSERT_TRUE(file->update(changed));
    const QByteArray text = saved(*file);
    EXPECT_FALSE(text.contains("\nATTACH"));
    EXPECT_EQ(text.count("\nEND:VEVENT"), 1);
    EXPECT_EQ(opened(text)->find(u"one"_s)->summary, evil);
}

TEST_F(ChangesTest, WhatPeopleReadIsReadFromEveryDialect) {
    const struct {
        const char *fixture;
        const char *uid;
        const char *summary;
        const char *location;
    } cases[] = {
        {"desktop.ics", "desktop-1", "lower case", ""},
        {"telephone.ics", "2C1F0E9A-TELEFON",
         "Frühstück für zwölf Gäste — größtenteils äußerst hungrig 🥐🥐🥐",
         "Café „Größenwahn“\nStraße der Ärzte 5, 10115 Köln"},
        {"script.ics", "script-1", "Grüße in Latin-1", "Zürich"},
    };
    for (const auto &test : cases) {
        auto file = opened(fixture(QString::fromLatin1(test.fixture)));
        const Appointment read = *file->find(QString::fromLatin1(test.uid));
        EXPECT_EQ(read.summary, QString::fromUtf8(test.summary));
        EXPECT_EQ(read.location, QString::fromUtf8(test.location)) << test.uid;
    }
}
