// Files as they are on disk: unreadable, hostile, linked.
#include "standin/mailhost/store/SampleCalendar.h"
#include "tests/mailhoststore/StoreFixture.h"

#include <QElapsedTimer>
#include <unistd.h>

using namespace mailhost;

namespace {

class DiskTest : public StoreTest {
protected:
    static void change(CalendarFile &file, const QString &summary) {
        Appointment changed = file.appointments().first();
        changed.summary = summary;
        ASSERT_TRUE(file.update(changed));
    }
};

} // namespace

TEST_F(DiskTest, WhatIsNoCalendarIsRefusedWithItsReasonAndLeftAlone) {
    const QByteArray sample = sampleCalendar(QDate(2025, 3, 12));
    const struct {
        QByteArray text;
        const char *reason;
    } cases[] = {
        {" \r\n\r\n", "is empty"},
        {"Dear all,\nplease find attached", "is not a calendar file"},
        {"BEGIN:VEVENT\nEND:VEVENT\n", "is not a calendar file"},
        {sample.left(sample.size() / 2), "ends in the middle"},
        {sample.left(sample.size() - 5), "ends in the middle"},
        {"BEGIN:VCALENDAR\nBEGIN:VEVENT\nEND:VTODO\nEND:VCALENDAR\n", "damaged at line 3"},
        {"BEGIN:VCALENDAR\nVERSION:1.0\nEND:VCALENDAR\n", "vCalendar 1.0"},
        {QByteArray("\xFF\xFE") + "B\0E\0", "UTF-16"},
        {"BEGIN:VCALENDAR\n" + QByteArray("BEGIN:X\n").repeated(100000), "nested too deeply"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.reason);
        write(test.text);
        QString error;
        EXPECT_FALSE(CalendarFile::open(path(), &error));
        EXPECT_TRUE(error.contains(QString::fromLatin1(test.reason))) << qPrintable(error);
        EXPECT_TRUE(error.contains(u"my.ics"_s));
        EXPECT_EQ(octets(path()), test.text);
    }
}

TEST_F(DiskTest, WhatCannotBeReadIsNamed) {
    QFile huge(path(u"huge.ics"_s));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(257LL * 1024 * 1024)); // sparse
    write("BEGIN:VCALENDAR\nEND:VCALENDAR\n", u"closed.ics"_s);
    QFile::setPermissions(path(u"closed.ics"_s), {});
    const std::pair<QString, QString> cases[] = {{path(u"missing.ics"_s), u"There is no file"_s},
                                                 {path(u"."_s), u"folder"_s},
                                                 {u"/dev/zero"_s, u"not a file"_s},
                                                 {huge.fileName(), u"256 MB"_s},
                                                 {path(u"closed.ics"_s), u"permission"_s}};
    for (const auto &[name, reason] : cases) {
        if (geteuid() == 0 && reason == u"permission"_s)
            continue; // every file is readable then
        QString error;
        EXPECT_FALSE(CalendarFile::open(name, &error));
        EXPECT_TRUE(error.contains(reason)) << qPrintable(error);
    }
}

TEST_F(DiskTest, PermissionsAndLinksSurviveASave) {
    auto file = opened(sampleCalendar(QDate(2025, 3, 12)));
    change(*file, u"Changed here"_s);
    const auto permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path(), permissions));
    ASSERT_TRUE(QFile::link(path(), path(u"link.ics"_s)));
    (void)saved(*file);
    EXPECT_EQ(QFile::permissions(path()) & QFileDevice::Permissions(0x7077),
              permissions & QFileDevice::Permissions(0x7077));
    auto linked = CalendarFile::open(path(u"link.ics"_s), nullptr);
    change(*linked, u"Through the link"_s);
    (void)saved(*linked);
    EXPECT_TRUE(QFileInfo(path(u"link.ics"_s)).isSymLink());
    EXPECT_TRUE(octets(path()).contains("Through the link"));
    EXPECT_EQ(QDir(QFileInfo(path()).path()).entryList(QDir::Files).size(), 2) << "nothing temporary is left";
}

// What a host does with a file. Damaged ones are the fuzz target's.
TEST_F(DiskTest, MonstersAreReadAndChangedInTime) {
    QElapsedTimer timer;
    timer.start();
    const QByteArray start = "DTSTART:20250312T100000Z\r\n";
    const QByteArray huge(300000, 'x');
    for (const QByteArray &lines : {
             start + "SUMMARY:" + huge,
             start + "SUMMARY" + QByteArray(";X=1").repeated(60000) + ":x",
             start + "SUMMARY:" + QByteArray("\r\n x").repeated(100000),
             start + "SUMMARY:" + QByteArray("\r").repeated(300000) + "x",
             start + "SUMMARY:" + QByteArray("\r ").repeated(150000) + "x",
             start + "ATTENDEE;CN=\"" + huge + ":mailto:a@b.example",
             start + QByteArray("ATTENDEE:mailto:same@x.example\r\n").repeated(20000) + "X:1",
             QByteArray("DTSTART;TZID=" + huge + ":00010101T000000\r\nRRULE:FREQ=DAILY"),
         }) {
        auto file = openedEvent(lines);
        (void)starts(*file, QDate(2025, 3, 10), 7);
        Appointment appointment = file->appointments().first();
        EXPECT_FALSE(file->itipMessage(appointment.uid, {}, false).contains('\0'));
        appointment.attendees.append({u"n"_s, u"n@x.example"_s, AttendeeType::Required});
        change(*file, appointment.summary + u'x');
        EXPECT_TRUE(file->update(appointment));
        EXPECT_TRUE(opened(saved(*file))) << "what was saved can be opened";
    }
    EXPECT_LT(timer.elapsed(), 60000); // quadratic ones take hours
}
