#include "standin/mailhost/store/AppointmentWriter.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlImporter.h"
#include "standin/mailhost/store/ConferenceLink.h"
#include "standin/mailhost/store/TextValue.h"

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;

void setText(Component &component, const QByteArray &name, const QString &text) {
    if (text.isNull())
        component.removeLines(name);
    else
        writeText(component.lineOrNew(name), text);
}

QByteArray addressOf(const QString &email) {
    const bool isAddress = email.startsWith(u"urn:"_s) || email.contains(u":/"_s);
    // Characters of mail addresses stay readable; others could end the line or mean something else.
    return (isAddress ? "" : "mailto:") + email.toUtf8().toPercentEncoding("@!$&'()*+,;=:/#[]{}|~^`");
}

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
    const bool known = !zones.unknownNames().contains(moment.zoneId);
    if (moment.kind == Kind::Zoned && moment.utc() != utc && !recurs && known)
        return {Kind::Utc, utc, {}, utcZone()};
    return moment;
}

void writeEnd(Component &component, const Appointment &appointment, ZoneTable &zones) {
    const Moment end = writableMoment(appointment.end, !appointment.recurrenceRule.isEmpty(), zones);
    ContentLine *duration = component.line("DURATION");
    const auto start = readMoment(component.line("DTSTART"), zones);
    if (!duration || !start || end.utc() < start->utc()) {
        component.removeLines("DURATION");
        writeMoment(component, "DTEND", end, zones);
        return;
    }
    const bool days = start->kind == Kind::Date;
    duration->setValue(
        durationText(days ? Span{(end.clock - start->clock) / 86400, 0} : Span{0, end.utc() - start->utc()}));
}

bool writeTimes(Component &component, const Appointment &was, const Appointment &is, ZoneTable &zones) {
    const bool startDiffers = !sameTime(was.start, is.start) && is.start.value.isValid();
    if (startDiffers)
        writeMoment(component, "DTSTART", writableMoment(is.start, !is.recurrenceRule.isEmpty(), zones),
                    zones);
    if (!is.end.value.isValid() || (!startDiffers && sameTime(was.end, is.end)))
        return startDiffers;
    // A DURATION moves with the start. The reader hides an end before the start.
    const auto written = readMoment(component.line("DTEND"), zones);
    const auto now = readTimes(component, zones);
    const CalendarTime implied = written ? written->calendarTime()
                                 : now   ? now->end.calendarTime()
                                         : CalendarTime();
    if (sameTime(implied, is.end))
        return startDiffers;
    writeEnd(component, is, zones);
    return true;
}

// ---- people

void writePerson(ContentLine &line, const Attendee &was, const Attendee &is) {
    if (was.name != is.name) {
        if (is.name.isEmpty())
            line.removeParameter("CN");
        else
            line.setParameter("CN", is.name);
    }
    if (was.email != is.email) {
        line.setValue(addressOf(is.email));
        line.removeParameter("EMAIL");
    }
}

void writeType(ContentLine &line, AttendeeType type) {
    if (type == AttendeeType::Resource) {
        line.setParameter("CUTYPE", u"RESOURCE"_s);
        line.setParameter("ROLE", u"NON-PARTICIPANT"_s);
        return;
    }
    line.setParameter("CUTYPE", u"INDIVIDUAL"_s);
    line.setParameter("ROLE", type == AttendeeType::Optional ? u"OPT-PARTICIPANT"_s : u"REQ-PARTICIPANT"_s);
}

ContentLine newAttendeeLine(const Attendee &attendee, const QByteArray &lineEnd) {
    ContentLine line = ContentLine::make("ATTENDEE", {}, lineEnd);
    writeType(line, attendee.type);
    line.setParameter("PARTSTAT", u"NEEDS-ACTION"_s);
    line.setParameter("RSVP", u"TRUE"_s);
    writePerson(line, {}, attendee);
    return line;
}

// The lines for the new list. Attendees who were there keep their line with its unknown parameters.
QList<ContentLine> attendeeLines(const Component &component, const QList<Attendee> &attendees) {
    struct Known {
        const ContentLine *line;
        Attendee attendee;
    };
    QMultiHash<QString, Known> known; // by address; of equal keys the last inserted is found first
    std::vector<const ContentLine *> lines = component.lines("ATTENDEE");
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        const Attendee attendee = readAttendee(**line);
        known.insert(attendee.email.toLower(), {*line, attendee});
    }
    QList<ContentLine> result;
    for (const Attendee &attendee : attendees) {
        const auto found = known.find(attendee.email.toLower());
        if (found == known.end()) {
            result.append(newAttendeeLine(attendee, component.lineEnd()));
            continue;
        }
        ContentLine line = *found->line;
        writePerson(line, found->attendee, attendee);
        if (found->attendee.type != attendee.type)
            writeType(line, attendee.type);
        result.append(line);
        known.erase(found);
    }
    return result;
}

void writeAttendees(Component &component, const QList<Attendee> &attendees) {
    const QList<ContentLine> lines = attendeeLines(component, attendees);
    // At the position of the first attendee line, so that other lines do not move.
    const auto isAttendee = [](const ComponentItem &item) {
        const auto *line = std::get_if<ContentLine>(&item);
        return line && line->name() == "ATTENDEE";
    };
    std::vector<ComponentItem> &items = component.items;
    const auto first = std::find_if(items.begin(), items.end(), isAttendee) - items.begin();
    const bool had = size_t(first) < items.size();
    std::erase_if(items, isAttendee);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (had)
            items.insert(items.begin() + first + i, lines[i]);
        else
            component.append(lines[i]);
    }
}

void writeOrganizer(Component &component, const Appointment &was, const Appointment &is) {
    if (is.organizerEmail.isEmpty()) {
        component.removeLines("ORGANIZER");
        return;
    }
    writePerson(component.lineOrNew("ORGANIZER"), {was.organizerName, was.organizerEmail, {}},
                {is.organizerName, is.organizerEmail, {}});
}

// ---- body

void writeHtmlLine(Component &component, const QByteArray &name, bool (*isBody)(const ContentLine &),
                   const QString &html) {
    for (ContentLine *line : component.lines(name)) {
        if (isBody(*line))
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
    const QString alternative = plain.parameter("ALTREP").value_or(QString());
    if (alternative.startsWith(u"data:text/html,"_s, Qt::CaseInsensitive))
        plain.setParameter("ALTREP",
                           u"data:text/html,"_s + QString::fromLatin1(html.toUtf8().toPercentEncoding()));
    writeHtmlLine(component, "STYLED-DESCRIPTION", isStyledBody, html);
    writeHtmlLine(component, "X-ALT-DESC", isHtml, html);
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

QString plainTextOf(const QString &html) {
    QString text = platform::plainTextOfHtml(html);
    text.replace(QChar(0x2028), u'\n');
    text.remove(QChar(0xFFFC)); // stands for an image
    while (text.endsWith(u'\n'))
        text.chop(1);
    return text;
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
    when(was.organizerName != is.organizerName || was.organizerEmail != is.organizerEmail,
         [&] { writeOrganizer(component, was, is); });
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

void touch(Component &component) {
    const QByteArray now = clockText(QDateTime::currentSecsSinceEpoch(), Kind::Utc);
    component.lineOrNew("LAST-MODIFIED").setValue(now);
    component.lineOrNew("DTSTAMP").setValue(now);
}

} // namespace mailhost
