// A registration for messages that come in.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <functional>
#include <memory>

// Observes one name for as long as it lives. It may outlive the services that it was made on.
class ChannelObserver {
public:
    ChannelObserver(const QString &name, std::function<void(const platform::TextMap &userInfo)> handler);
    ~ChannelObserver();
    ChannelObserver(const ChannelObserver &) = delete;
    ChannelObserver &operator=(const ChannelObserver &) = delete;

private:
    std::weak_ptr<bool> m_registered; // expires together with the centre that holds the registration
    platform::ObserverId m_id = 0;
};

// The action id of an envelope: its number, cut to an integer; 0 when it is missing or no number.
[[nodiscard]] qint64 envelopeActionId(const platform::TextMap &userInfo);
// The content of an envelope; null when there is none.
[[nodiscard]] QString envelopeContent(const platform::TextMap &userInfo);
