// Times several ways of doing the same work in turns, so that what else the machine does meets them all
// alike.
#pragma once

#include <functional>
#include <vector>

namespace bench {

// Does the work so many times.
using Work = std::function<void(int times)>;

// Work that does the same each time.
template<typename Once>
Work repeating(Once once) {
    return [once](int times) mutable {
        for (int i = 0; i < times; ++i)
            once();
    };
}

// Processor time is that of this process and of those that it has waited for: other programs that want the
// processor are not in it. What waits for another process is measured by the wall clock.
enum class Clock { Processor, Wall };
[[nodiscard]] double secondsNow(Clock clock);

struct Effort {
    double seconds = 0.6;  // for all contenders together
    double sample = 0.002; // seconds that one sample takes at least
    int leastRounds = 3;
    int mostRounds = 101;
    Clock clock = Clock::Processor;
};

struct Comparison {
    std::vector<double> seconds; // of doing the work once, for each contender: the medians of the rounds
    std::vector<double> ratios;  // the first one's time divided by each one's: the medians of the rounds
};

// Each has its turn in each round. One untimed turn comes first.
[[nodiscard]] Comparison sideBySide(const std::vector<Work> &contenders, Effort effort = {});

// The same for work that cannot be repeated at once: each call does the work and answers the seconds it took.
[[nodiscard]] Comparison inTurns(const std::vector<std::function<double()>> &contenders, int rounds);

[[nodiscard]] double median(std::vector<double> values);

// Keeps the compiler from leaving out what makes the value.
template<typename T>
void keep(const T &value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

} // namespace bench
