#include "standin/mailhost/store/TimeIndex.h"

#include <algorithm>
#include <limits>

namespace mailhost {

void TimeIndex::add(CalendarEntry *entry, Seconds start, Seconds end) {
    m_items.push_back({start, end, end, entry});
}

void TimeIndex::remove(const CalendarEntry *entry) {
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [entry](const Item &item) { return item.entry == entry; });
    if (found == m_items.end())
        return;
    const auto place = size_t(found - m_items.begin());
    m_items.erase(found);
    if (place < m_settled)
        --m_settled; // the latest ends behind it may now be too late: they only cost a few steps
}

void TimeIndex::settle() {
    if (m_settled == m_items.size())
        return;
    const auto earlier = [](const Item &a, const Item &b) { return a.start < b.start; };
    const auto added = m_items.begin() + std::ptrdiff_t(m_settled);
    std::sort(added, m_items.end(), earlier);
    std::inplace_merge(m_items.begin(), added, m_items.end(), earlier);
    Seconds latest = std::numeric_limits<Seconds>::min();
    for (Item &item : m_items)
        item.latestEnd = latest = std::max(latest, item.end);
    m_settled = m_items.size();
}

std::vector<CalendarEntry *> TimeIndex::overlapping(Seconds from, Seconds to) {
    settle();
    std::vector<CalendarEntry *> found;
    auto item = std::lower_bound(m_items.begin(), m_items.end(), to,
                                 [](const Item &a, Seconds start) { return a.start < start; });
    while (item != m_items.begin()) {
        --item;
        if (item->start < from && item->latestEnd <= from)
            break;
        if (item->start >= from || item->end > from)
            found.push_back(item->entry);
    }
    return found;
}

} // namespace mailhost
