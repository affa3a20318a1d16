// The same claims about the double and about the desktop's run loop.
#include "platform/services/TestServices.h"
#include "platform/services/runloop/QtRunLoop.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/Warnings.h"

#include <QElapsedTimer>
#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

namespace {

using platform::QtRunLoop;
using platform::RunLoop;
using platform::TimerId;
using platform::VirtualRunLoop;

class RunLoopContract : public testing::TestWithParam<bool> {
protected:
    RunLoopContract()
        : loop(GetParam() ? std::unique_ptr<RunLoop>(std::make_unique<QtRunLoop>())
                          : std::make_unique<VirtualRunLoop>()) {}

    RunLoop::Callback note(const QString &what) {
        return [this, what] { noted.append(what); };
    }

    // Lets more time pass than any call of these tests waits for.
    void pass() {
        if (auto *doubled = dynamic_cast<VirtualRunLoop *>(loop.get()))
            return doubled->advance(0.1);
        bool isOver = false;
        loop->callAfter(0.1, [&isOver] { isOver = true; });
        ASSERT_TRUE(waitFor([&isOver] { return isOver; }));
    }

    std::unique_ptr<RunLoop> loop;
    QStringList noted;
};

INSTANTIATE_TEST_SUITE_P(Double, RunLoopContract, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Desktop, RunLoopContract, testing::Values(true));

TEST_P(RunLoopContract, CallsRunLaterInTheOrderOfTheirMomentsAndThenOfTheirAsking) {
    loop->callAfter(0.05, note(u"last"_s));
    loop->callAfter(0, note(u"first"_s));
    loop->callAfter(-1, note(u"second"_s));
    loop->callAfter(std::numeric_limits<double>::quiet_NaN(), note(u"third"_s));
    EXPECT_TRUE(noted.isEmpty()) << "a call ran inside the call that asked for it";
    pass();
    EXPECT_EQ(noted, (QStringList{u"first"_s, u"second"_s, u"third"_s, u"last"_s}));
}

TEST_P(RunLoopContract, ManyCallsOfOneMomentKeepTheirOrder) {
    QList<int> order;
    for (int i = 0; i < 200; ++i)
        loop->callAfter(0, [&order, i] { order.append(i); });
    pass();
    ASSERT_EQ(order.size(), 200);
    EXPECT_TRUE(std::is_sorted(order.cbegin(), order.cend()));
}

TEST_P(RunLoopContract, ACancelledCallNeverRunsAlsoWhenItIsDueAlready) {
    TimerId second = 0;
    loop->callAfter(0, [&] {
        noted.append(u"first"_s);
        loop->cancel(second);
    });
    second = loop->callAfter(0, note(u"second"_s));
    loop->cancel(loop->callAfter(0.01, note(u"third"_s)));
    loop->cancel(0);
    loop->cancel(12345);
    pass();
    EXPECT_EQ(noted, QStringList{u"first"_s});
}

TEST_P(RunLoopContract, ACallMayAskForAnotherAndEachRunsOnce) {
    loop->callAfter(0, [this] {
        loop->callAfter(0, note(u"second"_s));
        noted.append(u"first"_s);
    });
    pass();
    pass();
    EXPECT_EQ(noted, (QStringList{u"first"_s, u"second"_s}));
}

TEST_P(RunLoopContract, WhatACallThrowsDoesNotStopTheNext) {
    expectWarning(u"run loop: on purpose"_s);
    loop->callAfter(0, [] { throw std::runtime_error("on purpose"); });
    loop->callAfter(0, [] { throw 7; });
    expectWarning(u"run loop: an unknown failure"_s);
    loop->callAfter(0, RunLoop::Callback());
    loop->callAfter(0, note(u"next"_s));
    pass();
    EXPECT_EQ(noted, QStringList{u"next"_s});
}

TEST(VirtualRunLoop, StepsOfTimeAddUpToTheMoment) {
    VirtualRunLoop loop;
    int runs = 0;
    loop.callAfter(30, [&runs] { ++runs; });
    for (int i = 0; i < 299; ++i)
        loop.advance(0.1);
    EXPECT_EQ(runs, 0);
    loop.advance(0.1);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(loop.pendingCount(), 0);
}

TEST(QtRunLoop, NoCallComesBeforeItsMoment) {
    QtRunLoop loop;
    QElapsedTimer clock;
    qint64 waited = 0;
    clock.start();
    loop.callAfter(0.0305, [&] { waited = clock.nsecsElapsed(); });
    ASSERT_TRUE(waitFor([&waited] { return waited > 0; }));
    EXPECT_GE(waited, 30'500'000);
}

TEST(QtRunLoop, ACallThatRunsAnEventLoopDoesNotHoldUpTheOthers) {
    QtRunLoop loop;
    QStringList order;
    loop.callAfter(0, [&order] {
        ASSERT_TRUE(waitFor([&order] { return order.contains(u"other"_s); }));
        order.append(u"dialog"_s);
    });
    loop.callAfter(0, [&order] { order.append(u"other"_s); });
    ASSERT_TRUE(waitFor([&order] { return order.size() == 2; }));
    EXPECT_EQ(order, (QStringList{u"other"_s, u"dialog"_s}));
}

TEST(QtRunLoop, ACallMayDestroyTheLoop) {
    auto loop = std::make_unique<QtRunLoop>();
    bool isOver = false;
    loop->callAfter(0, [&] {
        loop.reset();
        isOver = true;
    });
    loop->callAfter(0, [] { ADD_FAILURE() << "a call of a loop that is gone"; });
    ASSERT_TRUE(waitFor([&isOver] { return isOver; }));
    QCoreApplication::processEvents();
}

} // namespace
