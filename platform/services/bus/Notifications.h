// Named notifications: between the processes of one user, and inside one process.
#pragma once

#include "platform/services/bus/ObserverList.h"

#include <QMap>
#include <QString>
#include <QVariantMap>

namespace platform {

// The user info of a distributed notification. Entries that were not sent are missing.
using TextMap = QMap<QString, QString>;

// Notifications between processes. Posting reports no errors: a notification that cannot be sent (a text with
// an embedded NUL, more than maximumSize bytes, no bus) is dropped and logged in one line. The event loop
// delivers on the main thread, never from inside post(), and keeps the order of each sender. A poster that
// observes the name receives its own notification too. Main thread only.
class DistributedNotificationCenter {
public:
    using Handler = std::function<void(const QString &name, const TextMap &userInfo)>;
    // The largest sum of UTF-8 bytes of all names and values of one notification.
    static constexpr qint64 maximumSize = qint64(16) * 1024 * 1024;

    virtual ~DistributedNotificationCenter() = default;
    // `sender` may be null: no sender object.
    virtual void post(const QString &name, const QString &sender, const TextMap &userInfo,
                      bool deliverImmediately) = 0;
    // Calls the handler for every notification of that name from any sender until it is removed. Exceptions
    // of the handler are caught. A registration survives the loss of the bus and works again after
    // reconnection.
    [[nodiscard]] virtual ObserverId addObserver(const QString &name, Handler handler) = 0;
    virtual void removeObserver(ObserverId observer) = 0; // unknown and 0 are ignored
};

// The reason why the notification cannot be sent by any transport; null if it can.
[[nodiscard]] QString refusalOf(const QString &name, const QString &sender, const TextMap &userInfo);
// The text as it arrives. U+FFFD replaces what a bus does not carry: noncharacters (U+FDD0 to U+FDEF and the
// last two code points of each plane) and lone surrogates.
[[nodiscard]] QString carriedText(const QString &text);

// Notifications inside the process, delivered before post() returns.
using NotificationCenter = ObserverList<QVariantMap>;

} // namespace platform
