// The grid's decisions, without a widget: where appointments stand, and what a drag means.
#include "standin/mailhost/windows/grid/GridDrag.h"
#include "tests/support/ProcessZone.h"

#include <gtest/gtest.h>

namespace mailhost {

namespace {

const QDate monday(2026, 3, 9);

Occurrence timed(const QDate &day, const QTime &from, qint64 seconds) {
    Occurrence occurrence;
    occurrence.start = QDateTime(day, from);
    occurrence.end = occurrence.start.addSecs(seconds);
    return occurrence;
}

Occurrence wholeDays(const QDate &day, int days) {
    Occurrence occurrence;
    occurrence.start = day.startOfDay();
    occurrence.end = day.addDays(days).startOfDay();
    occurrence.allDay = true;
    return occurrence;
}

class GridLayoutTest : public testing::Test {
protected:
    ProcessZone zone{"Europe/Berlin"};
};

TEST_F(GridLayoutTest, OverlappingOnesStandSideBySideAndGrowIntoWhatIsFree) {
    struct Case {
        const char *name;
        QList<std::pair<int, int>> times; // minutes
        QList<std::array<int, 3>> places; // column, span, columns
    };
    const QList<Case> cases{{"chained to three columns, the last one is alone beside the first",
                             {{540, 720}, {540, 600}, {540, 600}, {660, 720}},
                             {{0, 1, 3}, {1, 1, 3}, {2, 1, 3}, {1, 2, 3}}},
                            {"one that has ended by then does not mind a later one",
                             {{540, 720}, {540, 600}, {630, 720}, {630, 720}},
                             {{0, 1, 3}, {1, 2, 3}, {1, 1, 3}, {2, 1, 3}}},
                            {"a later one keeps an earlier one from growing, and the last one is alone",
                             {{540, 600}, {540, 560}, {570, 660}, {660, 720}},
                             {{0, 1, 2}, {1, 1, 2}, {1, 1, 2}, {0, 1, 1}}}};
    for (const Case &c : cases) {
        QList<Occurrence> occurrences;
        for (const auto &[begin, end] : c.times)
            occurrences.append(timed(monday, QTime(begin / 60, begin % 60), (end - begin) * 60));
        QList<std::array<int, 3>> places;
        for (const GridPiece &piece : layOut(occurrences, monday, 1).pieces)
            places.append({piece.column, piece.span, piece.columns});
        EXPECT_EQ(places, c.places) << c.name;
    }
}

TEST_F(GridLayoutTest, EachIsInAllOfItsDaysAndBarsShareALineWhereTheyDoNotMeet) {
    const QList<Occurrence> occurrences{timed(monday.addDays(-1), QTime(22, 0), 4 * 3600),
                                        timed(monday, QTime(23, 0), 3600),
                                        timed(monday, QTime(20, 0), 36 * 3600),
                                        timed(monday.addDays(1), QTime(23, 59), 0),
                                        wholeDays(monday.addDays(-3), 4),
                                        wholeDays(monday, 2),
                                        wholeDays(monday.addDays(1), 1),
                                        wholeDays(monday.addDays(6), 5),
                                        wholeDays(monday.addDays(9), 1)};
    const GridLayout layout = layOut(occurrences, monday, 7);
    // Occurrence, starts here, ends here, first day; then begin and end, or last day and line.
    QList<std::array<int, 6>> pieces;
    for (const GridPiece &piece : layout.pieces)
        pieces.append({piece.occurrence, piece.startsHere, piece.endsHere, piece.firstDay,
                       piece.allDay ? piece.lastDay : piece.begin, piece.allDay ? piece.column : piece.end});
    const QList<std::array<int, 6>> expected{
        {5, 1, 1, 0, 1, 0},       {4, 0, 1, 0, 0, 1}, {0, 0, 1, 0, 0, 120},  {2, 1, 0, 0, 1200, 1440},
        {1, 1, 1, 0, 1380, 1440}, {6, 1, 1, 1, 1, 1}, {2, 0, 0, 1, 0, 1440}, {3, 1, 1, 1, 1425, 1440},
        {2, 0, 1, 2, 0, 480},     {7, 1, 0, 6, 6, 0}};
    EXPECT_EQ(pieces, expected);
    EXPECT_EQ(layout.lines, 2);
}

TEST_F(GridLayoutTest, TheClockMayChangeUnderTheScale) {
    const QDate spring(2026, 3, 29);
    const QDate autumn(2026, 10, 25);
    EXPECT_EQ(momentAt({autumn, 150}).toUTC(), QDateTime(autumn, QTime(0, 30), Qt::UTC)) << "the first one";
    // From 2:30 in summer time to 2:15 in winter time.
    Occurrence back = timed(autumn, QTime(1, 0), 0);
    back.start = QDateTime(autumn, QTime(0, 30), Qt::UTC).toLocalTime();
    back.end = back.start.addSecs(45 * 60);
    const GridLayout layout = layOut({back}, autumn, 1);
    ASSERT_EQ(layout.pieces.size(), 1);
    EXPECT_EQ(layout.pieces[0].begin, 150);
    EXPECT_EQ(layout.pieces[0].end, 195);
    // A midnight that does not exist.
    const ProcessZone beirut("Asia/Beirut");
    EXPECT_EQ(momentAt({spring, 0}).time(), QTime(1, 0));
}

TEST_F(GridLayoutTest, ADragSnapsKeepsTheLengthAndCountsRealSeconds) {
    const QDate saturday(2026, 3, 28); // the clocks go forward in the night
    const Occurrence call = timed(saturday, QTime(10, 5), 50 * 60);
    const Occurrence night = timed(saturday, QTime(22, 0), 6 * 3600); // until 5:00
    const Occurrence trip = wholeDays(saturday, 2);
    const auto at = [&](int day, int minute) { return ClockPlace{saturday.addDays(day), minute}; };
    const auto local = [&](int day, int hour, int minute) {
        return QDateTime(saturday.addDays(day), QTime(hour, minute));
    };
    struct Case {
        const char *name;
        const Occurrence &occurrence;
        Grip grip;
        ClockPlace from;
        ClockPlace to;
        bool holdsBegin;
        QDateTime start;
        qint64 seconds;
    };
    constexpr qint64 hour = 3600;
    const QList<Case> cases{
        {"to the side alone", call, Grip::Body, at(0, 620), at(1, 623), true, local(1, 10, 5), 50 * 60},
        {"not far enough", call, Grip::Body, at(0, 620), at(0, 625), true, local(0, 10, 5), 50 * 60},
        {"over the upper edge", call, Grip::Body, at(0, 640), at(1, 0), true, local(1, 0, 0), 50 * 60},
        {"taken by its second day", night, Grip::Body, at(1, 120), at(1, 240), false, local(1, 0, 0),
         6 * hour},
        {"into the skipped hour", call, Grip::Body, at(0, 605), at(1, 150), true, local(1, 3, 30), 50 * 60},
        {"end above the begin", call, Grip::End, at(0, 655), at(0, 300), true, local(0, 10, 5), 15 * 60},
        {"begin below the end", call, Grip::Begin, at(0, 605), at(0, 900), true, local(0, 10, 40), 15 * 60},
        {"begin on the day before", call, Grip::Begin, at(0, 605), at(-1, 1380), true, local(-1, 23, 0),
         11 * hour + 55 * 60},
        {"end over the change of the clocks", call, Grip::End, at(0, 655), at(1, 240), true, local(0, 10, 5),
         17 * hour - 5 * 60},
        {"days over the change", trip, Grip::Body, at(1, 0), at(0, 0), true, local(-1, 0, 0), 48 * hour},
        {"last day", trip, Grip::End, at(1, 0), at(0, 0), true, local(0, 0, 0), 24 * hour},
        {"first day behind the last", trip, Grip::Begin, at(0, 0), at(5, 0), true, local(1, 0, 0),
         23 * hour}};
    for (const Case &c : cases) {
        const TimeSpan span = draggedSpan({c.occurrence, c.grip, c.from, c.holdsBegin}, c.to);
        EXPECT_EQ(span.start, c.start) << c.name << ": " << qPrintable(span.start.toString());
        EXPECT_EQ(span.seconds(), c.seconds) << c.name;
    }
}

} // namespace
} // namespace mailhost
