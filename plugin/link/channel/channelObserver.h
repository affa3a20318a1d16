// A registration for incoming messages.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <functional>
#include <memory>

// Observes one name during its lifetime. It may outlive the services with which it registered.
class ChannelObserver {
public:
    ChannelObserver(const QString &name, std::function<void(const platform::TextMap &userInfo)> handler);
    ~ChannelObserver();
    ChannelObserver(const ChannelObserver &) = delete;
    ChannelObserver &operator=(const ChannelObserver &) = delete;

private:
    std::weak_ptr<bool> m_registered; // expires with the centre that holds the registration
    platform::ObserverId m_id = 0;
};

// The action id of an envelope, truncated to an integer; 0 if it is missing or not a number.
[[nodiscard]] qint64 envelopeActionId(const platform::TextMap &userInfo);
// The content of an envelope; null if it has none.
[[nodiscard]] QString envelopeContent(const platform::TextMap &userInfo);
