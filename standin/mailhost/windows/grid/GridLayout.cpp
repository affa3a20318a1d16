#include "standin/mailhost/windows/grid/GridLayout.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <set>
#include <vector>

namespace mailhost {

namespace {

constexpr int secondsPerMinute = 60;

int minuteOf(const QTime &time) {
    return time.hour() * minutesPerHour + time.minute();
}

// A range of the shown days, counted from the first and clipped.
struct DayRange {
    int first;
    int last;
    bool startsHere;
    bool endsHere;
};

std::optional<DayRange> shownDays(const QDate &begin, const QDate &last, const QDate &first, int days) {
    const qint64 from = first.daysTo(begin);
    const qint64 to = first.daysTo(std::max(begin, last));
    if (to < 0 || from >= days)
        return std::nullopt;
    return DayRange{int(std::max<qint64>(0, from)), int(std::min<qint64>(days - 1, to)), from >= 0,
                    to < days};
}

void addBar(GridLayout &layout, int index, const Occurrence &occurrence, const QDate &first, int days) {
    const QDate begin = occurrence.start.toLocalTime().date();
    const QDate last = occurrence.end.toLocalTime().date().addDays(-1);
    if (const auto range = shownDays(begin, last, first, days))
        layout.bars.append({index, range->first, range->last, range->startsHere, range->endsHere, 0});
}

void addPieces(std::vector<std::vector<TimedPiece>> &perDay, int index, const Occurrence &occurrence,
               const QDate &first) {
    const QDateTime start = occurrence.start.toLocalTime();
    const QDateTime end = std::max(start, occurrence.end.toLocalTime());
    const ClockPlace from{start.date(), minuteOf(start.time())};
    ClockPlace to{end.date(), minuteOf(end.time())};
    if (to.minute == 0 && to.date > from.date) // its last day ends at this midnight
        to = {to.date.addDays(-1), minutesPerDay};
    const auto range = shownDays(from.date, to.date, first, int(perDay.size()));
    if (!range)
        return;
    for (int day = range->first; day <= range->last; ++day) {
        TimedPiece piece;
        piece.occurrence = index;
        piece.day = day;
        piece.startsHere = range->startsHere && day == range->first;
        piece.endsHere = range->endsHere && day == range->last;
        piece.begin = piece.startsHere ? from.minute : 0;
        piece.end = piece.endsHere ? to.minute : minutesPerDay;
        // In the repeated hour the clock may show an end before the beginning.
        if (piece.startsHere && piece.endsHere && piece.end < piece.begin)
            piece.end = piece.begin + int(start.secsTo(end) / secondsPerMinute);
        piece.begin = std::min(piece.begin, minutesPerDay - quarterHour);
        piece.end = std::clamp(piece.end, piece.begin + quarterHour, minutesPerDay);
        perDay[std::size_t(day)].push_back(piece);
    }
}

// Assigns the lowest free number.
class Slots {
public:
    // Takes a number from `begin` to `end`. Call it in the order of beginnings.
    int take(int begin, int end) {
        for (; !m_busy.empty() && m_busy.top().first <= begin; m_busy.pop())
            m_free.insert(m_busy.top().second);
        if (m_free.empty())
            m_free.insert(m_count++);
        const int slot = *m_free.begin();
        m_free.erase(m_free.begin());
        m_busy.emplace(end, slot);
        return slot;
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    using Busy = std::pair<int, int>; // until when, number
    std::priority_queue<Busy, std::vector<Busy>, std::greater<>> m_busy;
    std::set<int> m_free;
    int m_count = 0;
};

void placeLines(GridLayout &layout) {
    std::stable_sort(layout.bars.begin(), layout.bars.end(), [](const DayBar &a, const DayBar &b) {
        return a.firstDay != b.firstDay ? a.firstDay < b.firstDay : a.lastDay > b.lastDay;
    });
    Slots lines;
    for (DayBar &bar : layout.bars)
        bar.line = lines.take(bar.firstDay, bar.lastDay + 1);
    layout.lines = lines.count();
}

// Assigns a column to each piece of a group (pieces that overlap directly or through others). Returns the
// number of columns.
int giveColumns(TimedPiece *first, TimedPiece *behind) {
    Slots columns;
    for (TimedPiece *piece = first; piece != behind; ++piece)
        piece->column = columns.take(piece->begin, piece->end);
    return columns.count();
}

// Widens each piece to the right up to the nearest piece that overlaps it. A later piece can only limit its
// direct left neighbour, because that neighbour already limits the pieces farther left.
void widen(TimedPiece *first, TimedPiece *behind, int columns) {
    std::set<std::pair<int, TimedPiece *>> active;
    using Ends = std::pair<int, TimedPiece *>;
    std::priority_queue<Ends, std::vector<Ends>, std::greater<>> ends;
    for (TimedPiece *piece = first; piece != behind; ++piece) {
        for (; !ends.empty() && ends.top().first <= piece->begin; ends.pop())
            active.erase({ends.top().second->column, ends.top().second});
        const auto place = active.emplace(piece->column, piece).first;
        const auto right = std::next(place);
        piece->columns = columns;
        piece->span = (right == active.end() ? columns : right->first) - piece->column;
        if (place != active.begin()) {
            TimedPiece *left = std::prev(place)->second;
            left->span = std::min(left->span, piece->column - left->column);
        }
        ends.emplace(piece->end, piece);
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

void packColumns(TimedPiece *first, TimedPiece *behind) {
    while (first != behind) {
        TimedPiece *next = first + 1;
        for (int until = first->end; next != behind && next->begin < until; ++next)
            until = std::max(until, next->end);
        widen(first, next, giveColumns(first, next));
        first = next;
    }
}

GridLayout layOut(const QList<Occurrence> &occurrences, const QDate &first, int days) {
    GridLayout layout;
    std::vector<std::vector<TimedPiece>> perDay{std::size_t(days)};
    for (int i = 0; i < occurrences.size(); ++i) {
        if (occurrences[i].allDay)
            addBar(layout, i, occurrences[i], first, days);
        else
            addPieces(perDay, i, occurrences[i], first);
    }
    placeLines(layout);
    for (std::vector<TimedPiece> &day : perDay) {
        // Of pieces with the same beginning, the longer ones are at the left.
        std::stable_sort(day.begin(), day.end(), [](const TimedPiece &a, const TimedPiece &b) {
            return a.begin != b.begin ? a.begin < b.begin : a.end > b.end;
        });
        packColumns(day.data(), day.data() + day.size());
        for (const TimedPiece &piece : day)
            layout.pieces.append(piece);
    }
    return layout;
}

} // namespace mailhost
