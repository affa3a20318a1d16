// What one distributed notification may hold, whatever carries it.
#pragma once

#include "platform/services/bus/Notifications.h"

namespace platform {

// Why the notification cannot be sent; a null text when it can.
[[nodiscard]] QString refusalOf(const QString &name, const QString &sender, const TextMap &userInfo);
// The text as it arrives: with U+FFFD for what a bus does not carry, the code points that are no characters
// (U+FDD0 to U+FDEF and the last two of each plane) and halves of surrogate pairs.
[[nodiscard]] QString carriedText(const QString &text);

} // namespace platform
