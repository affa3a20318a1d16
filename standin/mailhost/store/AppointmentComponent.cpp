#include "standin/mailhost/store/AppointmentComponent.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlImporter.h"
#include "standin/mailhost/store/ConferenceLink.h"
#include "standin/mailhost/store/TextValue.h"

#include <QUrl>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;

const QString htmlDataAddress = u"data:text/html,"_s;

// ---- times

void writeMoment(Component &component, const QByteArray &name, const Moment &moment, ZoneTable &zones) {
    ContentLine &line = component.lineOrNew(name);
    if (moment.kind == Kind::Date)
        line.setParameter("VALUE", u"DATE"_s);
    else
        line.removeParameter("VALUE");
    if (moment.kind != Kind::Zoned)
        line.removeParameter("TZID");
    else if (line.parameter("TZID") != moment.zoneId)
        line.setParameter("TZID", moment.zoneId);
    line.setValue(clockText(moment.clock, moment.kind));
    if (moment.kind == Kind::Zoned)
        zones.ensureComponent(moment.zoneId); // last, because it is slow
}

// In the hour that a clock shows twice only UTC is unambiguous. A series keeps its zone, which its other days
// need, and so does an appointment in an unknown zone, whose rules are not known here.
Moment writableMoment(const CalendarTime &time, bool recurs, ZoneTable &zones) {
    Moment moment = momentOf(time, zones);
    const Seconds utc = time.value.toSecsSinceEpoch();
    const bool known = moment.zone != localZone();
    if (moment.kind == Kind::Zoned && moment.utc() != utc && !recurs && known)
        return {Kind::Utc, utc, {}, utcZone()};
    return moment;
}

void writeEnd(Component &component, const Moment &end, ZoneTable &zones) {
    ContentLine *duration = component.line("DURATION");
    const auto start = readMoment(component.line("DTSTART"), zones);
    if (!duration || !start || end.utc() < start->utc()) {
        component.removeLines("DURATION");
        writeMoment(component, "DTEND", end, zones);
    } else if (start->kind == Kind::Date) {
        duration->setValue(durationText({(end.clock - start->clock) / daySeconds, 0}));
    } else {
        duration->setValue(durationText({0, end.utc() - start->utc()}));
    }
}

bool writeTimes(Component &component, const Appointment &was, const Appointment &is, ZoneTable &zones) {
    const bool recurs = !is.recurrenceRule.isEmpty();
    const bool startDiffers = was.start != is.start && is.start.value.isValid();
    if (startDiffers)
        writeMoment(component, "DTSTART", writableMoment(is.start, recurs, zones), zones);
    if (!is.end.value.isValid() || (!startDiffers && was.end == is.end))
        return startDiffers;
    // A DURATION moves with the start. The reader hides an end before the start.
    auto implied = readMoment(component.line("DTEND"), zones);
    if (const auto times = readTimes(component, zones); !implied && times)
        implied = times->end;
    if (implied && implied->calendarTime() == is.end)
        return startDiffers;
    writeEnd(component, writableMoment(is.end, recurs, zones), zones);
    return true;
}

// ---- people

QByteArray addressOf(const QString &email) {
    const bool isAddress = email.startsWith(u"urn:"_s) || email.contains(u":/"_s);
    // Characters of mail addresses stay readable; others could end the line or mean something else.
    return (isAddress ? "" : "mailto:") + email.toUtf8().toPercentEncoding("@!$&'()*+,;=:/#[]{}|~^`");
}

AttendeeType readType(const ContentLine &line) {
    const QString role = line.parameter("ROLE").value_or(QString()).toUpper();
    const QString kind = line.parameter("CUTYPE").value_or(QString()).toUpper();
    if (kind == u"RESOURCE"_s || kind == u"ROOM"_s)
        return AttendeeType::Resource;
    if (role == u"NON-PARTICIPANT"_s) // a person who is only informed, or a thing
        return kind.isEmpty() ? AttendeeType::Resource : AttendeeType::Optional;
    return role == u"OPT-PARTICIPANT"_s ? AttendeeType::Optional : AttendeeType::Required;
}

void writeType(ContentLine &line, AttendeeType type) {
    static const QString roles[] = {u"REQ-PARTICIPANT"_s, u"OPT-PARTICIPANT"_s, u"NON-PARTICIPANT"_s};
    line.setParameter("CUTYPE", type == AttendeeType::Resource ? u"RESOURCE"_s : u"INDIVIDUAL"_s);
    line.setParameter("ROLE", roles[int(type)]);
}

// Of an ATTENDEE or ORGANIZER.
Attendee readPerson(const ContentLine &line) {
    Attendee person;
    person.name = line.parameter("CN").value_or(QString());
    person.type = readType(line);
    const QString address = decodeOctets(line.value()).trimmed();
    if (address.startsWith(u"mailto:"_s, Qt::CaseInsensitive))
        person.email = QUrl::fromPercentEncoding(address.mid(7).toUtf8());
    else
        person.email = line.parameter("EMAIL").value_or(address);
    return person;
}

void writePerson(ContentLine &line, const Attendee &is) {
    const Attendee was = readPerson(line);
    if (was.name != is.name && is.name.isEmpty())
        line.removeParameter("CN");
    else if (was.name != is.name)
        line.setParameter("CN", is.name);
    if (was.email != is.email) {
        line.setValue(addressOf(is.email));
        line.removeParameter("EMAIL");
    }
}

ContentLine newAttendeeLine(const Attendee &attendee, const QByteArray &lineEnd) {
    ContentLine line = ContentLine::make("ATTENDEE", {}, lineEnd);
    writeType(line, attendee.type);
    line.setParameter("PARTSTAT", u"NEEDS-ACTION"_s);
    line.setParameter("RSVP", u"TRUE"_s);
    writePerson(line, attendee);
    return line;
}

// Attendees who were there keep their line with its unknown parameters.
void writeAttendees(Component &component, const QList<Attendee> &attendees) {
    std::vector<ComponentItem> &items = component.items;
    const auto isAttendee = [](const ComponentItem &item) { return item.line.name() == "ATTENDEE"; };
    QHash<QString, QList<ContentLine>> known; // by address, the first one at the end
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (isAttendee(*item))
            known[readPerson(item->line).email.toLower()].append(item->line);
    }
    // At the position of the first attendee line, so that other lines do not move.
    auto position = std::find_if(items.begin(), items.end(), isAttendee);
    if (position == items.end())
        position = std::find_if(items.begin(), items.end(),
                                [](const ComponentItem &item) { return item.component != nullptr; });
    const auto first = position - items.begin();
    std::erase_if(items, isAttendee);
    std::vector<ComponentItem> written;
    for (const Attendee &attendee : attendees) {
        QList<ContentLine> &lines = known[attendee.email.toLower()];
        ContentLine line =
            lines.isEmpty() ? newAttendeeLine(attendee, component.lineEnd()) : lines.takeLast();
        writePerson(line, attendee);
        if (readType(line) != attendee.type)
            writeType(line, attendee.type);
        written.push_back({line, nullptr});
    }
    items.insert(items.begin() + first, std::make_move_iterator(written.begin()),
                 std::make_move_iterator(written.end()));
}

// ---- body

// Whether a STYLED-DESCRIPTION, or an X-ALT-DESC, holds the body as HTML. The former is preferred.
bool isHtmlBody(const ContentLine &line) {
    const QString type = line.parameter("FMTTYPE").value_or(QString()).trimmed();
    return type.startsWith(u"text/html"_s, Qt::CaseInsensitive) &&
           line.parameter("VALUE").value_or(u"TEXT"_s).toUpper() == u"TEXT"_s;
}

// Whether the line has the HTML in the address of its alternative.
bool hasHtmlAddress(const ContentLine &line) {
    return line.parameter("ALTREP").value_or(QString()).startsWith(htmlDataAddress, Qt::CaseInsensitive);
}

QString htmlFromPlain(const QString &text) {
    QString html = text.toHtmlEscaped();
    html.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    html.replace(u"  "_s, u" &nbsp;"_s).replace(u"\n "_s, u"\n&nbsp;"_s).replace(u'\n', u"<br>"_s);
    return u"<html><body>%1</body></html>"_s.arg(html);
}

// Null if the component has none.
QString readBody(const Component &component) {
    for (const char *name : {"STYLED-DESCRIPTION", "X-ALT-DESC"}) {
        for (const ContentLine *line : component.lines(name)) {
            if (isHtmlBody(*line))
                return readText(*line);
        }
    }
    const ContentLine *plain = component.line("DESCRIPTION");
    if (!plain)
        return {};
    if (!hasHtmlAddress(*plain))
        return htmlFromPlain(readText(*plain));
    const QString encoded = plain->parameter("ALTREP")->mid(htmlDataAddress.size());
    return decodeOctets(QByteArray::fromPercentEncoding(encoded.toUtf8()));
}

void writeHtml(Component &component, const QByteArray &name, const QString &html) {
    for (ContentLine *line : component.lines(name)) {
        if (isHtmlBody(*line))
            return writeText(*line, html);
    }
    ContentLine &line = component.append(ContentLine::make(name, {}, component.lineEnd()));
    if (name == "STYLED-DESCRIPTION")
        line.setParameter("VALUE", u"TEXT"_s);
    line.setParameter("FMTTYPE", u"text/html"_s);
    writeText(line, html);
}

void writeBody(Component &component, const QString &html) {
    if (html.isNull()) {
        for (const char *name : {"STYLED-DESCRIPTION", "X-ALT-DESC", "DESCRIPTION"})
            component.removeLines(name);
        return;
    }
    const bool hadPlain = component.line("DESCRIPTION");
    ContentLine &plain = component.lineOrNew("DESCRIPTION");
    if (!hadPlain)
        plain.setParameter("DERIVED", u"TRUE"_s);
    writeText(plain, plainTextOf(html));
    if (hasHtmlAddress(plain))
        plain.setParameter("ALTREP",
                           htmlDataAddress + QString::fromLatin1(html.toUtf8().toPercentEncoding()));
    writeHtml(component, "STYLED-DESCRIPTION", html);
    writeHtml(component, "X-ALT-DESC", html);
}

// ---- other values

void setText(Component &component, const QByteArray &name, const QString &text) {
    if (text.isNull())
        component.removeLines(name);
    else
        writeText(component.lineOrNew(name), text);
}

void writeRule(Component &component, const QString &rule) {
    if (!rule.isEmpty()) {
        component.lineOrNew("RRULE").setValue(rule.toUtf8());
        return;
    }
    // An appointment that no longer repeats must not take place on single days either.
    for (const char *name : {"RRULE", "RDATE", "EXRULE", "EXDATE"})
        component.removeLines(name);
}

} // namespace

QString textOf(const Component &component, const QByteArray &name) {
    const ContentLine *line = component.line(name);
    return line ? readText(*line) : QString();
}

QString uidOf(const Component &component) {
    return textOf(component, "UID").trimmed();
}

QString recurrenceIdOf(const Component &component) {
    const ContentLine *line = component.line("RECURRENCE-ID");
    return line ? decodeOctets(line->value()).trimmed() : QString();
}

Appointment readAppointment(const Component &component, ZoneTable &zones) {
    Appointment appointment;
    appointment.uid = textOf(component, "UID");
    appointment.recurrenceId = recurrenceIdOf(component);
    appointment.summary = textOf(component, "SUMMARY");
    appointment.location = textOf(component, "LOCATION");
    if (const auto times = readTimes(component, zones)) {
        appointment.start = times->start.calendarTime();
        appointment.end = times->end.calendarTime();
    }
    if (const ContentLine *line = component.line("RRULE"))
        appointment.recurrenceRule = decodeOctets(line->value());
    if (const ContentLine *line = component.line("ORGANIZER")) {
        const Attendee organizer = readPerson(*line);
        appointment.organizerName = organizer.name;
        appointment.organizerEmail = organizer.email;
    }
    for (const ContentLine *line : component.lines("ATTENDEE"))
        appointment.attendees.append(readPerson(*line));
    appointment.bodyHtml = readBody(component);
    if (const ContentLine *line = component.line(ucCapabilitiesProperty))
        appointment.ucCapabilities = readRecord(*line);
    appointment.status = textOf(component, "STATUS").trimmed().toUpper();
    appointment.sequence = textOf(component, "SEQUENCE").trimmed().toInt();
    return appointment;
}

bool writeAppointment(Component &component, const Appointment &is, ZoneTable &zones) {
    const Appointment was = readAppointment(component, zones);
    bool changed = writeTimes(component, was, is, zones);
    const auto when = [&](bool differs, auto &&write) {
        if (differs)
            write();
        changed = changed || differs;
    };
    when(!sameText(was.summary, is.summary), [&] { setText(component, "SUMMARY", is.summary); });
    when(!sameText(was.location, is.location), [&] { setText(component, "LOCATION", is.location); });
    when(was.recurrenceRule != is.recurrenceRule, [&] { writeRule(component, is.recurrenceRule); });
    when(was.organizerName != is.organizerName || was.organizerEmail != is.organizerEmail, [&] {
        if (is.organizerEmail.isEmpty())
            component.removeLines("ORGANIZER");
        else
            writePerson(component.lineOrNew("ORGANIZER"), {is.organizerName, is.organizerEmail, {}});
    });
    when(was.attendees != is.attendees, [&] { writeAttendees(component, is.attendees); });
    when(!sameText(was.bodyHtml, is.bodyHtml), [&] { writeBody(component, is.bodyHtml); });
    when(!sameText(was.ucCapabilities, is.ucCapabilities), [&] {
        if (is.ucCapabilities.isNull())
            component.removeLines(ucCapabilitiesProperty);
        else
            writeRecord(component.lineOrNew(ucCapabilitiesProperty), is.ucCapabilities);
    });
    if (!sameText(was.location, is.location) || !sameText(was.ucCapabilities, is.ucCapabilities))
        writeConferenceLink(component, joinLink(is.location, is.ucCapabilities));
    when(was.status != is.status,
         [&] { setText(component, "STATUS", is.status.isEmpty() ? QString() : is.status); });
    when(was.sequence != is.sequence, [&] { setText(component, "SEQUENCE", QString::number(is.sequence)); });
    return changed;
}

QString plainTextOf(const QString &html) {
    QString text = platform::plainTextOfHtml(html);
    text.replace(QChar(0x2028), u'\n');
    text.remove(QChar(0xFFFC)); // stands for an image
    while (text.endsWith(u'\n'))
        text.chop(1);
    return text;
}

} // namespace mailhost
