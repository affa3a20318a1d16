// Points in time of content lines.
#pragma once

#include "standin/mailhost/store/Zones.h"

namespace mailhost {

// A point in time together with its clock.
struct Moment {
    CalendarTime::Kind kind = CalendarTime::Kind::Floating;
    Seconds clock = 0;
    QString zoneId;
    std::shared_ptr<const Zone> zone; // never null; local for floating times and dates

    [[nodiscard]] Seconds utc() const { return zone->toUtc(clock); }
    [[nodiscard]] CalendarTime calendarTime() const;
    [[nodiscard]] Moment after(const Span &span) const;
};

// The line's value (or one of its values) in the zone that the line names.
[[nodiscard]] std::optional<Moment> readMoment(const ContentLine &line, const QByteArray &value,
                                               ZoneTable &zones);
[[nodiscard]] std::optional<Moment> readMoment(const ContentLine *line, ZoneTable &zones);
// A zoned time without a zone name takes that of its value's zone; one of a nameless zone becomes UTC.
[[nodiscard]] Moment momentOf(const CalendarTime &time, ZoneTable &zones);

// DTSTART and DTEND (or DURATION, or what the format says for neither) of an appointment.
struct TimesOfComponent {
    Moment start;
    Moment end; // not before start
    Span span;  // between them, as it applies to every day of a series
};
[[nodiscard]] std::optional<TimesOfComponent> readTimes(const Component &component, ZoneTable &zones);

} // namespace mailhost
