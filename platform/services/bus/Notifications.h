// Named notifications: between the processes of one user, and inside one process.
#pragma once

#include "platform/services/bus/ObserverList.h"

#include <QMap>
#include <QString>
#include <QVariantMap>

namespace platform {

// What came with a distributed notification. An entry that was not sent is not in the map.
using TextMap = QMap<QString, QString>;

// Notifications between processes. Posting never fails as far as the caller sees: what cannot be sent (a text
// with an embedded NUL, more than maximumSize bytes, no bus) is dropped with one line in the log. Delivery is
// on the main thread, from the event loop, never from inside post(); order is kept for one sender. A poster
// that observes the name receives its own notification too. Main thread only.
class DistributedNotificationCenter {
public:
    using Handler = std::function<void(const QString &name, const TextMap &userInfo)>;
    // The sum of the UTF-8 bytes of all names and values of one notification that is still sent.
    static constexpr qint64 maximumSize = qint64(16) * 1024 * 1024;

    virtual ~DistributedNotificationCenter() = default;
    // `sender` may be null: no sender object.
    virtual void post(const QString &name, const QString &sender, const TextMap &userInfo,
                      bool deliverImmediately) = 0;
    // Calls the handler for every notification of that name by any sender until removed. Nothing that the
    // handler throws gets out of the centre. A registration outlives the loss of the bus and works again when
    // it is back.
    [[nodiscard]] virtual ObserverId addObserver(const QString &name, Handler handler) = 0;
    virtual void removeObserver(ObserverId observer) = 0; // unknown and 0 are ignored
};

// Notifications inside the process, delivered before post() returns, in the order of registration. Observers
// added during a delivery are not called by it; removed ones are not called any more. Nothing that a handler
// throws gets out.
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
