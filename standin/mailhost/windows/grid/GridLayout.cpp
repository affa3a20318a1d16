#include "standin/mailhost/windows/grid/GridLayout.h"

#include <algorithm>
#include <tuple>

namespace mailhost {

namespace {

constexpr int secondsPerMinute = 60;

int minuteOf(const QTime &time) {
    return time.hour() * minutesPerHour + time.minute();
}

void addPieces(QList<GridPiece> &pieces, int index, const Occurrence &occurrence, const QDate &first,
               int days) {
    const QDateTime start = occurrence.start.toLocalTime();
    const QDateTime end = std::max(start, occurrence.end.toLocalTime());
    const bool endsAtMidnight = occurrence.allDay || end.time() == QTime(0, 0);
    const QDate last = endsAtMidnight && end.date() > start.date() ? end.date().addDays(-1) : end.date();
    const qint64 from = first.daysTo(start.date());
    const qint64 to = first.daysTo(last);
    if (to < 0 || from >= days)
        return;
    GridPiece piece;
    piece.occurrence = index;
    piece.allDay = occurrence.allDay;
    piece.firstDay = int(std::max<qint64>(0, from));
    piece.lastDay = int(std::min<qint64>(days - 1, to));
    if (occurrence.allDay) {
        piece.startsHere = from >= 0;
        piece.endsHere = to < days;
        pieces.append(piece);
        return;
    }
    for (int day = piece.firstDay, lastDay = piece.lastDay; day <= lastDay; ++day) {
        piece.firstDay = piece.lastDay = day;
        piece.startsHere = day == from;
        piece.endsHere = day == to;
        piece.begin = piece.startsHere ? minuteOf(start.time()) : 0;
        piece.end = piece.endsHere && last == end.date() ? minuteOf(end.time()) : minutesPerDay;
        // In the repeated hour the clock may show an end before the beginning.
        if (piece.startsHere && piece.end < piece.begin)
            piece.end = piece.begin + int(start.secsTo(end) / secondsPerMinute);
        piece.begin = std::min(piece.begin, minutesPerDay - quarterHour);
        piece.end = std::clamp(piece.end, piece.begin + quarterHour, minutesPerDay);
        pieces.append(piece);
    }
}

// Takes the first place that is free at `begin`, up to `end`. `ends` has for each place until when it is
// taken.
int takePlace(QList<int> &ends, int begin, int end) {
    for (int place = 0; place < ends.size(); ++place) {
        if (ends[place] <= begin) {
            ends[place] = end;
            return place;
        }
    }
    ends.append(end);
    return int(ends.size()) - 1;
}

// Places timed pieces that overlap directly or through others side by side, and widens each to the right up
// to the nearest piece that overlaps it.
void placeGroup(const QList<GridPiece *> &group) {
    QList<int> ends;
    for (GridPiece *piece : group)
        piece->column = takePlace(ends, piece->begin, piece->end);
    for (GridPiece *piece : group) {
        piece->columns = int(ends.size());
        piece->span = piece->columns - piece->column;
        for (const GridPiece *other : group) {
            if (other->begin >= piece->end)
                break; // they are sorted by their begin
            if (other->column > piece->column && piece->begin < other->end)
                piece->span = std::min(piece->span, other->column - piece->column);
        }
    }
}

} // namespace

QDateTime momentAt(const ClockPlace &place) {
    const QDateTime clock =
        QDateTime(place.date, QTime(0, 0), Qt::UTC).addSecs(place.minute * secondsPerMinute);
    const auto shownBy = [&clock](const QDateTime &local) {
        return clock.addSecs(-local.offsetFromUtc()).toLocalTime();
    };
    // Uses the offset of the day before. If the clocks change in between, uses the new offset unless it skips
    // that time.
    const QDateTime before = shownBy(clock.addDays(-1).toLocalTime());
    const QDateTime after = shownBy(before);
    return after.date() == clock.date() && after.time() == clock.time() ? after : before;
}

ClockPlace clockPlaceOf(const QDateTime &moment) {
    const QDateTime local = moment.toLocalTime();
    return {local.date(), minuteOf(local.time())};
}

GridLayout layOut(const QList<Occurrence> &occurrences, const QDate &first, int days) {
    GridLayout layout;
    for (int i = 0; i < occurrences.size(); ++i)
        addPieces(layout.pieces, i, occurrences[i], first, days);
    // Of pieces with the same beginning, the longer ones come first.
    const auto order = [](const GridPiece &piece) {
        return std::tuple(piece.firstDay, !piece.allDay, piece.begin, -piece.lastDay, -piece.end);
    };
    std::stable_sort(layout.pieces.begin(), layout.pieces.end(),
                     [&](const GridPiece &a, const GridPiece &b) { return order(a) < order(b); });
    QList<int> lineEnds;
    QList<GridPiece *> group;
    int groupEnd = 0;
    for (GridPiece &piece : layout.pieces) {
        if (piece.allDay) {
            piece.column = takePlace(lineEnds, piece.firstDay, piece.lastDay + 1);
            continue;
        }
        if (!group.isEmpty() && (group.last()->firstDay != piece.firstDay || piece.begin >= groupEnd)) {
            placeGroup(group);
            group.clear();
        }
        groupEnd = group.isEmpty() ? piece.end : std::max(groupEnd, piece.end);
        group.append(&piece);
    }
    placeGroup(group);
    layout.lines = int(lineEnds.size());
    return layout;
}

} // namespace mailhost
