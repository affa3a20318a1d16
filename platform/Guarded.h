// Keeps exceptions of our code from reaching foreign code.
#pragma once

#include <QtGlobal>
#include <exception>

namespace platform {

// Runs the work. If it throws, the function logs one line that names the place and returns `fallback`.
template<typename Work, typename Result>
Result guarded(const char *where, Result fallback, Work &&work) noexcept {
    try {
        return work();
    } catch (const std::exception &error) {
        qWarning("%s: %s", where, error.what());
    } catch (...) {
        qWarning("%s: an unknown failure", where);
    }
    return fallback;
}

template<typename Work>
void guarded(const char *where, Work &&work) noexcept {
    guarded(where, 0, [&work] {
        work();
        return 0;
    });
}

} // namespace platform
