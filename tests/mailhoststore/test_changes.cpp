#include "standin/mailhost/store/TextValue.h"
#include "tests/mailhoststore/StoreFixture.h"

#include <functional>

using namespace mailhost;

namespace {

const QString numbersUid = u"numbers@example"_s;

struct FieldChange {
    const char *what;
    std::function<void(Appointment &)> change;
    QStringList lines; // without DTSTAMP and LAST-MODIFIED
};

QStringList both(const char *name) {
    return {u'+' + QString::fromLatin1(name), u'-' + QString::fromLatin1(name)};
}

class ChangesTest : public StoreTest {
protected:
    Appointment appointment(const QString &uid) {
        auto file = CalendarFile::open(path(), nullptr);
        return file->find(uid).value_or(Appointment());
    }
};

} // namespace

TEST_F(ChangesTest, EachFieldChangesItsOwnLinesOnlyAndIsReadBack) {
    const QList<FieldChange> changes = {
        {"summary", [](Appointment &a) { a.summary = u"x"_s; }, both("SUMMARY")},
        {"no summary", [](Appointment &a) { a.summary = QString(); }, {u"-SUMMARY"_s}},
        {"empty location", [](Appointment &a) { a.location = u""_s; }, both("LOCATION")},
        {"start", [](Appointment &a) { a.start.value = a.start.value.addSecs(-1800); }, both("DTSTART")},
        {"end", [](Appointment &a) { a.end.value = a.end.value.addSecs(1800); }, both("DTEND")},
        {"rule", [](Appointment &a) { a.recurrenceRule = u"FREQ=DAILY;COUNT=3"_s; }, {u"+RRULE"_s}},
        {"organizer", [](Appointment &a) { a.organizerName = u"Ada \"E\" Example"_s; }, both("ORGANIZER")},
        {"no organizer",
         [](Appointment &a) { a.organizerName = a.organizerEmail = QString(); },
         {u"-ORGANIZER"_s}},
        {"attendee gone", [](Appointment &a) { a.attendees.removeAt(1); }, {u"-ATTENDEE"_s}},
        {"attendee new",
         [](Appointment &a) {
             a.attendees.insert(1, {u"Mei, V."_s, u"mei@x.example"_s, {}});
         },
         {u"+ATTENDEE"_s}},
        {"attendee optional", [](Appointment &a) { a.attendees[0].type = AttendeeType::Optional; },
         both("ATTENDEE")},
        {"record",
         [](Appointment &a) { a.ucCapabilities = u"{\"a\": \" \r\n\\n,;  \"}\n"_s; },
         {u"+X-PARLO-UC-CAPABILITIES"_s}},
        {"empty record", [](Appointment &a) { a.ucCapabilities = u""_s; }, {u"+X-PARLO-UC-CAPABILITIES"_s}},
        {"status", [](Appointment &a) { a.status = u"TENTATIVE"_s; }, {u"+STATUS"_s}},
        {"sequence", [](Appointment &a) { a.sequence = 4; }, both("SEQUENCE")},
        {"body", [](Appointment &a) { a.bodyHtml = u"<p>a  b</p>\r\n<p>c,d;\\n</p> "_s; },
         QStringList{u"+STYLED-DESCRIPTION"_s} + both("X-ALT-DESC") + both("DESCRIPTION")},
        {"no body", [](Appointment &a) { a.bodyHtml = QString(); }, {u"-X-ALT-DESC"_s, u"-DESCRIPTION"_s}},
    };
    const QByteArray before = fixture(u"windows_zones.ics"_s);
    for (const FieldChange &change : changes) {
        SCOPED_TRACE(change.what);
        auto file = opened(before);
        Appointment wanted = *file->find(numbersUid);
        change.change(wanted);
        ASSERT_TRUE(file->update(wanted));
        QStringList expected = change.lines + both("DTSTAMP") + both("LAST-MODIFIED");
        expected.sort();
        EXPECT_EQ(changedNames(before, saved(*file)), expected);

        const Appointment read = appointment(numbersUid);
        EXPECT_TRUE(sameText(read.summary, wanted.summary));
        EXPECT_TRUE(sameText(read.ucCapabilities, wanted.ucCapabilities));
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
        QByteArray(saved(*file))
            .replace("\r\n ", "")
            .contains("ATTENDEE;CN=Grace;RSVP=TRUE;X-EXAMPLE-ROW=\"7:a;b\":mailto:grace@parlo.example"));
}

TEST_F(ChangesTest, TheBodyIsTakenFromTheBestOfItsForms) {
    auto file = opened(fixture(u"styled.ics"_s));
    const auto body = [&](const char *uid) { return file->find(QString::fromLatin1(uid))->bodyHtml; };
    EXPECT_EQ(body("styled"), u"<p>Styled</p>"_s);
    EXPECT_EQ(body("alternative"), u"<p>Only   the\nalternative</p>"_s);
    EXPECT_EQ(body("data-address"), u"<p>In the address</p>"_s);
    EXPECT_EQ(body("plain"), u"<html><body>1 &lt; 2 &amp; more<br>&nbsp;&nbsp;two blanks</body></html>"_s);
    EXPECT_TRUE(body("nothing").isNull());
}

TEST_F(ChangesTest, AWrittenBodyReplacesAllItsFormsAndNoOther) {
    auto file = opened(fixture(u"styled.ics"_s));
    for (const char *uid : {"styled", "data-address", "nothing"}) {
        Appointment changed = *file->find(QString::fromLatin1(uid));
        changed.bodyHtml = u"<p>New &amp; short</p>"_s;
        ASSERT_TRUE(file->update(changed));
    }
    QByteArray text = saved(*file);
    text.replace("\r\n ", "");
    EXPECT_EQ(text.count("STYLED-DESCRIPTION;VALUE=URI:https://parlo.example/agenda\r\n"), 1);
    EXPECT_EQ(text.count("FMTTYPE=text/markdown:*Styled*\r\n"), 1);
    EXPECT_EQ(text.count(":<p>New &amp\\; short</p>\r\n"), 6);
    EXPECT_EQ(text.count(":New & short\r\n"), 3);
    EXPECT_FALSE(text.contains("Older twin"));
    EXPECT_TRUE(text.contains("data:text/html,%3Cp%3ENew%20%26amp%3B%20short%3C%2Fp%3E"));
    EXPECT_EQ(appointment(u"data-address"_s).bodyHtml, u"<p>New &amp; short</p>"_s);
}

TEST_F(ChangesTest, TheRecordComesBackToTheLetter) {
    // What the fuzz target cannot make of octets.
    const QList<QString> records = {u" \t\r\n "_s, QString::fromUtf16(u"\0nul\0", 5),
                                    u"lone "_s + QChar(0xD800) + u" surrogate"_s};
    for (const QString &record : records) {
        auto file = openedEvent("DTSTART:20250312T100000Z");
        Appointment changed = *file->find(u"one"_s);
        changed.ucCapabilities = record;
        ASSERT_TRUE(file->update(changed));
        (void)saved(*file);
        EXPECT_EQ(appointment(u"one"_s).ucCapabilities, record);
    }
}

TEST_F(ChangesTest, ARecordThatAnotherProgramWroteAsTextIsRead) {
    auto file = opened(fixture(u"styled.ics"_s));
    EXPECT_EQ(file->find(u"plain"_s)->ucCapabilities,
              u"{\"meetingKey\":\"7\",\"encodeMailBody\":\"x\\ny\","
              "\"joinUrl\":\"https:\\/\\/parlo.example\\/j?a=1;b\"}"_s);
    EXPECT_EQ(file->find(u"nothing"_s)->ucCapabilities,
              u"{\"meetingKey\":\"8\",\"joinUrl\":\"https://parlo.example\"}"_s);
    EXPECT_TRUE(file->find(u"styled"_s)->ucCapabilities.isNull());
}

TEST_F(ChangesTest, NoTextOfAnAppointmentCanAddALineToTheFile) {
    const QString evil = u"x\r\nATTACH:evil\nEND:VEVENT\r:\";,"_s;
    auto file = openedEvent("DTSTART:20250312T100000Z");
    Appointment changed = *file->find(u"one"_s);
    changed.summary = changed.location = changed.organizerName = changed.organizerEmail = evil;
    changed.recurrenceRule = changed.status = changed.start.zoneId = evil;
    changed.attendees = {{evil, evil, AttendeeType::Required}};
    ASSERT_TRUE(file->update(changed));
    const QByteArray text = saved(*file);
    EXPECT_FALSE(text.contains("\nATTACH"));
    EXPECT_EQ(text.count("\nEND:VEVENT"), 1);
    ASSERT_TRUE(CalendarFile::open(path(), nullptr));
    EXPECT_EQ(appointment(u"one"_s).summary, evil);
}

TEST_F(ChangesTest, AddedAndRemovedAppointmentsLeaveTheOthersAlone) {
    const QByteArray before = fixture(u"series.ics"_s);
    auto file = opened(before);
    Appointment added;
    added.summary = u"New"_s;
    const QString uid = file->add(added);
    EXPECT_FALSE(uid.isEmpty());
    EXPECT_EQ(file->find(uid)->summary, added.summary);
    EXPECT_TRUE(file->find(uid)->location.isNull());
    const QByteArray components = file->componentsOf(uid);
    added = *file->find(uid);
    added.summary = u"Changed"_s;
    ASSERT_TRUE(file->update(added));
    EXPECT_EQ(file->find(uid)->summary, added.summary);
    ASSERT_TRUE(file->restore(uid, components));
    EXPECT_EQ(file->find(uid)->summary, u"New"_s);
    ASSERT_TRUE(file->remove(uid));
    EXPECT_FALSE(file->find(uid) || file->contains(uid, {}) || file->remove(uid) || file->update(added));
    EXPECT_EQ(saved(*file), before);
}
