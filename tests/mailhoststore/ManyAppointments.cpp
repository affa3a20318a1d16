#include "tests/mailhoststore/ManyAppointments.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/Zones.h"

namespace {

const char *const zoneNames[] = {"Europe/Berlin", "America/New_York", "Asia/Kolkata", "Europe/London"};
constexpr int perDay = 5;
constexpr int bodyLines = 40; // of about fifty characters: two kilobytes

QByteArray ruleOf(int i, const QDate &day) {
    const QByteArray until = "UNTIL=" + day.addDays(200).toString(u"yyyyMMdd"_s).toLatin1() + "T000000Z";
    const QByteArray rules[] = {"WEEKLY;" + until, "DAILY;COUNT=10", "MONTHLY;BYDAY=2TU;COUNT=24",
                                "WEEKLY;INTERVAL=2;BYDAY=TU,TH;" + until, "DAILY;COUNT=10"};
    if (i % 400 == 0)
        return "RRULE:FREQ=WEEKLY;BYDAY=MO,WE\r\n"; // for ever
    return i % 40 < 5 ? "RRULE:FREQ=" + rules[i % 40] + "\r\n" : QByteArray();
}

QByteArray body(int i) {
    QByteArray text = "DESCRIPTION:";
    for (int line = 0; line < bodyLines; ++line)
        text += "Point " + QByteArray::number(line) + " of appointment " + QByteArray::number(i) +
                "\\, with some words.\\n\r\n ";
    return text + "\r\n";
}

QByteArray event(int i, const QDate &day, const QByteArray &rule, const QByteArray &changedDay) {
    const QByteArray date = day.toString(u"yyyyMMdd"_s).toLatin1();
    const QByteArray zone = zoneNames[i % 4];
    const QByteArray hour = QByteArray::number(8 + i % 9).rightJustified(2, '0');
    QByteArray text =
        "BEGIN:VEVENT\r\nUID:" + QByteArray::number(i) + "@many\r\nDTSTAMP:20250101T000000Z\r\n";
    text += "DTSTART;TZID=" + zone + ':' + date + 'T' + hour + "0000\r\nDTEND;TZID=" + zone + ':' + date +
            'T' + hour + "4500\r\nSUMMARY:Appointment " + QByteArray::number(i) + "\r\nLOCATION:Room 7\r\n";
    text += changedDay.isEmpty() ? rule : "RECURRENCE-ID;TZID=" + zone + ':' + changedDay + "\r\n";
    text += "ORGANIZER;CN=Ada Example:mailto:ada@parlo.example\r\n"
            "ATTENDEE;CN=Grace;PARTSTAT=ACCEPTED:mailto:grace@parlo.example\r\n"
            "ATTENDEE;CN=Tomas;PARTSTAT=TENTATIVE:mailto:tomas@parlo.example\r\n";
    return text + body(i) + "X-OTHER;X-P=1:kept\r\nEND:VEVENT\r\n";
}

} // namespace

QByteArray manyAppointments(int count, const QDate &around) {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Parlo//Many//EN\r\n";
    for (const char *zone : zoneNames)
        if (const auto component = mailhost::makeTimezoneComponent(QString::fromLatin1(zone), "\r\n"))
            component->appendText(text);
    const QDate first = around.addDays(-count / perDay + 120);
    int made = 0;
    for (int i = 0; made < count; ++i) {
        const QDate day = first.addDays(i / perDay);
        const QByteArray rule = ruleOf(i, day);
        text += event(i, day, rule, {});
        ++made;
        if (rule.isEmpty() || i % 3 != 0 || made == count)
            continue;
        const QByteArray hour = QByteArray::number(8 + i % 9).rightJustified(2, '0');
        text += event(i, day.addDays(1), rule, day.toString(u"yyyyMMdd"_s).toLatin1() + 'T' + hour + "0000");
        ++made;
    }
    return text + "END:VCALENDAR\r\n";
}
