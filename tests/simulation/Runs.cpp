#include "tests/simulation/Runs.h"

#include <QRegularExpression>
#include <algorithm>

namespace simulation {

namespace {

constexpr int triesForAStep = 200; // lines that cannot be done cost nothing

// Two things that go wrong are the same when their sentences differ in words and numbers only.
QString kindOf(const QString &wrong) {
    QString kind = wrong.section(u':', 0, 0);
    static const QRegularExpression numbers(u"w?[0-9]+x?|plain|invited|other|series"_s);
    return kind.replace(numbers, u"*"_s);
}

void count(const Step &step, Figures &figures) {
    ++figures.steps;
    for (const Message &message : step.messages)
        ++(message.isAnswer ? figures.answers : figures.requests);
    figures.faults += isFault(step.line) ? 1 : 0;
    const int asked = step.timesSent(Request::GetMeeting) + step.timesSent(Request::Update) +
                      step.timesSent(Request::Delete);
    figures.held += step.pressed && asked > 0 ? 1 : 0;
}

// The next line that can be done, done; an empty one when there is none.
QString performNext(Generator &generator, Desktop &desktop) {
    for (int attempt = 0; attempt < triesForAStep; ++attempt)
        if (const QString line = generator.next(desktop); desktop.perform(line))
            return line;
    return {};
}

} // namespace

Run runRandomly(quint64 seed, int steps, Figures *figures) {
    constexpr Conditions all[] = {Conditions::Prompt, Conditions::Faulty, Conditions::Slow,
                                  Conditions::Faulty};
    const Conditions conditions = all[seed % std::size(all)];
    Generator generator(seed, conditions);
    Run run{{generator.hostVersion(), conditions, {}}, {}};
    Desktop desktop(generator.hostVersion());
    Invariants invariants(desktop, conditions);
    ++figures->runs;
    while (run.script.lines.size() < steps && run.wrong.isNull()) {
        const QString line = performNext(generator, desktop);
        if (line.isEmpty())
            break;
        run.script.lines.append(line);
        count(desktop.step(), *figures);
        run.wrong = invariants.whatIsWrong();
    }
    return run;
}

Run runAgain(const Script &script) {
    Run run{{script.hostVersion, script.conditions, {}}, {}};
    Desktop desktop(script.hostVersion);
    Invariants invariants(desktop, script.conditions);
    for (const QString &line : script.lines) {
        if (!run.wrong.isNull() || !desktop.perform(line))
            continue;
        run.script.lines.append(line);
        run.wrong = invariants.whatIsWrong();
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
