#include "bench/table/SideBySide.h"

#include <algorithm>
#include <ctime>
#include <sys/resource.h>

namespace bench {

namespace {

double timed(const Work &work, int times, Clock clock) {
    const double start = secondsNow(clock);
    work(times);
    return secondsNow(clock) - start;
}

double secondsOf(const timeval &time) {
    return double(time.tv_sec) + double(time.tv_usec) * 1e-6;
}

// How often the work has to be done for one sample.
int timesPerSample(const Work &work, double sample, Clock clock) {
    int times = 1;
    for (double seconds = timed(work, times, clock); seconds < sample; seconds = timed(work, times, clock)) {
        constexpr double tenfold = 10;
        times = int(times * std::clamp(1.2 * sample / std::max(seconds, 1e-9), 1.5, tenfold)) + 1;
    }
    return times;
}

Comparison summary(const std::vector<std::vector<double>> &rounds) {
    Comparison result;
    for (std::size_t contender = 0; contender < rounds.size(); ++contender) {
        std::vector<double> ratios;
        for (std::size_t round = 0; round < rounds[contender].size(); ++round)
            ratios.push_back(rounds[0][round] / rounds[contender][round]);
        result.seconds.push_back(median(rounds[contender]));
        result.ratios.push_back(median(ratios));
    }
    return result;
}

} // namespace

double secondsNow(Clock clock) {
    timespec now{};
    clock_gettime(clock == Clock::Wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &now);
    double seconds = double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
    if (clock == Clock::Processor) {
        rusage children{};
        getrusage(RUSAGE_CHILDREN, &children);
        seconds += secondsOf(children.ru_utime) + secondsOf(children.ru_stime);
    }
    return seconds;
}

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Comparison sideBySide(const std::vector<Work> &contenders, Effort effort) {
    std::vector<int> times;
    double round = 0;
    for (const Work &work : contenders) {
        times.push_back(timesPerSample(work, effort.sample, effort.clock));
        round += timed(work, times.back(), effort.clock);
    }
    const int rounds = std::clamp(int(effort.seconds / round), effort.leastRounds, effort.mostRounds);
    std::vector<std::function<double()>> turns;
    for (std::size_t i = 0; i < contenders.size(); ++i)
        turns.emplace_back([&, i] { return timed(contenders[i], times[i], effort.clock) / times[i]; });
    return inTurns(turns, rounds);
}

Comparison inTurns(const std::vector<std::function<double()>> &contenders, int rounds) {
    std::vector<std::vector<double>> samples(contenders.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < contenders.size(); ++i)
            samples[i].push_back(contenders[i]());
    return summary(samples);
}

} // namespace bench
