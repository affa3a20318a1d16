// The form of a distributed notification on the bus: the signal `Posted` of path
// /com/parlo/DistributedNotifications and interface com.parlo.DistributedNotifications, with the arguments
// name, sender ("" if there is none), user info: `ssa{ss}`.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <QByteArray>
#include <systemd/sd-bus.h>

namespace platform {

// Returns a negative value (-errno) on failure. The caller releases `message` in both cases if it is not
// null.
[[nodiscard]] int makeNotificationSignal(sd_bus *bus, const QString &name, const QString &sender,
                                         const TextMap &userInfo, sd_bus_message **message);
// Returns false and sets nothing for other and for malformed messages.
[[nodiscard]] bool readNotificationSignal(sd_bus_message *message, QString *name, TextMap *userInfo);
// The match rule for notifications of that name; it may also match others.
[[nodiscard]] QByteArray notificationMatchRule(const QString &name);

} // namespace platform
