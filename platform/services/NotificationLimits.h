// What one distributed notification may hold, whatever carries it.
#pragma once

#include "platform/services/Notifications.h"

namespace platform {

// Why the notification cannot be sent; a null text when it can.
[[nodiscard]] QString refusalOf(const QString &name, const QString &sender, const TextMap &userInfo);

} // namespace platform
