// What a drag on the grid means: pure values, no widgets.
#pragma once

#include "standin/mailhost/windows/grid/GridLayout.h"

namespace mailhost {

enum class Grip { Body, Begin, End };

struct TimeSpan {
    QDateTime start;
    QDateTime end;
    [[nodiscard]] qint64 seconds() const { return start.secsTo(end); }
    friend bool operator==(const TimeSpan &a, const TimeSpan &b) = default;
};

// When the appointment takes place if what was taken hold of at `from` is let go at `to`. Timed ones snap to
// quarters of an hour and keep at least one; all-day ones to days. A drag to the side alone keeps the clock
// time to the minute. The length of a moved one is kept in seconds (in days, when it is all-day). With
// `keepInDay` a moved one begins within the day at `to`.
[[nodiscard]] TimeSpan draggedSpan(const Occurrence &occurrence, Grip grip, const ClockPlace &from,
                                   const ClockPlace &to, bool keepInDay);

} // namespace mailhost
