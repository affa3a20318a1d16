// Dates and clock times as a calendar file writes them, without zones.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include <QByteArray>

namespace mailhost {

// Seconds since 1970-01-01 00:00. A clock time counts them on the zone's own clock.
using Seconds = qint64;
inline constexpr Seconds daySeconds = 86400;
inline constexpr qint64 epochDay = 2440588; // Julian day of 1970-01-01

[[nodiscard]] inline Seconds midnightOf(Seconds clock) {
    const Seconds rest = clock % daySeconds;
    return clock - (rest < 0 ? rest + daySeconds : rest);
}
[[nodiscard]] inline QDate dateOf(Seconds clock) {
    return QDate::fromJulianDay(midnightOf(clock) / daySeconds + epochDay);
}
[[nodiscard]] inline Seconds secondsOf(const QDate &date) {
    return (date.toJulianDay() - epochDay) * daySeconds;
}

// The kind by the text alone: Date, Utc, or Floating for a clock time. A parameter may add a zone.
struct ClockTime {
    CalendarTime::Kind kind = CalendarTime::Kind::Floating;
    Seconds clock = 0;
};
// Reads "19970714", "19970714T133000" or "19970714T133000Z" of the years 1 to 9999.
[[nodiscard]] std::optional<ClockTime> parseClock(const QByteArray &text);
[[nodiscard]] QByteArray clockText(Seconds clock, CalendarTime::Kind kind);

} // namespace mailhost
