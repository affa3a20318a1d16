// The channels to the meeting client and to the agent.
#pragma once

#include "platform/Literals.h"

#include <QString>

// Names of the distributed notifications. Each stands for one direction between two programs.
inline const QString kIPCNotifyOutlookPluginToVelaClient = u"VelaOutlookPluginToVelaVideoClient_PRL"_s;
inline const QString kIPCNotifyVelaClientToOutlookPlugin = u"VelaVideoClientToVelaOutlookPlugin_PRL"_s;
inline const QString VL_IPC_OUTLOOKPLUGIN_TO_PLUGINAGENT = u"vOutlookPluginToVOutlookPluginAgent"_s;
inline const QString VL_IPC_PLUGINAGENT_TO_OUTLOOKPLUGIN = u"vOutlookPluginAgentToVOutlookPlugin"_s;
// Used between the client and the agent only.
inline const QString kIPCNotifyVelaClientToOutlookPluginAgent = u"VelaVideoClientToOutlookPluginAgent_PRL"_s;
// Brings a running client to the front. Its message has no envelope.
inline const QString kNoti_ActivateVelaApplicationExternally = u"Noti_ActivateVelaApplicationExternally"_s;
inline const QString kParam_ActivateVelaApplicationExternally = u"Param_ActivateVelaApplicationExternally"_s;

inline const QString kVlPluginAgentIdentify = u"com.parlo.vOutlookPluginAgent"_s;

// Posts {"actionId": decimal, "content": text}; a null content leaves its entry out. Returns at once. A
// message without a listener is lost silently.
class vlIPCChannel {
public:
    static void sendIPCMessageToVelaClient(quint32 actionId, const QString &content);
    // First starts the agent if it is installed but not running.
    static void sendIPCMessageToPluginAgent(quint32 actionId, const QString &content);
};
