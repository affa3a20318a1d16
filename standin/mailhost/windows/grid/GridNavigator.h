// Keyboard navigation in the grid: from appointment to appointment, or along the clock where there are none.
// Works on values, without widgets.
#pragma once

#include "standin/mailhost/windows/grid/GridLayout.h"

namespace mailhost {

struct GridPosition {
    int day = 0;
    int minute = 0;      // the clock time that sideways steps keep
    int occurrence = -1; // -1: a place on the clock
    bool allDay = false;
    friend bool operator==(const GridPosition &a, const GridPosition &b) = default;
};

enum class GridStep { Up, Down, First, Last };

// A step within the day.
[[nodiscard]] GridPosition stepped(const GridLayout &layout, GridStep step, const GridPosition &from);
// The appointment of that day that is nearest to that time; the place on the clock if the day is empty.
// Ignores the place's own appointment, because a sideways step within one bar is none.
[[nodiscard]] GridPosition arrivedAt(const GridLayout &layout, const GridPosition &place);

} // namespace mailhost
