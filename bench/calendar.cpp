// Ten thousand appointments: opening the calendar, turning its pages, and storing one change; in the store
// alone and through the host's window.
#include "bench/ManyAppointments.h"
#include "platform/services/TestServices.h"
#include "standin/mailhost/store/CalendarFile.h"
#include "standin/mailhost/windows/HostApplication.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

namespace {

constexpr int appointments = 10000;
const QDate today(2026, 11, 24);

class Calendar {
public:
    Calendar() {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly))
            qFatal("the calendar cannot be written");
        file.write(bench::manyAppointments(appointments, today));
    }
    [[nodiscard]] QString path() const { return m_folder.filePath(u"many.ics"_s); }
    [[nodiscard]] std::unique_ptr<mailhost::CalendarFile> open() const {
        QString error;
        auto file = mailhost::CalendarFile::open(path(), &error);
        if (!file)
            qFatal("%s", qPrintable(error));
        return file;
    }
    static qsizetype week(const mailhost::CalendarFile &file, const QDate &monday) {
        return file.occurrences(monday.startOfDay(), monday.addDays(7).startOfDay()).size();
    }

private:
    QTemporaryDir m_folder;
};

const Calendar &calendar() {
    static const auto *calendar = new Calendar;
    return *calendar;
}

// Until the first week can be shown.
void openAndListAWeek(benchmark::State &state) {
    (void)calendar();
    for (auto _ : state)
        benchmark::DoNotOptimize(Calendar::week(*calendar().open(), today));
}

// Each figure is the middle of many: one listing in eight expands the series further.
void report(benchmark::State &state, std::vector<double> &times) {
    std::sort(times.begin(), times.end());
    state.counters["median_ms"] = times[times.size() / 2];
    state.counters["worst_ms"] = times.back();
}

void listTheNextWeek(benchmark::State &state) {
    const auto file = calendar().open();
    QDate monday = today.addDays(-700);
    (void)Calendar::week(*file, monday);
    qsizetype shown = 0;
    std::vector<double> times;
    for (auto _ : state) {
        monday = monday.addDays(7) > today ? today.addDays(-700) : monday.addDays(7);
        QElapsedTimer timer;
        timer.start();
        shown = Calendar::week(*file, monday);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    state.counters["shown"] = double(shown);
    report(state, times);
}

void listAfterAChange(benchmark::State &state) {
    const auto file = calendar().open();
    const QDate monday = today.addDays(-1);
    (void)Calendar::week(*file, monday);
    mailhost::Appointment changed = file->appointments().last();
    std::vector<double> times;
    for (auto _ : state) {
        changed.start.value = changed.start.value.addSecs(60);
        file->update(changed);
        QElapsedTimer timer;
        timer.start();
        benchmark::DoNotOptimize(Calendar::week(*file, monday));
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    report(state, times);
}

void storeOneChange(benchmark::State &state) {
    const auto file = calendar().open();
    mailhost::Appointment changed = file->appointments().last();
    state.counters["megabytes"] = double(QFileInfo(calendar().path()).size()) / 1e6;
    for (auto _ : state) {
        changed.start.value = changed.start.value.addSecs(60);
        file->update(changed);
        if (!file->save(nullptr))
            state.SkipWithError("not saved");
    }
}

class Host : public QObject {
public:
    Host() {
        mailhost::HostOptions options;
        options.calendarPath = calendar().path();
        options.today = today;
        m_host = std::make_unique<mailhost::HostApplication>(options);
        m_host->start();
        QString error;
        if (!m_host->openCalendar(&error))
            qFatal("%s", qPrintable(error));
        m_host->mainWindowController()->mainWindow()->centralWidget()->installEventFilter(this);
        m_host->show();
        draw();
    }
    // What has to be painted is, into the window's backing store, as on a screen.
    void draw() {
        QApplication::processEvents();
        if (!m_painted)
            qFatal("the calendar was not painted");
        m_painted = false;
    }
    bool eventFilter(QObject *, QEvent *event) override {
        m_painted = m_painted || event->type() == QEvent::Paint;
        return false;
    }
    mailhost::MainWindowController *window() { return m_host->mainWindowController(); }

private:
    std::unique_ptr<mailhost::HostApplication> m_host;
    bool m_painted = false;
};

// Until the week is on the screen.
void openTheHost(benchmark::State &state) {
    (void)calendar();
    for (auto _ : state)
        const Host host;
}

void turnThePage(benchmark::State &state) {
    Host host;
    host.window()->showDay(today.addDays(-700));
    host.draw();
    std::vector<double> times;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        host.window()->nextPage();
        host.draw();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    state.counters["tiles"] = double(host.window()->mainWindow()->calendar()->tiles().size());
    state.counters["median_ms"] = times[times.size() / 2];
    state.counters["worst_ms"] = times.back();
}

BENCHMARK(openAndListAWeek)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(listTheNextWeek)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(listAfterAChange)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(storeOneChange)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK(openTheHost)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(turnThePage)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(90);

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    platform::installTestServices();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
