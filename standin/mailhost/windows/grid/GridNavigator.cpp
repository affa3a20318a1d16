#include "standin/mailhost/windows/grid/GridNavigator.h"

#include <algorithm>
#include <cstdlib>

namespace mailhost {

namespace {

constexpr int clockStep = 30; // minutes over the clock

// The pieces of a day from top to bottom.
QList<GridPiece> piecesOf(const GridLayout &layout, int day) {
    QList<GridPiece> pieces = layout.pieces;
    pieces.removeIf([day](const GridPiece &piece) { return day < piece.firstDay || piece.lastDay < day; });
    return pieces;
}

GridPosition onTheClock(int day, int minute) {
    return {day, std::clamp(minute, 0, minutesPerDay - clockStep), -1, false};
}

// The place on the clock after a step that leads to no appointment; `at` is the one at the place, or nullptr.
GridPosition besideAll(GridStep step, const GridPosition &from, const GridPiece *at) {
    if (step == GridStep::First || step == GridStep::Last)
        return onTheClock(from.day, step == GridStep::First ? firstWorkingMinute : lastWorkingMinute);
    if (step == GridStep::Up)
        return at && at->allDay
                   ? from
                   : onTheClock(from.day, ((at ? at->begin : from.minute) - 1) / clockStep * clockStep);
    if (at && at->allDay)
        return onTheClock(from.day, from.minute);
    if (at && at->end > minutesPerDay - clockStep)
        return from; // there is no place below
    const int below = at ? at->end : from.minute + clockStep;
    return onTheClock(from.day, (below + clockStep - 1) / clockStep * clockStep);
}

} // namespace

GridPosition stepped(const GridLayout &layout, GridStep step, const GridPosition &from) {
    const QList<GridPiece> pieces = piecesOf(layout, from.day);
    const auto at = std::find_if(pieces.begin(), pieces.end(), [&from](const GridPiece &piece) {
        return piece.occurrence == from.occurrence;
    });
    const bool onPiece = at != pieces.end();
    const auto above = onPiece ? at - pieces.begin()
                               : std::count_if(pieces.begin(), pieces.end(), [&from](const GridPiece &piece) {
                                     return piece.allDay || piece.begin < from.minute;
                                 });
    const auto next = step == GridStep::Up      ? above - 1
                      : step == GridStep::Down  ? above + (onPiece ? 1 : 0)
                      : step == GridStep::First ? 0
                                                : pieces.size() - 1;
    // From the clock, the all-day bars come only above its beginning.
    const bool staysOnClock = step == GridStep::Up && !onPiece && from.minute > 0;
    if (next < 0 || next >= pieces.size() || (staysOnClock && pieces[next].allDay))
        return besideAll(step, from, onPiece ? &*at : nullptr);
    const GridPiece &piece = pieces[next];
    return {from.day, piece.allDay ? from.minute : piece.begin, piece.occurrence, piece.allDay};
}

GridPosition arrivedAt(const GridLayout &layout, const GridPosition &place) {
    QList<GridPiece> pieces = piecesOf(layout, place.day);
    pieces.removeIf([&place](const GridPiece &piece) { return piece.occurrence == place.occurrence; });
    // Prefers the same kind; takes another kind only if there is no other.
    const auto distance = [&place](const GridPiece &piece) {
        const bool covers = piece.begin <= place.minute && place.minute < piece.end;
        return (piece.allDay != place.allDay ? minutesPerDay : 0) +
               (covers ? 0 : std::abs(piece.begin - place.minute));
    };
    const auto nearest =
        std::min_element(pieces.begin(), pieces.end(), [&distance](const GridPiece &a, const GridPiece &b) {
            return distance(a) < distance(b);
        });
    if (nearest == pieces.end())
        return onTheClock(place.day, place.minute);
    return {place.day, place.minute, nearest->occurrence, nearest->allDay};
}

} // namespace mailhost
