// Distributed notifications over the session bus.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <memory>

namespace platform {

class SessionBus;

// Shares the observers and the bus with their creator, because the bus's receiver delivers to the observers.
class DesktopNotificationCenter : public DistributedNotificationCenter {
public:
    DesktopNotificationCenter(std::shared_ptr<SessionBus> bus,
                              std::shared_ptr<ObserverList<TextMap>> observers);
    ~DesktopNotificationCenter() override;
    void post(const QString &name, const QString &sender, const TextMap &userInfo,
              bool deliverImmediately) override;
    [[nodiscard]] ObserverId addObserver(const QString &name, Handler handler) override;
    void removeObserver(ObserverId observer) override;

private:
    std::shared_ptr<SessionBus> m_bus;
    std::shared_ptr<ObserverList<TextMap>> m_observers;
};

} // namespace platform
