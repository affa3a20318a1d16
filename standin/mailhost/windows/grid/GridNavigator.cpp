#include "standin/mailhost/windows/grid/GridNavigator.h"

#include "standin/mailhost/windows/grid/GridStyle.h"

#include <algorithm>
#include <cstdlib>

namespace mailhost {

namespace {

constexpr int clockStep = 30; // minutes over the clock

int roundedUp(int minute) {
    return (minute + clockStep - 1) / clockStep * clockStep;
}

GridPosition onTheClock(int day, int minute) {
    return {day, std::clamp(minute, 0, minutesPerDay - clockStep), -1, false};
}

} // namespace

GridNavigator::GridNavigator(const GridLayout &layout, int days)
    : m_days(days) {
    for (const DayBar &bar : layout.bars)
        for (int day = bar.firstDay; day <= bar.lastDay; ++day)
            m_days[day].append({bar.occurrence, 0, minutesPerDay, true});
    for (const TimedPiece &piece : layout.pieces)
        m_days[piece.day].append({piece.occurrence, piece.begin, piece.end, false});
}

int GridNavigator::indexOf(const GridPosition &place) const {
    const QList<Stop> &stops = m_days[place.day];
    for (int i = 0; i < stops.size(); ++i)
        if (place.occurrence >= 0 && stops[i].occurrence == place.occurrence)
            return i;
    return -1;
}

GridPosition GridNavigator::placeOf(int day, const Stop &stop, int minute) const {
    return {day, stop.allDay ? minute : stop.begin, stop.occurrence, stop.allDay};
}

GridPosition GridNavigator::above(const GridPosition &from) const {
    const QList<Stop> &stops = m_days[from.day];
    const int index = indexOf(from);
    if (index > 0)
        return placeOf(from.day, stops[index - 1], from.minute);
    if (index == 0)
        return stops[0].allDay ? from : onTheClock(from.day, (stops[0].begin - 1) / clockStep * clockStep);
    for (auto stop = stops.crbegin(); stop != stops.crend(); ++stop)
        if (!stop->allDay && stop->begin < from.minute)
            return placeOf(from.day, *stop, from.minute);
    if (from.minute == 0 && !stops.isEmpty() && stops[0].allDay)
        return placeOf(from.day, stops[0], from.minute);
    return onTheClock(from.day, from.minute - clockStep);
}

GridPosition GridNavigator::below(const GridPosition &from) const {
    const QList<Stop> &stops = m_days[from.day];
    const int index = indexOf(from);
    if (index >= 0 && index + 1 < stops.size())
        return placeOf(from.day, stops[index + 1], from.minute);
    if (index >= 0) {
        if (stops[index].allDay)
            return onTheClock(from.day, from.minute);
        return stops[index].end > minutesPerDay - clockStep
                   ? from
                   : onTheClock(from.day, roundedUp(stops[index].end));
    }
    for (const Stop &stop : stops)
        if (!stop.allDay && stop.begin >= from.minute)
            return placeOf(from.day, stop, from.minute);
    return onTheClock(from.day, from.minute + clockStep);
}

GridPosition GridNavigator::arriveAt(int day, int minute, bool allDay, int exceptOccurrence) const {
    const Stop *nearest = nullptr;
    int least = 0;
    for (const Stop &stop : m_days[day]) {
        if (stop.occurrence == exceptOccurrence)
            continue;
        // Prefers the same kind; takes another kind only if there is no other.
        const int distance =
            (stop.allDay != allDay ? minutesPerDay : 0) +
            (stop.allDay || (stop.begin <= minute && minute < stop.end) ? 0 : std::abs(stop.begin - minute));
        if (nearest && distance >= least)
            continue;
        nearest = &stop;
        least = distance;
    }
    if (!nearest)
        return onTheClock(day, minute);
    GridPosition place = placeOf(day, *nearest, minute);
    place.minute = minute; // further sideways steps keep the original time
    return place;
}

std::optional<GridPosition> GridNavigator::step(WalkStep step, const GridPosition &from) const {
    const QList<Stop> &stops = m_days[from.day];
    switch (step) {
    case WalkStep::Up:
        return above(from);
    case WalkStep::Down:
        return below(from);
    case WalkStep::First:
        return stops.isEmpty() ? onTheClock(from.day, GridStyle::firstWorkingHour * minutesPerHour)
                               : placeOf(from.day, stops.first(), from.minute);
    case WalkStep::Last:
        return stops.isEmpty() ? onTheClock(from.day, GridStyle::lastWorkingHour * minutesPerHour)
                               : placeOf(from.day, stops.last(), from.minute);
    case WalkStep::Left:
    case WalkStep::Right:
        break;
    }
    const int day = from.day + (step == WalkStep::Left ? -1 : 1);
    if (day < 0 || day >= m_days.size())
        return std::nullopt;
    return arriveAt(day, from.minute, from.allDay, from.occurrence);
}

QList<int> GridNavigator::readingOrder() const {
    QList<int> order;
    QSet<int> seen;
    for (const QList<Stop> &stops : m_days) {
        for (const Stop &stop : stops) {
            if (seen.contains(stop.occurrence))
                continue;
            seen.insert(stop.occurrence);
            order.append(stop.occurrence);
        }
    }
    return order;
}

} // namespace mailhost
