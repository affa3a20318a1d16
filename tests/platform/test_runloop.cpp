// The same claims about the double and about the desktop's run loop.
#include "platform/services/runloop/QtRunLoop.h"
#include "tests/support/TestServices.h"
#include "tests/support/WaitFor.h"
#include "tests/support/Warnings.h"

#include <QElapsedTimer>
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

TEST_P(RunLoopContract, CallsRunLaterInOrderOfTimeAndThenOfRequest) {
    QStringList expected;
    loop->callAfter(0.05, note(u"last"_s));
    for (const double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        for (int i = 0; i < 60; ++i) {
            expected.append(u"%1 %2"_s.arg(seconds).arg(i));
            loop->callAfter(seconds, note(expected.last()));
        }
    }
    EXPECT_TRUE(noted.isEmpty()) << "a call ran inside the call that requested it";
    pass();
    EXPECT_EQ(noted, expected + QStringList{u"last"_s});
}

TEST_P(RunLoopContract, ACallMayCancelOrRequestAnotherAndThrow) {
    expectWarning(u"run loop: on purpose"_s);
    expectWarning(u"run loop: an unknown failure"_s);
    TimerId cancelled = 0;
    loop->callAfter(0, [&] {
        loop->cancel(cancelled);
        loop->callAfter(0, note(u"second"_s));
        noted.append(u"first"_s);
        throw std::runtime_error("on purpose");
    });
    cancelled = loop->callAfter(0, note(u"cancelled although due"_s));
    loop->cancel(loop->callAfter(0.01, note(u"cancelled"_s)));
    loop->cancel(0);
    loop->cancel(12345);
    loop->callAfter(0, [] { throw 7; });
    loop->callAfter(0, RunLoop::Callback());
    pass();
    EXPECT_EQ(noted, (QStringList{u"first"_s, u"second"_s}));
}

TEST(QtRunLoop, RunsACallAtItsTimeAlsoInsideAnotherCall) {
    QtRunLoop loop;
    QElapsedTimer clock;
    qint64 waited = 0;
    bool isOver = false;
    clock.start();
    loop.callAfter(0, [&] {
        ASSERT_TRUE(waitFor([&waited] { return waited > 0; }));
        isOver = true;
    });
    loop.callAfter(0.0305, [&] { waited = clock.nsecsElapsed(); });
    ASSERT_TRUE(waitFor([&isOver] { return isOver; }));
    EXPECT_GE(waited, 30'500'000);
}

} // namespace
