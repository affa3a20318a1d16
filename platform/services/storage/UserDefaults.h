// The user's defaults.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>

namespace platform {

// The user's defaults of this process (its standard domain), and reading those of another application.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    [[nodiscard]] virtual rt::Value value(const QString &key) const = 0; // no value when absent
    // No value, and a null text, removes the key. A value that a property list cannot hold is refused with
    // one line in the log.
    virtual void setValue(const QString &key, const rt::Value &value) = 0;
    // Writes what changed since the last call; nothing when nothing did. Whether the store is on disk now.
    virtual bool synchronize() = 0;
    // One value from another domain, named by a bundle identifier; no value when either is absent.
    [[nodiscard]] virtual rt::Value valueInDomain(const QString &domain, const QString &key) const = 0;
};

} // namespace platform
