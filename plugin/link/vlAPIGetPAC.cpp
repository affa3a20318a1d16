#include "plugin/link/vlAPIGetPAC.h"

#include "plugin/link/feedbackErrors.h"
#include "plugin/link/requestHandBack.h"
#include "plugin/link/vlClientFeatureMgr.h"
#include "plugin/link/vlGetPACHelper.h"
#include "plugin/link/vlIPCChannel.h"
#include "plugin/link/vlUserProfileHelper.h"

ClientError vlAPIGetPAC::doAction(QWidget *window) {
    if (!vlClientFeatureMgr::sharedInstance().isVelaClientSupportPACAndNoVideo())
        return ClientError::None;
    m_parentWindow = window;
    const ClientError error = action(window);
    if (error == ClientError::None) {
        constexpr auto actionId = quint32(ClientAction::GetPAC);
        vlIPCChannel::sendIPCMessageToVelaClient(actionId, QString::number(actionId));
    }
    return error;
}

ClientError vlAPIGetPAC::CheckFeedbackError(const QString &content) {
    const ClientError error = checkVelaAppError();
    return error == ClientError::None ? accountsFeedbackError(content) : error;
}

void vlAPIGetPAC::onVelaFeedback(const QString &content) {
    onfeedback(qint32(ClientAnswer::GetPAC), content);
    const ClientError error = CheckFeedbackError(content);
    if (error != ClientError::None) {
        popupErrorMsg(m_parentWindow, error);
        return;
    }
    vlGetPACHelper::sharedInstance().setPACInfo(content);
    // Only now: after a request that failed, the accounts of the user before are still the ones in memory.
    vlUserProfileHelper::sharedInstance().setAccountChangedFlag(false);
    handBackToMeetingMgr(m_parentWindow, MeetingCommand::CmdGetAudioConferenceDone, rt::Value());
}
