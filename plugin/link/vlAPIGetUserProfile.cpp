#include "plugin/link/vlAPIGetUserProfile.h"

#include "platform/runtime/Value.h"
#include "plugin/link/feedbackErrors.h"
#include "plugin/link/requestHandBack.h"
#include "plugin/link/vlIPCChannel.h"
#include "plugin/link/vlUserProfileHelper.h"
#include "plugin/util/vlOLUtils.h"

ClientError vlAPIGetUserProfile::doAction(QWidget *window) {
    m_parentWindow = window;
    const ClientError error = action(window);
    if (error == ClientError::None) {
        constexpr auto actionId = quint32(ClientAction::GetUserProfile);
        vlIPCChannel::sendIPCMessageToVelaClient(actionId, QString::number(actionId));
    }
    return error;
}

ClientError vlAPIGetUserProfile::CheckFeedbackError(const QString &content) {
    const ClientError error = checkVelaAppError();
    return error == ClientError::None ? profileFeedbackError(content) : error;
}

void vlAPIGetUserProfile::onVelaFeedback(const QString &content) {
    onfeedback(qint32(ClientAnswer::GetUserProfile), content);
    const ClientError error = CheckFeedbackError(content);
    if (error != ClientError::None) {
        popupErrorMsg(m_parentWindow, error);
        return;
    }
    const rt::Value parsed = vlOLUtils::toArrayOrNSDictionary(content);
    const bool isDictionary = parsed.typeId() == QMetaType::QVariantMap;
    vlUserProfileHelper::sharedInstance().setUserProfile(rt::mapValue(parsed));
    handBackToMeetingMgr(m_parentWindow, MeetingCommand::CmdGetUserProfileDone,
                         isDictionary ? parsed : rt::Value());
}
