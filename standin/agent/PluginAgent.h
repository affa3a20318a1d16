// The plug-in agent: answers the plug-in's housekeeping requests.
#pragma once

#include "platform/services/bus/Notifications.h"

namespace pluginagent {

// Listens on the bus during its lifetime: tells the version of the installed meeting client, and starts the
// client or brings a running one to the front. The services must outlive it.
class PluginAgent {
public:
    PluginAgent();
    ~PluginAgent();

private:
    platform::ObserverId m_observer;
};

} // namespace pluginagent
