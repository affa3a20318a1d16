// What takes place once, by time: a week is found without looking at every appointment.
#pragma once

#include "standin/mailhost/store/Zones.h"

#include <vector>

namespace mailhost {

struct CalendarEntry;

class TimeIndex {
public:
    // The entry must be removed before it dies.
    void add(CalendarEntry *entry, Seconds start, Seconds end);
    void remove(const CalendarEntry *entry);
    // What overlaps [from, to) or begins at `from`, the last first.
    [[nodiscard]] std::vector<CalendarEntry *> overlapping(Seconds from, Seconds to);

private:
    struct Item {
        Seconds start;
        Seconds end;
        Seconds latestEnd; // of this and all before it
        CalendarEntry *entry;
    };
    void settle();

    std::vector<Item> m_items;
    size_t m_settled = 0; // that many are in order; what was added since stands behind them
};

} // namespace mailhost
