#include "standin/mailhost/store/ItipMessage.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentReader.h"

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

// The component for the attendees: without alarms and private field, with a new DTSTAMP.
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

} // namespace

QByteArray itipMessage(const Component &component, ZoneTable &zones, bool cancel) {
    QByteArray out =
        "BEGIN:VCALENDAR" + crlf + "VERSION:2.0" + crlf + "PRODID:-//Parlo//Stand-in calendar//EN" + crlf;
    out += QByteArray("METHOD:") + (cancel ? "CANCEL" : "REQUEST") + crlf;
    const QStringList names = zoneNames(component);
    for (const QString &name : names) {
        const Component *known = zones.component(name);
        const auto made = known ? nullptr : makeTimezoneComponent(name, crlf);
        if (known || made)
            appendRefolded(known ? *known : *made, out);
    }
    appendForReceivers(component, cancel, out);
    out += "END:VCALENDAR" + crlf;
    out.replace('\0', ""); // not allowed in mail
    return out;
}

} // namespace mailhost
