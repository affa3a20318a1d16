#include "platform/services/runloop/QtRunLoop.h"

#include "platform/Guarded.h"

#include <algorithm>

namespace platform {

namespace {

// The longest wait of the timer; a call that is due later is checked again then.
constexpr std::chrono::milliseconds longestWait = std::chrono::hours(24);
constexpr double longestDelay = 10.0 * 365 * 24 * 3600; // seconds

} // namespace

QtRunLoop::QtRunLoop() {
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { runDue(); });
}

TimerId QtRunLoop::callAfter(double seconds, Callback callback) {
    const std::chrono::duration<double> delay(seconds > 0 ? std::min(seconds, longestDelay) : 0.0);
    const Clock::time_point due = Clock::now() + std::chrono::duration_cast<Clock::duration>(delay);
    const auto place =
        std::upper_bound(m_pending.begin(), m_pending.end(), due,
                         [](Clock::time_point time, const Pending &pending) { return time < pending.due; });
    m_pending.insert(place, {due, ++m_lastId, std::move(callback)});
    if (m_pending.front().id == m_lastId)
        armTimer();
    return m_lastId;
}

void QtRunLoop::cancel(TimerId timer) {
    const auto found = std::find_if(m_pending.begin(), m_pending.end(),
                                    [timer](const Pending &pending) { return pending.id == timer; });
    if (found == m_pending.end())
        return;
    const Pending cancelled = std::move(*found); // its destruction may call this loop
    m_pending.erase(found);
    armTimer();
}

void QtRunLoop::runDue() {
    const TimerId last = m_lastId; // calls added meanwhile wait for the next turn
    const Clock::time_point now = Clock::now();
    while (!m_pending.empty() && m_pending.front().due <= now && m_pending.front().id <= last) {
        const Pending next = std::move(m_pending.front());
        m_pending.erase(m_pending.begin());
        armTimer(); // before the call, which may run a nested event loop
        if (next.callback)
            guarded("run loop", next.callback);
    }
    armTimer();
}

void QtRunLoop::armTimer() {
    if (m_pending.empty()) {
        m_timer.stop();
        return;
    }
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(m_pending.front().due - Clock::now());
    m_timer.start(std::clamp<std::chrono::milliseconds>(wait, std::chrono::milliseconds(0), longestWait));
}

} // namespace platform
