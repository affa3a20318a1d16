#include "tests/mailhoststore/StoreFixture.h"

#include <QElapsedTimer>

using namespace mailhost;

namespace {

class HostileTest : public StoreTest {
protected:
    // What a host does with a file. Damaged ones are the fuzz target's.
    void useAll(const QByteArray &lines) const {
        auto file = openedEvent(lines);
        const QDateTime from = QDate(2025, 3, 10).startOfDay();
        (void)file->occurrences(from, from.addDays(7));
        Appointment appointment = file->appointments().first();
        EXPECT_FALSE(file->itipMessage(appointment.uid, {}, false).contains('\0'));
        appointment.summary += u'x';
        appointment.attendees.append({u"n"_s, u"n@x.example"_s, AttendeeType::Required});
        EXPECT_TRUE(file->update(appointment));
        EXPECT_TRUE(opened(saved(*file))) << "what was saved can be opened";
    }
};

} // namespace

TEST_F(HostileTest, MonstersAreReadInTime) {
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
             start + "SUMMARY:" + QByteArray(300000, char(0x80)),
             start + "SUMMARY:" + QByteArray(1000, '\0'),
             start + "ATTENDEE;CN=\"" + huge + ":mailto:a@b.example",
             start + QByteArray("ATTENDEE:mailto:same@x.example\r\n").repeated(20000) + "X:1",
             start + "DURATION:P" + QByteArray(100000, '9') + "W",
             start + "SEQUENCE:" + QByteArray(100000, '9'),
             start + "X-PARLO-UC-CAPABILITIES;ENCODING=BASE64:" + huge + "!",
             start + "DESCRIPTION;X-PARLO-CR=\"-1,99999999999999999999,3\":x",
             QByteArray("DTSTART;TZID=../../../etc/passwd:99991231T235959\r\nDTEND:99991231T235959Z"),
             QByteArray("DTSTART;TZID=" + huge + ":00010101T000000\r\nRRULE:FREQ=DAILY"),
         })
        useAll(lines);
    EXPECT_LT(timer.elapsed(), 60000); // quadratic ones take hours
}

TEST_F(HostileTest, RulesThatNeverEndDo) {
    QElapsedTimer timer;
    timer.start();
    for (const QByteArray &rule : {
             QByteArray("FREQ=SECONDLY"),
             QByteArray("FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"),
             QByteArray("FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=30"),
             QByteArray("FREQ=MINUTELY"),
             QByteArray("FREQ=HOURLY;COUNT=2000000000"),
             QByteArray("FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30"),
             QByteArray("FREQ=DAILY;INTERVAL=0"),
             QByteArray("FREQ=DAILY;INTERVAL=-1"),
             QByteArray("FREQ=DAILY;INTERVAL=99999999999999999999"),
             QByteArray("FREQ=DAILY;UNTIL=tomorrow"),
             QByteArray("FREQ=YEARLY;BYHOUR=0,1,2,3,4,5,6;BYMINUTE=1,2,3,4;BYSECOND=0,1,2,3,4,5,6,7,8,9"),
             QByteArray("FREQ=WEEKLY;BYDAY=99MO,-99TU,XX"),
             QByteArray("FREQ=MONTHLY;BYSETPOS=-366;BYDAY=MO"),
             QByteArray("FREQ=YEARLY;BYYEARDAY=" + QByteArray("1,").repeated(490)),
             QByteArray("RSCALE=HEBREW;FREQ=YEARLY"),
             QByteArray("FREQ=DAILY;X=" + QByteArray(100000, 'x')),
             QByteArray("=;=;FREQ"),
         }) {
        for (const char *start : {"00010101T000000", "20250310T100000", "99991231T235959"}) {
            auto file = openedEvent("DTSTART:" + QByteArray(start) + "\r\nDURATION:PT1H\r\nRRULE:" + rule);
            const auto week =
                file->occurrences(QDate(2025, 3, 10).startOfDay(), QDate(2025, 3, 17).startOfDay());
            EXPECT_LE(week.size(), 11000) << rule.constData();
            const int least = QByteArray(start).startsWith("2025") ? 1 : 0; // the first day is always shown
            EXPECT_GE(week.size(), least) << rule.constData();
        }
    }
    EXPECT_LT(timer.elapsed(), 30000);
}

TEST_F(HostileTest, BrokenZoneRulesGiveWayToTheSystems) {
    for (const QByteArray &rules : {
             QByteArray(""),
             QByteArray("BEGIN:STANDARD\r\nEND:STANDARD\r\n"),
             QByteArray(
                 "BEGIN:STANDARD\r\nDTSTART:16010101T000000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0100\r\n"
                 "RRULE:FREQ=SECONDLY\r\nEND:STANDARD\r\n"),
             QByteArray("BEGIN:STANDARD\r\nDTSTART:yesterday\r\nTZOFFSETFROM:+99\r\nTZOFFSETTO:x\r\nEND:"
                        "STANDARD\r\n"),
         }) {
        auto file =
            opened("BEGIN:VCALENDAR\r\nBEGIN:VTIMEZONE\r\nTZID:Asia/Tokyo\r\n" + rules +
                   "END:VTIMEZONE\r\nBEGIN:VEVENT\r\nUID:one\r\nDTSTART;TZID=Asia/Tokyo:20250312T090000\r\n"
                   "END:VEVENT\r\nEND:VCALENDAR\r\n");
        EXPECT_EQ(file->find(u"one"_s)->start.value, QDateTime(QDate(2025, 3, 12), QTime(0, 0), Qt::UTC));
    }
}
