#include "platform/services/bus/Notifications.h"

namespace platform {

void NotificationCenter::post(const QString &name, const QVariantMap &userInfo) {
    // Copies: the caller's may be gone before the last handler has run.
    const QString postedName = name;
    const QVariantMap postedInfo = userInfo;
    m_observers.deliver(postedName, postedInfo);
}

ObserverId NotificationCenter::addObserver(const QString &name, Handler handler) {
    return m_observers.add(name, std::move(handler));
}

void NotificationCenter::removeObserver(ObserverId observer) {
    m_observers.remove(observer);
}

} // namespace platform
