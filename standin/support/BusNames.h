// The programs on the session bus: their names, and the contents of their messages.
#pragma once

#include "platform/Literals.h"
#include "platform/services/Services.h"

namespace standin {

inline void post(const QString &name, const platform::TextMap &userInfo) {
    platform::services().distributedNotifications->post(name, QString(), userInfo, true);
}
[[nodiscard]] inline bool isRunning(const QString &bundleIdentifier) {
    return platform::services().workspace->runningApplications().contains(bundleIdentifier);
}

} // namespace standin

namespace standin::names {

// Bundle identifiers; those of running programs are names on the bus.
inline const QString host = u"com.microsoft.Outlook"_s;
inline const QString client = u"com.parlo.meetings"_s;
inline const QString agent = u"com.parlo.vOutlookPluginAgent"_s;

// Notifications between the plug-in and the others.
inline const QString requestsToClient = u"VelaOutlookPluginToVelaVideoClient_PRL"_s;
inline const QString answersOfClient = u"VelaVideoClientToVelaOutlookPlugin_PRL"_s;
inline const QString requestsToAgent = u"vOutlookPluginToVOutlookPluginAgent"_s;
inline const QString answersOfAgent = u"vOutlookPluginAgentToVOutlookPlugin"_s;
inline const QString actionIdKey = u"actionId"_s;
inline const QString contentKey = u"content"_s;

// Brings the client to the front, with its start URL.
inline const QString activation = u"Noti_ActivateVelaApplicationExternally"_s;
inline const QString activationUrlKey = u"Param_ActivateVelaApplicationExternally"_s;
// Gives a running client a rule (AnswerRules.h) or an order (People.h).
inline const QString control = u"ParloMeetingsClientControl"_s;
inline const QString controlRuleKey = u"rule"_s;
// In place of a rule: the client ends itself.
inline const QString controlExit = u"exit"_s;

} // namespace standin::names
