// What may be kept among the user's defaults, wherever they are kept.
#pragma once

#include "platform/runtime/Value.h"

namespace platform {

// Sets the entry, or removes it with no value or a null text. What a property list cannot hold is refused
// with one line in the log. Whether anything is different now.
bool changeDefault(QVariantMap *values, const QString &key, const rt::Value &value);

} // namespace platform
