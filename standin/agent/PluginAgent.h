// The plug-in agent: answers the plug-in's housekeeping requests.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <QObject>

namespace pluginagent {

class PluginAgent : public QObject {
    Q_OBJECT
public:
    // Listens on the bus during its lifetime. The services must outlive it.
    explicit PluginAgent(QObject *parent = nullptr);
    ~PluginAgent() override;

    // The version of the installed meeting client; null without a client.
    [[nodiscard]] static QString clientVersion();
    // Starts the client or brings a running one to the front. Returns whether either succeeded.
    static bool launchClient();

private:
    static void onRequest(const platform::TextMap &userInfo);
    platform::ObserverId m_observer;
};

} // namespace pluginagent
