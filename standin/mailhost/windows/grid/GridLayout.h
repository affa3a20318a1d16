// Where appointments stand on a grid of days: pure values, no widgets. Minutes are those of the clock on the
// wall, 0 to 1440, also on days on which the clocks change.
#pragma once

#include "standin/mailhost/store/Appointment.h"

namespace mailhost {

inline constexpr int minutesPerHour = 60;
inline constexpr int minutesPerDay = 24 * minutesPerHour;
// The least that an appointment takes on the scale and the step that drags snap to.
inline constexpr int quarterHour = 15;

// A place on the clock. The minute may lie outside its day; momentAt() carries it over.
struct ClockPlace {
    QDate date;
    int minute = 0;
    friend bool operator==(const ClockPlace &a, const ClockPlace &b) = default;
};
// The instant at which the clocks of the system's zone show that. A time that a change of the clocks skips is
// as much later as they are moved; of a time that comes twice the first.
[[nodiscard]] QDateTime momentAt(const ClockPlace &place);
[[nodiscard]] ClockPlace clockPlaceOf(const QDateTime &moment);

// What of a timed appointment lies in one day.
struct TimedPiece {
    int occurrence = 0; // index in the list that was laid out
    int day = 0;
    int begin = 0;
    int end = 0; // at least a quarter of an hour behind the begin, or the day's end
    bool startsHere = true;
    bool endsHere = true;
    // Side by side with what overlaps it: the first of its columns, how many it may take, and how many the
    // group has into which overlapping ones chain.
    int column = 0;
    int span = 1;
    int columns = 1;
};

// What of an all-day appointment is shown.
struct DayBar {
    int occurrence = 0;
    int firstDay = 0;
    int lastDay = 0;
    bool startsHere = true;
    bool endsHere = true;
    int line = 0;
};

struct GridLayout {
    QList<TimedPiece> pieces; // by day, then by begin
    QList<DayBar> bars;       // by first day, the longer ones first
    int lines = 0;            // of the all-day row
};

// Lays out what of the occurrences falls into the `days` days from `first` on. n log n.
[[nodiscard]] GridLayout layOut(const QList<Occurrence> &occurrences, const QDate &first, int days);

// Places the pieces of one day, sorted by begin, side by side.
void packColumns(TimedPiece *first, TimedPiece *behind);

} // namespace mailhost
