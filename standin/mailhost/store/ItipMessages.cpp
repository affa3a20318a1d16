// Messages about an appointment: iTIP (RFC 5546), and its mail form iMIP (RFC 6047).
#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentReader.h"

#include "platform/services/storage/WholeFile.h"
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/MailText.h"
#include "standin/mailhost/store/TextValue.h"

#include <QDir>
#include <QUuid>

namespace mailhost {

namespace {

const QByteArray crlf = QByteArrayLiteral("\r\n");

QStringList zoneNames(const Component &component) {
    QStringList names;
    for (const ComponentItem &item : component.items) {
        const auto *line = std::get_if<ContentLine>(&item);
        const auto tzid = line ? line->parameter("TZID") : std::nullopt;
        if (tzid && !tzid->isEmpty() && !names.contains(*tzid))
            names.append(*tzid);
    }
    return names;
}

void appendRefolded(const Component &component, QByteArray &out) {
    out += component.begin.refolded(crlf).source();
    for (const ComponentItem &item : component.items) {
        if (const auto *inner = std::get_if<std::unique_ptr<Component>>(&item))
            appendRefolded(**inner, out);
        else if (const auto &line = std::get<ContentLine>(item); !line.name().isEmpty())
            out += line.refolded(crlf).source();
    }
    out += component.end.refolded(crlf).source();
}

// The component for its receivers: without the owner's alarms and without the private field, stamped now.
void appendForReceivers(const Component &component, bool cancel, QByteArray &out) {
    out += "BEGIN:VEVENT" + crlf;
    for (const ComponentItem &item : component.items) {
        const auto *line = std::get_if<ContentLine>(&item);
        if (!line) {
            const auto &inner = std::get<std::unique_ptr<Component>>(item);
            if (inner->name != "VALARM")
                appendRefolded(*inner, out);
            continue;
        }
        const QByteArray &name = line->name();
        const bool replaced = name == "DTSTAMP" || name == "SEQUENCE" || (cancel && name == "STATUS");
        if (!replaced && !name.isEmpty() && name != ucCapabilitiesProperty)
            out += line->refolded(crlf).source();
    }
    const ContentLine *sequence = component.line("SEQUENCE");
    out += "SEQUENCE:" + QByteArray::number(sequence ? sequence->value().trimmed().toInt() : 0) + crlf;
    out += "DTSTAMP:" + clockText(QDateTime::currentSecsSinceEpoch(), CalendarTime::Kind::Utc) + crlf;
    if (cancel)
        out += "STATUS:CANCELLED" + crlf;
    out += "END:VEVENT" + crlf;
}

QString shownTime(const CalendarTime &time) {
    if (!time.value.isValid())
        return {};
    if (time.kind == CalendarTime::Kind::Date)
        return time.value.toString(u"dddd d MMMM yyyy"_s);
    const QString zone =
        time.kind == CalendarTime::Kind::Floating ? QString() : u' ' + time.value.timeZoneAbbreviation();
    return time.value.toString(u"dddd d MMMM yyyy HH:mm"_s) + zone;
}

QString messageText(const Appointment &appointment, const QByteArray &calendarText, bool cancel) {
    QString text = cancel ? u"This appointment has been cancelled.\n\n"_s : QString();
    text += u"Subject: %1\nStarts: %2\nEnds: %3\n"_s.arg(appointment.summary, shownTime(appointment.start),
                                                         shownTime(appointment.end));
    if (!appointment.location.isEmpty())
        text += u"Location: %1\n"_s.arg(appointment.location);
    Document document;
    if (parseDocument(calendarText, &document).failure != ParseFailure::None)
        return text;
    for (const Component *component : document.calendars().front()->components()) {
        const ContentLine *description = component->line("DESCRIPTION");
        if (component->name == "VEVENT" && description)
            text += u'\n' + readText(*description) + u'\n';
    }
    return text;
}

QByteArray mailMessage(const Appointment &appointment, const QByteArray &calendarText, bool cancel) {
    const QByteArray boundary = "=_parlo_" + QUuid::createUuid().toByteArray(QUuid::Id128);
    const QByteArray method = cancel ? "CANCEL" : "REQUEST";
    const QString subject = (cancel ? u"Cancelled: "_s : QString()) + appointment.summary;
    QList<MailAddress> receivers;
    for (const Attendee &attendee : appointment.attendees)
        receivers.append({attendee.name, attendee.email});
    QByteArray mail = addressHeader("From", {{appointment.organizerName, appointment.organizerEmail}});
    mail += addressHeader("To", receivers);
    mail += textHeader("Subject", subject);
    mail += dateHeader(QDateTime::currentDateTime());
    mail += messageIdHeader(appointment.organizerEmail);
    mail += "MIME-Version: 1.0" + crlf;
    mail += "Content-Type: multipart/alternative;" + crlf + " boundary=\"" + boundary + '"' + crlf + crlf;
    mail += "--" + boundary + crlf + "Content-Type: text/plain; charset=UTF-8" + crlf;
    mail += "Content-Transfer-Encoding: quoted-printable" + crlf + crlf;
    mail += quotedPrintable(messageText(appointment, calendarText, cancel)) + crlf;
    mail +=
        "--" + boundary + crlf + "Content-Type: text/calendar; method=" + method + "; charset=UTF-8;" + crlf;
    mail += " component=VEVENT" + crlf + "Content-Transfer-Encoding: 8bit" + crlf + crlf;
    return mail + calendarText + crlf + "--" + boundary + "--" + crlf;
}

} // namespace

QByteArray CalendarFile::itipMessage(const QString &uid, const QString &recurrenceId, bool cancel) const {
    const CalendarEntry *entry = d->entry(uid, recurrenceId);
    if (!entry)
        return {};
    QByteArray out =
        "BEGIN:VCALENDAR" + crlf + "VERSION:2.0" + crlf + "PRODID:-//Parlo//Stand-in calendar//EN" + crlf;
    out += QByteArray("METHOD:") + (cancel ? "CANCEL" : "REQUEST") + crlf;
    const QStringList names = zoneNames(*entry->component);
    for (const QString &name : names) {
        const Component *known = d->zonesOf(entry->calendar).component(name);
        const auto made = known ? nullptr : makeTimezoneComponent(name, crlf);
        if (known || made)
            appendRefolded(known ? *known : *made, out);
    }
    if (entry->uidIsMade)
        return {}; // no receiver could answer it; the first change gives it its name
    appendForReceivers(*entry->component, cancel, out);
    out += "END:VCALENDAR" + crlf;
    out.replace('\0', ""); // mail may carry none
    return out;
}

QString writeImipMessage(const QString &outbox, const CalendarFile &calendar, const Appointment &appointment,
                         bool cancel, QString *error) {
    QString unheard;
    QString &sentence = error ? *error : unheard;
    if (appointment.organizerEmail.isEmpty() || appointment.attendees.isEmpty()) {
        sentence = u"“%1” has nobody to send it to. Add attendees first."_s.arg(appointment.summary);
        return {};
    }
    const QByteArray text = calendar.itipMessage(appointment.uid, appointment.recurrenceId, cancel);
    if (text.isEmpty()) {
        sentence = u"“%1” is not in the calendar. Save it before you send it."_s.arg(appointment.summary);
        return {};
    }
    const QString name = u"%1-%2-%3.eml"_s.arg(
        QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmss'.'zzz"_s),
        cancel ? u"cancel"_s : u"request"_s, QUuid::createUuid().toString(QUuid::Id128).left(8));
    const QString path = QDir(outbox).filePath(name);
    const QByteArray mail = mailMessage(appointment, text, cancel);
    QString reason = u"the folder cannot be made"_s;
    if (QDir().mkpath(outbox) && platform::writeWholeFile(path, mail, &reason))
        return path;
    sentence = u"The message cannot be written to “%1”: %2."_s.arg(outbox, reason);
    return {};
}

} // namespace mailhost
