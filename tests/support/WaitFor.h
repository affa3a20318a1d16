// Conditions that other processes or the event loop make true.
#pragma once

#include <QTest>

// Runs the event loop until the condition holds; false if it does not within a generous time.
template<typename Condition>
bool waitFor(Condition condition) {
    constexpr int generousMilliseconds = 20'000;
    return QTest::qWaitFor(condition, generousMilliseconds);
}
