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

// What was taken hold of, and where.
struct DragStart {
    Occurrence occurrence;
    Grip grip = Grip::Body;
    ClockPlace from;
    bool holdsBegin = true; // it was taken by the piece that has the appointment's begin
};

// When the appointment takes place if it is let go at `to`. Timed ones snap to quarters of an hour and keep
// at least one; all-day ones to days. A drag to the side alone keeps the clock time to the minute. The length
// of a moved one is kept in seconds (in days, when it is all-day). One that was held by its begin begins
// within the day at `to`.
[[nodiscard]] TimeSpan draggedSpan(const DragStart &drag, const ClockPlace &to);

} // namespace mailhost
