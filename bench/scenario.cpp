// What the plug-in itself costs: from the click on its button to the saved appointment, and for each drawing
// of the header.
//
// The client answers inside the process, so no bus is in these times: they are what stands above the round
// trips. They hold the client's own work, the host's windows and its writing of the file too, so that the
// plug-in's own share is smaller.
#include "tests/scenarios/Scenario.h"
#include "plugin/hooks/hookTable.h"
#include "standin/mailhost/windows/editor/HeaderViews.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void addAndSave(benchmark::State &state) {
    const QString version = QString::number(state.range(0));
    double sheetShown = 0;
    double attached = 0;
    double saved = 0;
    for (auto _ : state) {
        scenarios::Scenario scenario(version);
        mailhost::EditorWindow *editor = scenario.open(scenarios::Scenario::plain);
        const Clock::time_point start = Clock::now();
        scenario.clickAdd(editor);
        const double untilSheet = secondsSince(start);
        scenario.confirmSheet();
        const double untilAttached = secondsSince(start);
        scenario.pressSave(editor);
        const double untilSaved = secondsSince(start);
        state.SetIterationTime(untilSaved);
        sheetShown += untilSheet;
        attached += untilAttached - untilSheet;
        saved += untilSaved - untilAttached;
        if (scenario.meetingKey(scenarios::Scenario::plain).isEmpty()) {
            state.SkipWithError("the appointment has no meeting");
            return;
        }
    }
    // Milliseconds: from the click to the sheet; from Continue to the meeting in the appointment; the save.
    constexpr double milliseconds = 1000;
    state.counters["sheet"] =
        benchmark::Counter(sheetShown * milliseconds, benchmark::Counter::kAvgIterations);
    state.counters["meeting"] =
        benchmark::Counter(attached * milliseconds, benchmark::Counter::kAvgIterations);
    state.counters["save"] = benchmark::Counter(saved * milliseconds, benchmark::Counter::kAvgIterations);
}

// The same clicks on an appointment that gets no meeting: what the host alone does for a save.
void hostSavesAlone(benchmark::State &state) {
    const QString version = QString::number(state.range(0));
    for (auto _ : state) {
        scenarios::Scenario scenario(version);
        mailhost::EditorWindow *editor = scenario.open(scenarios::Scenario::other);
        scenario.typeSubject(editor, u"Renamed"_s);
        const Clock::time_point start = Clock::now();
        scenario.pressSave(editor);
        state.SetIterationTime(secondsSince(start));
    }
}

// Sends the selector that draws the header: the hooked one, or the one under which the host's own drawing is
// reached. The view is not being painted, so the host's drawing itself costs nothing and the difference is
// the hook.
void headerDrawing(benchmark::State &state, bool hooked) {
    const bool newer = state.range(0) == 16;
    scenarios::Scenario scenario(QString::number(state.range(0)));
    mailhost::EditorWindow *editor = scenario.open(scenarios::Scenario::plain);
    auto *header = editor->findChild<mailhost::HeaderView *>();
    const HookRow &row = hookRow(newer ? HookRowName::NewerHeaderDraw : HookRowName::OlderHeaderDraw);
    const rt::Selector selector(hooked ? row.hostSelector : row.replacementSelector);
    const QRectF rect(header->rect());
    for (auto _ : state)
        benchmark::DoNotOptimize(rt::send(header, selector, rect));
}

void headerHooked(benchmark::State &state) {
    headerDrawing(state, true);
}
void headerHostAlone(benchmark::State &state) {
    headerDrawing(state, false);
}

BENCHMARK(addAndSave)->Arg(15)->Arg(16)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);
BENCHMARK(hostSavesAlone)->Arg(15)->Arg(16)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);
BENCHMARK(headerHooked)->Arg(15)->Arg(16)->Unit(benchmark::kMicrosecond);
BENCHMARK(headerHostAlone)->Arg(15)->Arg(16)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
