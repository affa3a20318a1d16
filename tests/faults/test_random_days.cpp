// Random days on the desktop. In its short form a few; PARLO_FAULTS_SEEDS=1..500 and PARLO_FAULTS_STEPS=300
// live more of them, PARLO_FAULTS_REPLAY=FILE one again from its script.
#include "tests/faults/Days.h"

#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

using namespace faults;

namespace {

struct Seeds {
    quint64 first = 1;
    quint64 last = 12;
};

Seeds seeds() {
    const QStringList ends = qEnvironmentVariable("PARLO_FAULTS_SEEDS").split(QStringLiteral(".."));
    if (ends.size() != 2)
        return {};
    return {ends[0].toULongLong(), ends[1].toULongLong()};
}

int steps() {
    const int wanted = qEnvironmentVariableIntValue("PARLO_FAULTS_STEPS");
    return wanted > 0 ? wanted : 60;
}

void print(const Figures &figures, double seconds) {
    std::printf("%d days, %d steps, %d requests, %d answers, %d faults, %d operations held, %.1f s\n",
                figures.days, figures.steps, figures.requests, figures.answers, figures.faults, figures.held,
                seconds);
}

} // namespace

TEST(RandomDays, WhateverHappensNothingIsLostAndNothingIsDoneTwice) {
    const Seeds wanted = seeds();
    QElapsedTimer clock;
    clock.start();
    Figures figures;
    for (quint64 seed = wanted.first; seed <= wanted.last; ++seed) {
        const Day day = liveRandomly(seed, steps(), &figures);
        if (!day.wrong.isNull())
            ADD_FAILURE() << "seed " << seed << ": " << qPrintable(day.wrong) << " after\n"
                          << qPrintable(shortened(day).text());
    }
    print(figures, double(clock.elapsed()) / 1000);
}

TEST(RandomDays, ADayIsTheSameWhenItIsLivedAgain) {
    Figures figures;
    const Day day = liveRandomly(3, steps(), &figures);
    Figures again;
    EXPECT_EQ(liveRandomly(3, steps(), &again).script.lines, day.script.lines);
    EXPECT_EQ(again.answers, figures.answers);
    EXPECT_EQ(Script::parse(day.script.text()).lines, day.script.lines);
}

TEST(RandomDays, AScriptIsLivedAgain) {
    QFile file(qEnvironmentVariable("PARLO_FAULTS_REPLAY"));
    if (file.fileName().isEmpty())
        GTEST_SKIP() << "no script is named";
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const Day day = liveAgain(Script::parse(QString::fromUtf8(file.readAll())));
    EXPECT_TRUE(day.wrong.isNull()) << qPrintable(day.wrong) << " after\n" << qPrintable(day.script.text());
}
