// The XML form of property lists.
#pragma once

#include "platform/runtime/Value.h"

#include <QByteArray>

namespace platform {

// No value when the bytes are not one whole well-formed property list.
[[nodiscard]] rt::Value fromXmlPropertyList(const QByteArray &bytes);
// Empty when the value, or something in it, has no place in a property list or lies too deep.
[[nodiscard]] QByteArray toXmlPropertyList(const rt::Value &value);

} // namespace platform
