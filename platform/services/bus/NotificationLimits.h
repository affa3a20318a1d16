// The limits of a distributed notification, for every transport.
#pragma once

#include "platform/services/bus/Notifications.h"

namespace platform {

// The reason why the notification cannot be sent; null if it can.
[[nodiscard]] QString refusalOf(const QString &name, const QString &sender, const TextMap &userInfo);
// The text as it arrives. U+FFFD replaces what a bus does not carry: noncharacters (U+FDD0 to U+FDEF and the
// last two code points of each plane) and lone surrogates.
[[nodiscard]] QString carriedText(const QString &text);

} // namespace platform
