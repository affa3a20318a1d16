// Deferred calls and one-shot timers on the main run loop.
#pragma once

#include <QtGlobal>
#include <functional>

namespace platform {

using TimerId = quint64; // 0 identifies none

// Main thread only. Calls that are due at the same moment run in the order in which they were requested.
class RunLoop {
public:
    using Callback = std::function<void()>;

    virtual ~RunLoop() = default;
    // Runs the callback once, after `seconds` (0: on the next turn of the loop), never from inside this call.
    // Exceptions of the callback are caught.
    virtual TimerId callAfter(double seconds, Callback callback) = 0;
    // Ignores a call that has run, is unknown or is 0.
    virtual void cancel(TimerId timer) = 0;
};

} // namespace platform
