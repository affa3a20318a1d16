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

// Notifications inside the process, delivered before post() returns, in the order of registration. A delivery
// does not call observers that were added or removed during it. Exceptions of a handler are caught.
class NotificationCenter {
public:
    using Handler = std::function<void(const QString &name, const QVariantMap &userInfo)>;

    void post(const QString &name, const QVariantMap &userInfo) { m_observers.deliver(name, userInfo); }
    [[nodiscard]] ObserverId addObserver(const QString &name, Handler handler) {
        return m_observers.add(name, std::move(handler));
    }
    void removeObserver(ObserverId observer) { m_observers.remove(observer); }

private:
    ObserverList<QVariantMap> m_observers;
};

} // namespace platform
