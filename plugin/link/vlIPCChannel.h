// The channels to the meeting client and to the agent.
#pragma once

#include <QString>

// Names of the distributed notifications, each the name of one direction between two programs.
inline const QString kIPCNotifyOutlookPluginToVelaClient =
    QStringLiteral("VelaOutlookPluginToVelaVideoClient_PRL");
inline const QString kIPCNotifyVelaClientToOutlookPlugin =
    QStringLiteral("VelaVideoClientToVelaOutlookPlugin_PRL");
inline const QString VL_IPC_OUTLOOKPLUGIN_TO_PLUGINAGENT =
    QStringLiteral("vOutlookPluginToVOutlookPluginAgent");
inline const QString VL_IPC_PLUGINAGENT_TO_OUTLOOKPLUGIN =
    QStringLiteral("vOutlookPluginAgentToVOutlookPlugin");
// Between the other two programs; the plug-in has no part in it.
inline const QString kIPCNotifyVelaClientToOutlookPluginAgent =
    QStringLiteral("VelaVideoClientToOutlookPluginAgent_PRL");
// Brings a running client to the front. Does not use the envelope.
inline const QString kNoti_ActivateVelaApplicationExternally =
    QStringLiteral("Noti_ActivateVelaApplicationExternally");
inline const QString kParam_ActivateVelaApplicationExternally =
    QStringLiteral("Param_ActivateVelaApplicationExternally");

// Posts {"actionId": decimal, "content": text}; a null content leaves its entry out. Returns at once; what
// nobody hears is lost without a sign.
class vlIPCChannel {
public:
    static void sendIPCMessageToVelaClient(quint32 actionId, const QString &content);
    static void sendIPCMessageToPluginAgent(quint32 actionId, const QString &content);
};
