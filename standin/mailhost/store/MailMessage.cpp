#include "standin/mailhost/store/MailMessage.h"

#include "platform/Literals.h"
#include "platform/services/storage/WholeFile.h"
#include "standin/mailhost/store/AppointmentWriter.h"
#include "standin/mailhost/store/MailText.h"

#include <QDir>
#include <QUuid>

namespace mailhost {

namespace {

const QByteArray crlf = QByteArrayLiteral("\r\n");

QString shownTime(const CalendarTime &time) {
    if (!time.value.isValid())
        return {};
    if (time.kind == CalendarTime::Kind::Date)
        return time.value.toString(u"dddd d MMMM yyyy"_s);
    const QString zone =
        time.kind == CalendarTime::Kind::Floating ? QString() : u' ' + time.value.timeZoneAbbreviation();
    return time.value.toString(u"dddd d MMMM yyyy HH:mm"_s) + zone;
}

QString messageText(const Appointment &appointment, bool cancel) {
    QString text = cancel ? u"This appointment has been cancelled.\n\n"_s : QString();
    text += u"Subject: %1\nStarts: %2\nEnds: %3\n"_s.arg(appointment.summary, shownTime(appointment.start),
                                                         shownTime(appointment.end));
    if (!appointment.location.isEmpty())
        text += u"Location: %1\n"_s.arg(appointment.location);
    return appointment.bodyHtml.isEmpty() ? text : text + u'\n' + plainTextOf(appointment.bodyHtml) + u'\n';
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
    mail += "Content-Transfer-Encoding: base64" + crlf + crlf;
    mail += base64Lines(messageText(appointment, cancel));
    mail +=
        "--" + boundary + crlf + "Content-Type: text/calendar; method=" + method + "; charset=UTF-8;" + crlf;
    mail += " component=VEVENT" + crlf + "Content-Transfer-Encoding: 8bit" + crlf + crlf;
    return mail + calendarText + crlf + "--" + boundary + "--" + crlf;
}

} // namespace

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
