// Computes the result of a drag on the grid. Works on values, without widgets.
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

// The dragged part and its position.
struct DragStart {
    Occurrence occurrence;
    Grip grip = Grip::Body;
    ClockPlace from;
    bool holdsBegin = true; // the dragged piece contains the appointment's beginning
};

// The new time of the appointment if the user releases it at `to`. Timed appointments snap to quarters of an
// hour and keep at least one; all-day appointments snap to days. A sideways drag keeps the clock time to the
// minute. A moved appointment keeps its length in seconds (all-day: in days). If it was dragged by its
// beginning, it begins within the day at `to`.
[[nodiscard]] TimeSpan draggedSpan(const DragStart &drag, const ClockPlace &to);

} // namespace mailhost
