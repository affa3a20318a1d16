#include "tests/faults/Days.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace faults {

namespace {

constexpr int triesForAStep = 200; // lines that cannot be done cost nothing

// Written before each step, so that a script is left when the step ends the process.
void trace(const QString &line) {
    const QString path = qEnvironmentVariable("PARLO_FAULTS_TRACE");
    QFile file(path);
    if (!path.isEmpty() && file.open(QIODevice::Append))
        file.write(line.toUtf8() + '\n');
}

// Two things that go wrong are the same when their sentences differ in words and numbers of the day only.
QString kindOf(const QString &wrong) {
    QString kind = wrong.section(u':', 0, 0);
    static const QRegularExpression numbers(QStringLiteral("w?[0-9]+x?|plain|invited|other|series"));
    return kind.replace(numbers, QStringLiteral("*"));
}

void count(const Happened &step, Figures &figures) {
    ++figures.steps;
    figures.requests += int(step.requests.size());
    figures.answers += int(step.answers.size());
    figures.faults += isFault(step.line) ? 1 : 0;
    figures.held += !step.presses.isEmpty() && step.runs.isEmpty() ? 1 : 0;
}

} // namespace

Day liveRandomly(quint64 seed, int steps, Figures *figures) {
    constexpr Weather weathers[] = {Weather::Calm, Weather::Stormy, Weather::Busy, Weather::Stormy};
    const Weather weather = weathers[seed % std::size(weathers)];
    Chooser chooser(seed, weather);
    Day day{{chooser.hostVersion(), weather, {}}, {}};
    Desktop desktop(chooser.hostVersion());
    trace(QStringLiteral("# seed %1\n").arg(seed) + day.script.text().trimmed());
    ++figures->days;
    for (int step = 0; step < steps && day.wrong.isNull(); ++step) {
        QString line;
        for (int attempt = 0; attempt < triesForAStep; ++attempt) {
            line = chooser.next(desktop);
            trace(line);
            if (desktop.perform(line))
                break;
            line.clear();
        }
        if (line.isEmpty())
            break;
        day.script.lines.append(line);
        count(desktop.last(), *figures);
        trace(QStringLiteral("# done, %1 requests").arg(desktop.last().requests.size()));
        day.wrong = whatIsWrong(desktop, weather);
    }
    return day;
}

Day liveAgain(const Script &script) {
    Day day{{script.hostVersion, script.weather, {}}, {}};
    Desktop desktop(script.hostVersion);
    for (const QString &line : script.lines) {
        trace(line);
        if ((script.weather == Weather::Calm && !isCalm(line, desktop)) || !desktop.perform(line))
            continue;
        day.script.lines.append(line);
        day.wrong = whatIsWrong(desktop, script.weather);
        if (!day.wrong.isNull())
            break;
    }
    return day;
}

// Halves first, then smaller pieces, down to single lines, until none can go.
Script shortened(const Day &day) {
    Script best = day.script;
    for (qsizetype piece = best.lines.size() / 2; piece >= 1; piece = piece > 1 ? piece / 2 : 0) {
        for (qsizetype at = 0; at < best.lines.size();) {
            Script candidate = best;
            candidate.lines.remove(at, std::min(piece, best.lines.size() - at));
            const Day again = liveAgain(candidate);
            if (kindOf(again.wrong) == kindOf(day.wrong))
                best = again.script;
            else
                at += piece;
        }
    }
    return best;
}

} // namespace faults
