#include "standin/mailhost/windows/grid/GridDrag.h"

#include <algorithm>

namespace mailhost {

namespace {

constexpr qint64 leastSeconds = quarterHour * 60;

int snapped(int minute) {
    return qRound(double(minute) / quarterHour) * quarterHour;
}

TimeSpan draggedDays(const Occurrence &occurrence, Grip grip, qint64 days) {
    QDate begin = occurrence.start.toLocalTime().date();
    QDate behind = std::max(begin.addDays(1), occurrence.end.toLocalTime().date());
    if (grip != Grip::End)
        begin = begin.addDays(days);
    if (grip != Grip::Begin)
        behind = behind.addDays(days);
    if (begin >= behind && grip == Grip::Begin)
        begin = behind.addDays(-1);
    if (begin >= behind && grip == Grip::End)
        behind = begin.addDays(1);
    return {begin.startOfDay(), behind.startOfDay()};
}

TimeSpan movedTimes(const DragStart &drag, const ClockPlace &to) {
    const Occurrence &occurrence = drag.occurrence;
    const ClockPlace start = clockPlaceOf(occurrence.start);
    const qint64 days = drag.from.date.daysTo(to.date);
    const int minutes = to.minute - drag.from.minute;
    ClockPlace place{start.date.addDays(days), start.minute};
    if (snapped(minutes) != 0) {
        place.minute = snapped(start.minute + minutes);
        if (drag.holdsBegin)
            place.minute = std::clamp(place.minute, 0, minutesPerDay - quarterHour);
    } else if (days == 0) {
        return {occurrence.start, occurrence.end};
    }
    const QDateTime moment = momentAt(place);
    return {moment, moment.addSecs(occurrence.start.secsTo(occurrence.end))};
}

} // namespace

TimeSpan draggedSpan(const DragStart &drag, const ClockPlace &to) {
    const Occurrence &occurrence = drag.occurrence;
    if (occurrence.allDay)
        return draggedDays(occurrence, drag.grip, drag.from.date.daysTo(to.date));
    if (drag.grip == Grip::Body)
        return movedTimes(drag, to);
    if (snapped(to.minute - drag.from.minute) == 0 && drag.from.date == to.date)
        return {occurrence.start, occurrence.end};
    const QDateTime edge = momentAt({to.date, snapped(to.minute)});
    if (drag.grip == Grip::Begin)
        return {std::min(edge, occurrence.end.addSecs(-leastSeconds)), occurrence.end};
    return {occurrence.start, std::max(edge, occurrence.start.addSecs(leastSeconds))};
}

} // namespace mailhost
