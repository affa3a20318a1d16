#include "platform/services/bus/DesktopNotifications.h"

namespace platform {

DesktopNotificationCenter::DesktopNotificationCenter(const QString &ownName)
    : m_bus(std::make_shared<SessionBus>(ownName, [this](const QString &name, const TextMap &userInfo) {
        m_observers.post(name, userInfo);
    })) {}

void DesktopNotificationCenter::post(const QString &name, const QString &sender, const TextMap &userInfo,
                                     bool /*deliverImmediately: the bus never holds anything back*/) {
    QString refusal = refusalOf(name, sender, userInfo);
    if (refusal.isNull())
        refusal = m_bus->send(name, sender, userInfo);
    if (!refusal.isNull())
        qWarning("notification \"%s\" dropped: %s", qPrintable(name), qPrintable(refusal));
}

ObserverId DesktopNotificationCenter::addObserver(const QString &name, Handler handler) {
    m_bus->observe(name);
    return m_observers.addObserver(name, std::move(handler));
}

void DesktopNotificationCenter::removeObserver(ObserverId observer) {
    const QString name = m_observers.removeObserver(observer);
    if (!m_observers.observes(name))
        m_bus->stopObserving(name);
}

} // namespace platform
