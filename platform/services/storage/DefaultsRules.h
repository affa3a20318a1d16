// The rules for values in the user's defaults, for every storage.
#pragma once

#include "platform/runtime/Value.h"

namespace platform {

// Sets the entry, or removes it if the value is missing or a null text. Rejects and logs a value that a
// property list cannot contain. Returns whether `values` changed.
bool changeDefault(QVariantMap *values, const QString &key, const rt::Value &value);

} // namespace platform
