// The binary form of property lists, for reading only.
#pragma once

#include "platform/runtime/Value.h"

#include <QByteArray>

namespace platform {

[[nodiscard]] bool isBinaryPropertyList(const QByteArray &bytes);
// No value when the bytes are not one whole well-formed property list.
[[nodiscard]] rt::Value fromBinaryPropertyList(const QByteArray &bytes);

} // namespace platform
