// What a screen reader is told of the calendar grid and its tiles.
#pragma once

#include <QString>

namespace mailhost {

class CalendarGrid;
class EventTileView;

// "Subject, Tuesday 24 November, 10:00 to 10:30, location, repeats, online meeting".
[[nodiscard]] QString spokenName(const EventTileView *tile);
// Makes the tiles and the grid known to the toolkit; more calls do nothing.
void installGridAccessibility();
// The selection or the place on the clock has moved; `tile` is nullptr without a selection.
void announce(CalendarGrid *grid, EventTileView *tile);

} // namespace mailhost
