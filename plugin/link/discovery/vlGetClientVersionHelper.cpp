#include "plugin/link/discovery/vlGetClientVersionHelper.h"

#include "plugin/link/channel/channelObserver.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/util/vlFileUtils.h"

vlGetClientVersionHelper::vlGetClientVersionHelper()
    : m_answers(std::make_unique<ChannelObserver>(
          VL_IPC_PLUGINAGENT_TO_OUTLOOKPLUGIN,
          [this](const platform::TextMap &userInfo) { onMessageResponseFromPluginAgent(userInfo); })) {}

vlGetClientVersionHelper::~vlGetClientVersionHelper() = default;

void vlGetClientVersionHelper::getClientVersion() {
    constexpr auto actionId = quint32(AgentAction::GetClientVersion);
    vlIPCChannel::sendIPCMessageToPluginAgent(actionId, QString::number(actionId));
}

void vlGetClientVersionHelper::onMessageResponseFromPluginAgent(const platform::TextMap &userInfo) {
    if (envelopeActionId(userInfo) == qint64(AgentAction::GetClientVersion))
        saveClientVersionToLocal(envelopeContent(userInfo));
}

void vlGetClientVersionHelper::saveClientVersionToLocal(const QString &version) {
    if (!version.isNull())
        vlMeetingCommon::setSiteConfigMember(vl_LocalProfile_VelaClientVersion, version);
}

QString vlGetClientVersionHelper::getVelaClientVersion() {
    const QString version = vlGetFileVersion(vlAppHelper::sharedInstance().getVelaClientBundlePath());
    if (!version.isEmpty() || vlMeetingCommon::siteConfigText().isEmpty())
        return version;
    return rt::textValue(vlMeetingCommon::siteConfigMember(vl_LocalProfile_VelaClientVersion));
}
