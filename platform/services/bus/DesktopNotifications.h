// Distributed notifications over the session bus.
#pragma once

#include "platform/services/bus/Notifications.h"
#include "platform/services/bus/SessionBus.h"

#include <memory>

namespace platform {

class DesktopNotificationCenter : public DistributedNotificationCenter {
public:
    // Claims `ownName` as SessionBus does.
    explicit DesktopNotificationCenter(const QString &ownName);
    void post(const QString &name, const QString &sender, const TextMap &userInfo,
              bool deliverImmediately) override;
    [[nodiscard]] ObserverId addObserver(const QString &name, Handler handler) override;
    void removeObserver(ObserverId observer) override;

    // For services that query the bus. It calls this object, so they must not read it after this is
    // destroyed.
    [[nodiscard]] const std::shared_ptr<SessionBus> &bus() const { return m_bus; }

private:
    ObserverList<TextMap> m_observers;
    std::shared_ptr<SessionBus> m_bus;
};

} // namespace platform
