// Keyboard navigation in the grid: from appointment to appointment, or along the clock on empty days. Works
// on values, without widgets.
#pragma once

#include "standin/mailhost/windows/grid/GridLayout.h"

#include <optional>

namespace mailhost {

struct GridPosition {
    int day = 0;
    int minute = 0;      // the clock time that sideways steps keep
    int occurrence = -1; // -1: a place on the clock
    bool allDay = false;
    friend bool operator==(const GridPosition &a, const GridPosition &b) = default;
};

enum class WalkStep { Up, Down, Left, Right, First, Last };

class GridNavigator {
public:
    GridNavigator() = default;
    GridNavigator(const GridLayout &layout, int days);

    // No value if the step leaves the shown days.
    [[nodiscard]] std::optional<GridPosition> step(WalkStep step, const GridPosition &from) const;
    // The occurrence of the day nearest to that time; the place on the clock if the day is empty.
    [[nodiscard]] GridPosition arriveAt(int day, int minute, bool allDay, int exceptOccurrence = -1) const;
    // The occurrences in reading order: by day, all-day ones first. Each once.
    [[nodiscard]] QList<int> readingOrder() const;

private:
    struct Stop {
        int occurrence = 0;
        int begin = 0;
        int end = 0;
        bool allDay = false;
    };
    [[nodiscard]] int indexOf(const GridPosition &place) const;
    [[nodiscard]] GridPosition placeOf(int day, const Stop &stop, int minute) const;
    [[nodiscard]] GridPosition above(const GridPosition &from) const;
    [[nodiscard]] GridPosition below(const GridPosition &from) const;
    QList<QList<Stop>> m_days;
};

} // namespace mailhost
