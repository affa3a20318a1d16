#include "tests/simulation/Runs.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace simulation {

namespace {

constexpr int triesForAStep = 200; // lines that cannot be done cost nothing

// Written before each step, so that a script is left when the step ends the process.
void trace(const QString &line) {
    const QString path = qEnvironmentVariable("PARLO_SIMULATION_TRACE");
    QFile file(path);
    if (!path.isEmpty() && file.open(QIODevice::Append))
        file.write(line.toUtf8() + '\n');
}

// Two things that go wrong are the same when their sentences differ in words and numbers only.
QString kindOf(const QString &wrong) {
    QString kind = wrong.section(u':', 0, 0);
    static const QRegularExpression numbers(u"w?[0-9]+x?|plain|invited|other|series"_s);
    return kind.replace(numbers, u"*"_s);
}

void count(const Happened &step, Figures &figures) {
    ++figures.steps;
    figures.requests += int(step.requests.size());
    figures.answers += int(step.answers.size());
    figures.faults += isFault(step.line) ? 1 : 0;
    const int asked = timesSent(step, Request::GetMeeting) + timesSent(step, Request::Update) +
                      timesSent(step, Request::Delete);
    figures.held += step.pressed && asked > 0 ? 1 : 0;
}

} // namespace

Run runRandomly(quint64 seed, int steps, Figures *figures) {
    constexpr Conditions all[] = {Conditions::Calm, Conditions::Stormy, Conditions::Slow, Conditions::Stormy};
    const Conditions conditions = all[seed % std::size(all)];
    Generator generator(seed, conditions);
    Run run{{generator.hostVersion(), conditions, {}}, {}};
    Desktop desktop(generator.hostVersion());
    Invariants invariants(desktop, conditions);
    trace(u"# seed %1\n"_s.arg(seed) + run.script.text().trimmed());
    ++figures->runs;
    for (int step = 0; step < steps && run.wrong.isNull(); ++step) {
        QString line;
        for (int attempt = 0; attempt < triesForAStep; ++attempt) {
            line = generator.next(desktop);
            trace(line);
            if (desktop.perform(line))
                break;
            line.clear();
        }
        if (line.isEmpty())
            break;
        run.script.lines.append(line);
        count(desktop.last(), *figures);
        run.wrong = invariants.whatIsWrong();
    }
    return run;
}

Run runAgain(const Script &script) {
    Run run{{script.hostVersion, script.conditions, {}}, {}};
    Desktop desktop(script.hostVersion);
    Invariants invariants(desktop, script.conditions);
    for (const QString &line : script.lines) {
        trace(line);
        if (!desktop.perform(line))
            continue;
        run.script.lines.append(line);
        run.wrong = invariants.whatIsWrong();
        if (!run.wrong.isNull())
            break;
    }
    return run;
}

// Halves first, then smaller pieces, down to single lines, until none can go.
Script shortened(const Run &run) {
    Script best = run.script;
    for (qsizetype piece = best.lines.size() / 2; piece >= 1; piece = piece > 1 ? piece / 2 : 0) {
        for (qsizetype at = 0; at < best.lines.size();) {
            Script candidate = best;
            candidate.lines.remove(at, std::min(piece, best.lines.size() - at));
            const Run again = runAgain(candidate);
            if (kindOf(again.wrong) == kindOf(run.wrong))
                best = again.script;
            else
                at += piece;
        }
    }
    return best;
}

} // namespace simulation
