#include "platform/services/bus/DesktopNotifications.h"

#include "platform/services/bus/NotificationLimits.h"
#include "platform/services/bus/SessionBus.h"

namespace platform {

DesktopNotificationCenter::DesktopNotificationCenter(std::shared_ptr<SessionBus> bus,
                                                     std::shared_ptr<ObserverList<TextMap>> observers)
    : m_bus(std::move(bus))
    , m_observers(std::move(observers)) {}

// A running delivery has its own reference to the list.
DesktopNotificationCenter::~DesktopNotificationCenter() {
    m_observers->clear();
}

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
    return m_observers->add(name, std::move(handler));
}

void DesktopNotificationCenter::removeObserver(ObserverId observer) {
    const QString name = m_observers->remove(observer);
    if (!m_observers->observes(name))
        m_bus->stopObserving(name);
}

} // namespace platform
