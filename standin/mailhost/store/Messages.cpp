#include "standin/mailhost/store/Messages.h"

#include "platform/Literals.h"
#include "platform/services/storage/WholeFile.h"
#include "standin/mailhost/store/AppointmentComponent.h"

#include <QDir>
#include <QRegularExpression>
#include <QUuid>

namespace mailhost {

namespace {

const QByteArray crlf = QByteArrayLiteral("\r\n");
constexpr qsizetype longestLine = 76;
constexpr qsizetype encodedWordOctets = 39; // 64 characters with the frame: fits behind the name of a header

// ---- calendar

QStringList zoneNames(const Component &component) {
    QStringList names;
    for (const ComponentItem &item : component.items) {
        const QString tzid = item.line.parameter("TZID").value_or(QString());
        if (!tzid.isEmpty() && !names.contains(tzid))
            names.append(tzid);
    }
    return names;
}

void appendRefolded(const Component &component, QByteArray &out) {
    out += component.begin.refolded(crlf).source();
    for (const ComponentItem &item : component.items) {
        if (item.component)
            appendRefolded(*item.component, out);
        else if (!item.line.name().isEmpty())
            out += item.line.refolded(crlf).source();
    }
    out += component.end.refolded(crlf).source();
}

// The component for the attendees: without alarms and private field, with a new DTSTAMP.
std::unique_ptr<Component> forReceivers(const Component &component, bool cancel) {
    auto copy = component.copy();
    std::erase_if(copy->items, [](const ComponentItem &item) {
        return item.line.name() == ucCapabilitiesProperty ||
               (item.component && item.component->name == "VALARM");
    });
    const auto set = [&](const QByteArray &name, const QByteArray &value) {
        copy->removeLines(name);
        copy->append(ContentLine::make(name, value, crlf));
    };
    set("SEQUENCE", QByteArray::number(textOf(component, "SEQUENCE").trimmed().toInt()));
    set("DTSTAMP", utcNow());
    if (cancel)
        set("STATUS", "CANCELLED");
    return copy;
}

// ---- headers (RFC 5322, RFC 2047): whole lines, folded

// On one line and without control characters.
QString oneLine(QString text) {
    for (QChar &c : text)
        c = c < u' ' || c == QChar(0x7F) ? u' ' : c;
    return text.trimmed();
}

// Encoded words, none of which ends within a character.
QList<QByteArray> encodedWords(const QString &text) {
    QList<QByteArray> words;
    const QByteArray octets = text.toUtf8();
    for (qsizetype begin = 0; begin < octets.size();) {
        qsizetype end = qMin(begin + encodedWordOctets, octets.size());
        while (end < octets.size() && (uchar(octets[end]) & 0xC0) == 0x80)
            --end;
        words.append("=?UTF-8?B?" + octets.mid(begin, end - begin).toBase64() + "?=");
        begin = end;
    }
    return words;
}

// The words of a header, encoded if they have one of the special characters, are not ASCII, look like encoded
// ones, or are longer than a line, which cannot be folded.
QList<QByteArray> headerWords(const QString &text, const QString &specials) {
    const auto words = text.split(u' ');
    const bool encode =
        text.contains(u"=?"_s) ||
        std::any_of(text.begin(), text.end(),
                    [&](QChar c) { return c >= QChar(0x80) || specials.contains(c); }) ||
        std::any_of(words.begin(), words.end(), [](const QString &word) { return word.size() > 60; });
    return encode ? encodedWords(text) : text.toLatin1().split(' ');
}

QByteArray foldedHeader(const QByteArray &name, const QList<QByteArray> &words) {
    QByteArray out = name + ':';
    qsizetype column = out.size();
    for (const QByteArray &word : words) {
        if (column + 1 + word.size() > longestLine && column > name.size() + 1) {
            out += "\r\n";
            column = 0;
        }
        out += ' ' + word;
        column += 1 + word.size();
    }
    return out + "\r\n";
}

QByteArray bareAddress(const QString &email) {
    static const QRegularExpression unsafe(u"[<> ,]"_s);
    return oneLine(email).remove(unsafe).toUtf8();
}

QByteArray addressHeader(const QByteArray &name, const QList<Attendee> &people) {
    QList<QByteArray> words;
    for (const Attendee &person : people) {
        if (!words.isEmpty())
            words.last() += ',';
        if (const QString display = oneLine(person.name); !display.isEmpty())
            words += headerWords(display, u"()<>[]:;@\\,.\""_s);
        words.append('<' + bareAddress(person.email) + '>');
    }
    return foldedHeader(name, words);
}

// A new identifier in the domain of the sender.
QByteArray messageId(const QString &senderEmail) {
    const QByteArray address = bareAddress(senderEmail);
    const qsizetype at = address.lastIndexOf('@');
    const QByteArray domain = at < 0 ? QByteArray() : address.mid(at + 1);
    return '<' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@' +
           (domain.isEmpty() ? "localhost" : domain) + '>';
}

// ---- parts

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

QString base64Lines(const QString &text) {
    const QByteArray octets = QString(text).replace(u'\n', u"\r\n"_s).toUtf8().toBase64();
    QString out;
    for (qsizetype begin = 0; begin < octets.size(); begin += longestLine)
        out += QString::fromLatin1(octets.mid(begin, longestLine)) + u'\n';
    return out;
}

QByteArray mailMessage(const Appointment &appointment, const QByteArray &calendarText, bool cancel) {
    static const QString parts = uR"(MIME-Version: 1.0
Content-Type: multipart/alternative;
 boundary="%1"

--%1
Content-Type: text/plain; charset=UTF-8
Content-Transfer-Encoding: base64

%2--%1
Content-Type: text/calendar; method=%3; charset=UTF-8;
 component=VEVENT
Content-Transfer-Encoding: 8bit

)"_s;
    const QString boundary = u"=_parlo_"_s + QUuid::createUuid().toString(QUuid::Id128);
    const QString method = cancel ? u"CANCEL"_s : u"REQUEST"_s;
    const QString subject = (cancel ? u"Cancelled: "_s : QString()) + appointment.summary;
    QByteArray mail = addressHeader("From", {{appointment.organizerName, appointment.organizerEmail, {}}});
    mail += addressHeader("To", appointment.attendees);
    mail += foldedHeader("Subject", headerWords(oneLine(subject), {}));
    mail += "Date: " + QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1() + "\r\n";
    mail += "Message-ID: " + messageId(appointment.organizerEmail) + "\r\n";
    mail += parts.arg(boundary, base64Lines(messageText(appointment, cancel)), method)
                .replace(u'\n', u"\r\n"_s)
                .toLatin1();
    return mail + calendarText + "\r\n--" + boundary.toLatin1() + "--\r\n";
}

} // namespace

QByteArray itipMessage(const Component &component, const ZoneTable &zones, bool cancel) {
    auto calendar = Component::makeCalendar(crlf);
    calendar->append(ContentLine::make("METHOD", cancel ? "CANCEL" : "REQUEST", crlf));
    for (const QString &name : zoneNames(component)) {
        const Component *known = zones.component(name);
        if (auto zone = known ? known->copy() : makeTimezoneComponent(name, crlf))
            calendar->items.push_back({{}, std::move(zone)});
    }
    calendar->items.push_back({{}, forReceivers(component, cancel)});
    QByteArray out;
    appendRefolded(*calendar, out);
    return out.replace('\0', ""); // not allowed in mail
}

QString writeImipMessage(const QString &outbox, const Appointment &appointment,
                         const QByteArray &calendarText, bool cancel, QString *error) {
    if (appointment.organizerEmail.isEmpty() || appointment.attendees.isEmpty()) {
        *error = u"“%1” has nobody to send it to. Add attendees first."_s.arg(appointment.summary);
        return {};
    }
    if (calendarText.isEmpty()) {
        *error = u"“%1” is not in the calendar. Save it before you send it."_s.arg(appointment.summary);
        return {};
    }
    const QString name = u"%1-%2-%3.eml"_s.arg(
        QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmss'.'zzz"_s),
        cancel ? u"cancel"_s : u"request"_s, QUuid::createUuid().toString(QUuid::Id128).left(8));
    const QString path = QDir(outbox).filePath(name);
    const QByteArray mail = mailMessage(appointment, calendarText, cancel);
    QString reason = u"the folder cannot be made"_s;
    if (QDir().mkpath(outbox) && platform::writeWholeFile(path, mail, &reason))
        return path;
    *error = u"The message cannot be written to “%1”: %2."_s.arg(outbox, reason);
    return {};
}

} // namespace mailhost
