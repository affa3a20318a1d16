#include "plugin/link/channel/vlIPCChannel.h"

#include "platform/services/Services.h"
#include "plugin/link/meetingKeys.h"

namespace {

void postEnvelope(const QString &channel, quint32 actionId, const QString &content) {
    platform::TextMap envelope{{VL_IPC_ACTION_ID, QString::number(actionId)}};
    if (!content.isNull())
        envelope.insert(VL_IPC_CONTENT, content);
    constexpr bool deliverImmediately = true;
    platform::services().distributedNotifications->post(channel, QString(), envelope, deliverImmediately);
}

} // namespace

void vlIPCChannel::sendIPCMessageToVelaClient(quint32 actionId, const QString &content) {
    postEnvelope(kIPCNotifyOutlookPluginToVelaClient, actionId, content);
}

void vlIPCChannel::sendIPCMessageToPluginAgent(quint32 actionId, const QString &content) {
    platform::Workspace &workspace = *platform::services().workspace;
    if (!workspace.runningApplications().contains(kVlPluginAgentIdentify))
        workspace.launchApplication(kVlPluginAgentIdentify);
    postEnvelope(VL_IPC_OUTLOOKPLUGIN_TO_PLUGINAGENT, actionId, content);
}
