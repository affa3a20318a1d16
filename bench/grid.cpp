// What it costs to turn the page of the calendar grid: the next week is shown and drawn into an image.
#include "standin/mailhost/windows/grid/CalendarGrid.h"
#include "standin/mailhost/windows/grid/EventTileView.h"

#include <QApplication>
#include <QImage>
#include <array>
#include <benchmark/benchmark.h>

using mailhost::CalendarGrid;
using mailhost::Occurrence;

namespace {

const QDate monday(2026, 3, 9);

// Subjects that differ from week to week, so that no text of the last one serves again.
QList<Occurrence> weekOf(const QDate &first, int count) {
    QList<Occurrence> week;
    for (int i = 0; i < count; ++i) {
        Occurrence occurrence;
        occurrence.uid = u"%1-%2@parlo.example"_s.arg(first.toJulianDay()).arg(i);
        occurrence.summary = u"Appointment %1 of the week that begins on %2"_s.arg(
            QString::number(i), first.toString(Qt::ISODate));
        occurrence.location = i % 3 ? u"Room %1"_s.arg(i % 12) : QString();
        occurrence.allDay = i % 20 == 0;
        const QDate day = first.addDays(i % 7);
        occurrence.start =
            occurrence.allDay ? day.startOfDay() : QDateTime(day, QTime(8 + i / 7 % 10, i % 4 * 15));
        occurrence.end = occurrence.allDay ? day.addDays(1 + i % 3).startOfDay()
                                           : occurrence.start.addSecs(900 * (1 + i % 4));
        occurrence.isOccurrence = i % 2;
        occurrence.hasMeetingRecord = i % 5 == 0;
        week.append(occurrence);
    }
    std::stable_sort(week.begin(), week.end(),
                     [](const Occurrence &a, const Occurrence &b) { return a.start < b.start; });
    return week;
}

void nextWeek(benchmark::State &state, bool drawn) {
    CalendarGrid grid;
    grid.resize(1200, 900);
    const std::array<QList<Occurrence>, 2> weeks{weekOf(monday, int(state.range(0))),
                                                 weekOf(monday.addDays(7), int(state.range(0)))};
    grid.show(weeks[0], monday, CalendarGrid::Extent::Week, monday);
    grid.setVisible(true);
    QApplication::processEvents();
    QImage image(grid.size(), QImage::Format_ARGB32_Premultiplied);
    int page = 0;
    for (auto _ : state) {
        page = 1 - page;
        grid.show(weeks[std::size_t(page)], monday.addDays(7 * page), CalendarGrid::Extent::Week, monday);
        if (drawn)
            grid.render(&image);
    }
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    mailhost::defineTileClass();
    for (const bool drawn : {false, true})
        benchmark::RegisterBenchmark(drawn ? "show and draw the next week" : "show the next week", nextWeek,
                                     drawn)
            ->Arg(50)
            ->Arg(200)
            ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
