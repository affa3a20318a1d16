// How a distributed notification looks on the bus: the signal `Posted` of path
// /com/parlo/DistributedNotifications and interface com.parlo.DistributedNotifications, with the arguments
// name, sender ("" when there is none), user info: `ssa{ss}`.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <QByteArray>
#include <systemd/sd-bus.h>

namespace platform {

// Answers below 0 (-errno) when it fails; `message`, when not null, is the caller's to release either way.
[[nodiscard]] int makeNotificationSignal(sd_bus *bus, const QString &name, const QString &sender,
                                         const TextMap &userInfo, sd_bus_message **message);
// False, and nothing is set, for every other message and for malformed ones.
[[nodiscard]] bool readNotificationSignal(sd_bus_message *message, QString *name, TextMap *userInfo);
// What the bus must be asked for so that notifications of that name come; others may come with them.
[[nodiscard]] QByteArray notificationMatchRule(const QString &name);

} // namespace platform
