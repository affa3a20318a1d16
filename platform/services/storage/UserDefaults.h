// The user's defaults.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>

namespace platform {

// The user's defaults of this process (its standard domain), with read access to those of other applications.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    [[nodiscard]] virtual rt::Value value(const QString &key) const = 0; // no value when absent
    // A missing value or a null text removes the key. Rejects and logs a value that a property list cannot
    // contain.
    virtual void setValue(const QString &key, const rt::Value &value) = 0;
    // Writes the changes since the last call, if any. Returns whether the store is on disk.
    virtual bool synchronize() = 0;
    // A value from the domain of that bundle identifier; no value if either is absent.
    [[nodiscard]] virtual rt::Value valueInDomain(const QString &domain, const QString &key) const = 0;
};

// setValue() of every storage: changes the entry by the rules above. Returns whether `values` changed.
bool changeDefault(QVariantMap *values, const QString &key, const rt::Value &value);

} // namespace platform
