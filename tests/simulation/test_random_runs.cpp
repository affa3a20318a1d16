// Random runs. A few by default; PARLO_SIMULATION_SEEDS=1..1000 and PARLO_SIMULATION_STEPS=300 select others,
// PARLO_SIMULATION_REPLAY=FILE repeats one from its script.
#include "tests/simulation/Script.h"

#include <QElapsedTimer>

using namespace simulation;

namespace {

int steps() {
    return qEnvironmentVariable("PARLO_SIMULATION_STEPS", u"60"_s).toInt();
}

} // namespace

TEST(RandomRuns, WhateverHappensNothingIsLostAndNothingIsDoneTwice) {
    const QStringList seeds = qEnvironmentVariable("PARLO_SIMULATION_SEEDS", u"1..40"_s).split(u".."_s);
    QElapsedTimer clock;
    clock.start();
    Figures figures;
    for (quint64 seed = seeds.first().toULongLong(); seed <= seeds.last().toULongLong(); ++seed) {
        const auto run = runRandomly(seed, steps(), &figures);
        if (!run.wrong.isNull())
            ADD_FAILURE() << "seed " << seed << ": " << qPrintable(run.wrong) << " after\n"
                          << qPrintable(shortened(run).text());
    }
    EXPECT_GT(figures.steps, 0);
    std::printf("%d runs, %d steps, %d requests, %d answers, %d faults, %d held operations, %.1f s\n",
                figures.runs, figures.steps, figures.requests, figures.answers, figures.faults, figures.held,
                double(clock.elapsed()) / 1000);
}

TEST(RandomRuns, ASeedGivesTheSameRunAgain) {
    Figures figures;
    const auto run = runRandomly(3, steps(), &figures);
    Figures again;
    EXPECT_EQ(runRandomly(3, steps(), &again).script.lines, run.script.lines);
    EXPECT_EQ(again.answers, figures.answers);
    EXPECT_EQ(Script::parse(run.script.text()).lines, run.script.lines);
}

TEST(RandomRuns, AScriptIsRepeated) {
    QFile file(qEnvironmentVariable("PARLO_SIMULATION_REPLAY"));
    if (file.fileName().isEmpty())
        GTEST_SKIP() << "no script is named";
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto run = runAgain(Script::parse(QString::fromUtf8(file.readAll())));
    EXPECT_TRUE(run.wrong.isNull()) << qPrintable(run.wrong) << " after\n" << qPrintable(run.script.text());
}
