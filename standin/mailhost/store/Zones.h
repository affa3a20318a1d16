// The time zones of calendar files.
#pragma once

#include "standin/mailhost/store/ClockTime.h"
#include "standin/mailhost/store/ComponentTree.h"

#include <QHash>
#include <QTimeZone>
#include <memory>

struct _icaltimezone;

namespace mailhost {

class Zone {
public:
    // Without a zone of a file: the system's rules.
    explicit Zone(const QTimeZone &systemZone, std::shared_ptr<_icaltimezone> fileZone = nullptr)
        : m_systemZone(systemZone)
        , m_fileZone(std::move(fileZone)) {}
    // Seconds east of UTC at that instant.
    [[nodiscard]] int offsetAt(Seconds utc) const;
    // The instant at which the clock shows that time, the first of two. A time that the clock skips is read
    // as if the clock had not been changed yet.
    [[nodiscard]] Seconds toUtc(Seconds clock) const;
    [[nodiscard]] Seconds toClock(Seconds utc) const { return utc + offsetAt(utc); }
    // The instant in the corresponding zone of the system. Where the file's rules differ from the system's,
    // the zone has a fixed offset, so that the clock time is always the file's.
    [[nodiscard]] QDateTime dateTime(Seconds utc) const;

private:
    QTimeZone m_systemZone; // invalid: the system has no corresponding zone
    std::shared_ptr<_icaltimezone> m_fileZone;
};

// The local zone follows the system's.
[[nodiscard]] std::shared_ptr<const Zone> utcZone();
[[nodiscard]] std::shared_ptr<const Zone> localZone();

// The system's zone for a TZID, which is the zone's own name, a Windows name, or either after a prefix such
// as
// "/freeassociation.sourceforge.net/". Invalid if the system does not know it.
[[nodiscard]] QTimeZone systemZoneForTzid(const QString &tzid);

// A VTIMEZONE under that TZID with the system's rules since 1970. Null when the system has no such zone.
// (TimezoneComponent.cpp)
[[nodiscard]] std::unique_ptr<Component> makeTimezoneComponent(const QString &tzid,
                                                               const QByteArray &lineEnd);

// The zones that one VCALENDAR can name.
class ZoneTable {
public:
    explicit ZoneTable(Component &calendar);
    // Never null: the VTIMEZONE of the file, else the system's zone, else localZone().
    [[nodiscard]] std::shared_ptr<const Zone> zone(const QString &tzid);
    // Adds a VTIMEZONE to the calendar if it has none of that name and the system knows the zone.
    void ensureComponent(const QString &tzid);
    // The VTIMEZONE of the calendar, null when it has none.
    [[nodiscard]] const Component *component(const QString &tzid) const { return m_components.value(tzid); }

private:
    Component &m_calendar;
    QHash<QString, const Component *> m_components;
    QHash<QString, std::shared_ptr<const Zone>> m_zones;
};

} // namespace mailhost
