#include "standin/mailhost/store/Zones.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/TextValue.h"

#include <QDateTime>
#include <QRegularExpression>
#include <libical/ical.h>

namespace mailhost {

namespace {

// libical expands a zone's changes up to the year that is asked for: a hostile date must not make that long.
constexpr Seconds earliestChange = -11644473600; // 1601
constexpr Seconds latestChange = 7258118400;     // 2200
constexpr int mostObservances = 400;

// One STANDARD or DAYLIGHT, reduced to lines that cannot make libical fail or run long. Empty if it is not
// usable.
QByteArray cleanObservance(const Component &observance) {
    static const QRegularExpression offset(u"^[+-]\\d{4}(\\d{2})?$"_s);
    static const QRegularExpression yearly(u"^(?=.*FREQ=YEARLY)[=;,A-Z0-9+-]*$"_s);
    QByteArray out = "BEGIN:" + observance.name + "\r\n";
    for (const char *name : {"TZOFFSETFROM", "TZOFFSETTO"}) {
        const ContentLine *line = observance.line(name);
        const QByteArray value = line ? line->value().trimmed() : QByteArray();
        if (!offset.match(QString::fromLatin1(value)).hasMatch())
            return {};
        out += QByteArray(name) + ':' + value + "\r\n";
    }
    const ContentLine *start = observance.line("DTSTART");
    const auto onset = start ? parseClock(start->value()) : std::nullopt;
    if (!onset || onset->kind == CalendarTime::Kind::Date)
        return {};
    out += "DTSTART:" + clockText(qMax(onset->clock, earliestChange), CalendarTime::Kind::Floating) + "\r\n";
    if (const ContentLine *rule = observance.line("RRULE")) {
        const QByteArray value = rule->value().trimmed().toUpper();
        if (value.size() > 200 || !yearly.match(QString::fromLatin1(value)).hasMatch())
            return {};
        out += "RRULE:" + value + "\r\n";
    }
    for (const ContentLine *dates : observance.lines("RDATE")) {
        const auto values = dates->value().split(',');
        for (const QByteArray &value : values) {
            if (const auto date = parseClock(value))
                out += "RDATE:" + clockText(date->clock, CalendarTime::Kind::Floating) + "\r\n";
        }
    }
    return out + "END:" + observance.name + "\r\n";
}

// Null if it has no rules that can be used.
std::shared_ptr<const Zone> readTimezone(const Component &component, QTimeZone systemZone) {
    QByteArray text = "BEGIN:VTIMEZONE\r\nTZID:file\r\n";
    int observances = 0;
    for (const Component *observance : component.components()) {
        if ((observance->name != "STANDARD" && observance->name != "DAYLIGHT") ||
            observances >= mostObservances)
            continue;
        const QByteArray clean = cleanObservance(*observance);
        text += clean;
        observances += clean.isEmpty() ? 0 : 1;
    }
    if (observances == 0)
        return nullptr;
    prepareIcal();
    const std::shared_ptr<icaltimezone> zone(icaltimezone_new(),
                                             [](icaltimezone *zone) { icaltimezone_free(zone, 1); });
    icalcomponent *parsed = icalparser_parse_string((text + "END:VTIMEZONE\r\n").constData());
    if (!parsed || !icaltimezone_set_component(zone.get(), parsed)) { // else the zone owns it
        icalcomponent_free(parsed);
        return nullptr;
    }
    const ContentLine *location = component.line("X-LIC-LOCATION");
    if (!systemZone.isValid() && location)
        systemZone = systemZoneForTzid(readText(*location));
    return std::make_shared<Zone>(systemZone, zone);
}

QTimeZone namedZone(const QString &name) {
    const QByteArray id = name.toLatin1();
    if (QTimeZone::isTimeZoneIdAvailable(id))
        return QTimeZone(id);
    const QByteArray ofWindows = QTimeZone::windowsIdToDefaultIanaId(id);
    return ofWindows.isEmpty() ? QTimeZone() : QTimeZone(ofWindows);
}

} // namespace

int Zone::offsetAt(Seconds utc) const {
    if (!m_fileZone)
        return m_systemZone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(utc, Qt::UTC));
    icaltimetype time = icalTime(qBound(earliestChange, utc, latestChange));
    int daylight = 0;
    return icaltimezone_get_utc_offset_of_utc_time(m_fileZone.get(), &time, &daylight);
}

Seconds Zone::toUtc(Seconds clock) const {
    const int before = offsetAt(clock - daySeconds);
    if (offsetAt(clock - before) == before)
        return clock - before;
    const int after = offsetAt(clock + daySeconds);
    return offsetAt(clock - after) == after ? clock - after : clock - before;
}

QDateTime Zone::dateTime(Seconds utc) const {
    const QDateTime instant = QDateTime::fromSecsSinceEpoch(utc, Qt::UTC);
    const int offset = offsetAt(utc);
    if (m_systemZone.isValid() && m_systemZone.offsetFromUtc(instant) == offset)
        return instant.toTimeZone(m_systemZone);
    return instant.toTimeZone(QTimeZone(offset));
}

std::shared_ptr<const Zone> utcZone() {
    static const auto zone = std::make_shared<const Zone>(QTimeZone::utc());
    return zone;
}

std::shared_ptr<const Zone> localZone() {
    static QHash<QByteArray, std::shared_ptr<const Zone>> zones;
    auto &zone = zones[QTimeZone::systemTimeZoneId()];
    if (!zone)
        zone = std::make_shared<const Zone>(QTimeZone::systemTimeZone());
    return zone;
}

QTimeZone systemZoneForTzid(const QString &tzid) {
    QString name = tzid.trimmed();
    if (name.isEmpty() || name.size() > 200)
        return {};
    while (true) {
        const QTimeZone zone = namedZone(name);
        if (zone.isValid())
            return zone;
        const qsizetype slash = name.indexOf(u'/', name.startsWith(u'/') ? 1 : 0);
        if (!tzid.trimmed().startsWith(u'/') || slash < 0)
            return {};
        name = name.mid(slash + 1);
    }
}

ZoneTable::ZoneTable(Component &calendar)
    : m_calendar(calendar) {
    for (const Component *component : calendar.components()) {
        const ContentLine *tzid = component->name == "VTIMEZONE" ? component->line("TZID") : nullptr;
        if (tzid && !m_components.contains(readText(*tzid)))
            m_components.insert(readText(*tzid), component);
    }
}

std::shared_ptr<const Zone> ZoneTable::zone(const QString &tzid) {
    auto &zone = m_zones[tzid];
    if (zone)
        return zone;
    const QTimeZone systemZone = systemZoneForTzid(tzid);
    if (const Component *component = m_components.value(tzid))
        zone = readTimezone(*component, systemZone);
    if (!zone && systemZone.isValid())
        zone = std::make_shared<const Zone>(systemZone);
    if (!zone)
        zone = localZone();
    return zone;
}

void ZoneTable::ensureComponent(const QString &tzid) {
    if (m_components.contains(tzid))
        return;
    auto component = makeTimezoneComponent(tzid, m_calendar.lineEnd());
    if (!component)
        return;
    m_components.insert(tzid, component.get());
    // Before the appointments.
    const auto position =
        std::find_if(m_calendar.items.begin(), m_calendar.items.end(), [](const ComponentItem &item) {
            return item.component && item.component->name != "VTIMEZONE";
        });
    m_calendar.items.insert(position, {{}, std::move(component)});
}

} // namespace mailhost
