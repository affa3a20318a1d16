#include "standin/mailhost/store/AppointmentReader.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/TextValue.h"

#include <QUrl>

namespace mailhost {

namespace {

const QString htmlType = u"text/html"_s;
const QString htmlDataAddress = u"data:text/html,"_s;

QString textOf(const Component &component, const QByteArray &name) {
    const ContentLine *line = component.line(name);
    return line ? readText(*line) : QString();
}

QString upperText(const Component &component, const QByteArray &name) {
    return textOf(component, name).trimmed().toUpper();
}

AttendeeType attendeeType(const ContentLine &line) {
    const QString role = line.parameter("ROLE").value_or(QString()).toUpper();
    const QString kind = line.parameter("CUTYPE").value_or(QString()).toUpper();
    if (kind == u"RESOURCE"_s || kind == u"ROOM"_s)
        return AttendeeType::Resource;
    if (role == u"NON-PARTICIPANT"_s) // a person who is only informed, or a thing
        return kind.isEmpty() ? AttendeeType::Resource : AttendeeType::Optional;
    return role == u"OPT-PARTICIPANT"_s ? AttendeeType::Optional : AttendeeType::Required;
}

QString htmlFromPlain(const QString &text) {
    QString html = text.toHtmlEscaped();
    html.replace(u"\r\n"_s, u"\n"_s);
    html.replace(u'\r', u'\n');
    html.replace(u"  "_s, u" &nbsp;"_s);
    html.replace(u"\n "_s, u"\n&nbsp;"_s);
    html.replace(u'\n', u"<br>"_s);
    return u"<html><body>%1</body></html>"_s.arg(html);
}

} // namespace

bool isHtml(const ContentLine &line) {
    return line.parameter("FMTTYPE").value_or(QString()).trimmed().startsWith(htmlType, Qt::CaseInsensitive);
}

bool isStyledBody(const ContentLine &line) {
    return isHtml(line) && line.parameter("VALUE").value_or(u"TEXT"_s).toUpper() == u"TEXT"_s;
}

QString readBody(const Component &component) {
    for (const ContentLine *line : component.lines("STYLED-DESCRIPTION")) {
        if (isStyledBody(*line))
            return readText(*line);
    }
    for (const ContentLine *line : component.lines("X-ALT-DESC")) {
        if (isHtml(*line))
            return readText(*line);
    }
    const ContentLine *plain = component.line("DESCRIPTION");
    if (!plain)
        return {};
    const QString alternative = plain->parameter("ALTREP").value_or(QString());
    if (alternative.startsWith(htmlDataAddress, Qt::CaseInsensitive)) {
        const QByteArray encoded = alternative.mid(htmlDataAddress.size()).toUtf8();
        return decodeOctets(QByteArray::fromPercentEncoding(encoded));
    }
    return htmlFromPlain(readText(*plain));
}

Attendee readAttendee(const ContentLine &line) {
    Attendee attendee;
    attendee.name = line.parameter("CN").value_or(QString());
    attendee.type = attendeeType(line);
    const QString address = decodeOctets(line.value()).trimmed();
    if (address.startsWith(u"mailto:"_s, Qt::CaseInsensitive))
        attendee.email = QUrl::fromPercentEncoding(address.mid(7).toUtf8());
    else
        attendee.email = line.parameter("EMAIL").value_or(address);
    return attendee;
}

Appointment readAppointment(const Component &component, ZoneTable &zones) {
    Appointment appointment;
    appointment.uid = textOf(component, "UID");
    if (const ContentLine *line = component.line("RECURRENCE-ID"))
        appointment.recurrenceId = decodeOctets(line->value()).trimmed();
    appointment.summary = textOf(component, "SUMMARY");
    appointment.location = textOf(component, "LOCATION");
    if (const auto times = readTimes(component, zones)) {
        appointment.start = times->start.calendarTime();
        appointment.end = times->end.calendarTime();
    }
    if (const ContentLine *line = component.line("RRULE"))
        appointment.recurrenceRule = decodeOctets(line->value());
    if (const ContentLine *line = component.line("ORGANIZER")) {
        const Attendee organizer = readAttendee(*line);
        appointment.organizerName = organizer.name;
        appointment.organizerEmail = organizer.email;
    }
    for (const ContentLine *line : component.lines("ATTENDEE"))
        appointment.attendees.append(readAttendee(*line));
    appointment.bodyHtml = readBody(component);
    if (const ContentLine *line = component.line(ucCapabilitiesProperty))
        appointment.ucCapabilities = readRecord(*line);
    appointment.status = upperText(component, "STATUS");
    appointment.sequence = upperText(component, "SEQUENCE").toInt();
    return appointment;
}

} // namespace mailhost
