// Dates, clock times and durations as a calendar file writes them, without zones.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include <QByteArray>

struct icaltimetype;

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
// As in a rule: "MO" to "SU".
[[nodiscard]] QByteArray weekdayOf(const QDate &date);

// The kind by the text alone: Date, Utc, or Floating for a clock time. A parameter may add a zone.
struct ClockTime {
    CalendarTime::Kind kind = CalendarTime::Kind::Floating;
    Seconds clock = 0;
};
// Reads "19970714", "19970714T133000" or "19970714T133000Z" of the years 1 to 9999.
[[nodiscard]] std::optional<ClockTime> parseClock(const QByteArray &text);
[[nodiscard]] QByteArray clockText(Seconds clock, CalendarTime::Kind kind);
[[nodiscard]] QByteArray utcNow();

// Call it before the first use of libical, which then returns errors in the data and does not abort the
// process.
void prepareIcal();
// The same for libical, which has no zone then: a clock time, or an instant where it takes UTC.
[[nodiscard]] icaltimetype icalTime(Seconds seconds);
// No value for a day that does not exist, which a rule in a damaged file may give.
[[nodiscard]] std::optional<Seconds> secondsOf(const icaltimetype &time);

// A length of time: days of the calendar first, then exact seconds.
struct Span {
    Seconds days = 0;
    Seconds seconds = 0;
};
// Reads "P1D", "PT1H30M", "P2W". No value for other texts; an empty span for a negative duration.
[[nodiscard]] std::optional<Span> parseDuration(const QByteArray &text);
[[nodiscard]] QByteArray durationText(const Span &span);

} // namespace mailhost
