// The layout of appointments on a grid of days. Works on values, without widgets. Minutes are clock minutes,
// 0 to 1440, also on days with a clock change.
#pragma once

#include "standin/mailhost/store/Appointment.h"

namespace mailhost {

inline constexpr int minutesPerHour = 60;
inline constexpr int minutesPerDay = 24 * minutesPerHour;
inline constexpr int firstWorkingMinute = 8 * minutesPerHour;
inline constexpr int lastWorkingMinute = 18 * minutesPerHour; // up to it
// In minutes: the smallest length of an appointment on the scale, and the step of drags.
inline constexpr int quarterHour = 15;

// A day and a clock time. The minute may be outside of the day; momentAt() carries it over.
struct ClockPlace {
    QDate date;
    int minute = 0;
    friend bool operator==(const ClockPlace &a, const ClockPlace &b) = default;
};
// The instant at which the clock of the system's zone shows that time. A skipped time moves later by the
// amount of the clock change; of a repeated time the first instant is used.
[[nodiscard]] QDateTime momentAt(const ClockPlace &place);
[[nodiscard]] ClockPlace clockPlaceOf(const QDateTime &moment);

// The part of a timed appointment in one day, or the shown part of an all-day appointment.
struct GridPiece {
    int occurrence = 0; // index in the given list
    bool allDay = false;
    int firstDay = 0;
    int lastDay = 0;
    int begin = 0;
    int end = minutesPerDay; // at least a quarter of an hour after the beginning, or the day's end
    bool startsHere = true;
    bool endsHere = true;
    // The place beside overlapping pieces: its first column, its number of columns, and the number of columns
    // of the whole group of overlapping pieces. Of an all-day appointment the column is its line.
    int column = 0;
    int span = 1;
    int columns = 1;
};

struct GridLayout {
    QList<GridPiece> pieces; // in reading order: by first day, all-day ones first, then by begin
    int lines = 0;           // of the all-day row
};

// Lays out the parts of the occurrences within `days` days from `first` on.
[[nodiscard]] GridLayout layOut(const QList<Occurrence> &occurrences, const QDate &first, int days);

} // namespace mailhost
