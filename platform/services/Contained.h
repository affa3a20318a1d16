// The edge between a service and callbacks that belong to others.
#pragma once

#include <QtGlobal>
#include <exception>

namespace platform {

// Calls the callback; whatever it throws ends here, with one line in the log that names the caller.
template<typename Callback, typename... Arguments>
void contained(const char *caller, const Callback &callback, const Arguments &...arguments) noexcept {
    try {
        callback(arguments...);
    } catch (const std::exception &error) {
        qWarning("%s: a callback failed: %s", caller, error.what());
    } catch (...) {
        qWarning("%s: a callback failed", caller);
    }
}

} // namespace platform
