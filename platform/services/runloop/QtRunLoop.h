// Deferred calls on the Qt event loop.
#pragma once

#include "platform/services/runloop/RunLoop.h"

#include <QTimer>
#include <chrono>
#include <vector>

namespace platform {

// Uses one timer for all calls, because Qt does not order timers that end at the same moment.
class QtRunLoop : public RunLoop {
public:
    QtRunLoop();
    TimerId callAfter(double seconds, Callback callback) override;
    void cancel(TimerId timer) override;

private:
    using Clock = std::chrono::steady_clock;
    struct Pending {
        Clock::time_point due;
        TimerId id;
        Callback callback;
    };
    void runDue();
    void armTimer();

    QTimer m_timer;
    std::vector<Pending> m_pending; // sorted by due, then id
    TimerId m_lastId = 0;
};

} // namespace platform
