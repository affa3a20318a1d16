#include "standin/mailhost/store/ItipMessage.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentComponent.h"

namespace mailhost {

namespace {

const QByteArray crlf = QByteArrayLiteral("\r\n");

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

} // namespace mailhost
