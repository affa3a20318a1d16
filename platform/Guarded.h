// The edge between our code and foreign code, which nothing that is thrown may cross.
#pragma once

#include <QtGlobal>
#include <exception>

namespace platform {

// Runs the work. What it throws ends here, with one line in the log that says where; `fallback` is returned
// then.
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
