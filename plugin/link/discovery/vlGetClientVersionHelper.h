// Finds out the meeting client's version.
#pragma once

#include "platform/services/bus/Notifications.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <memory>

class ChannelObserver;

// Listens for the agent's answers during its lifetime. Main thread only.
class vlGetClientVersionHelper : public SharedObject<vlGetClientVersionHelper> {
public:
    vlGetClientVersionHelper();
    ~vlGetClientVersionHelper();
    vlGetClientVersionHelper(const vlGetClientVersionHelper &) = delete;
    vlGetClientVersionHelper &operator=(const vlGetClientVersionHelper &) = delete;

    // Asks the agent, whose answer is stored in the site configuration.
    void getClientVersion();
    void onMessageResponseFromPluginAgent(const platform::TextMap &userInfo);

    static void saveClientVersionToLocal(const QString &version);
    // The version of the client's bundle, else the version in the site configuration; null or "" if both are
    // unknown.
    [[nodiscard]] static QString getVelaClientVersion();

private:
    std::unique_ptr<ChannelObserver> m_answers;
};
