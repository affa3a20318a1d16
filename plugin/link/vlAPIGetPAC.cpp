#include "plugin/link/vlAPIGetPAC.h"

#include "plugin/link/feedbackErrors.h"
#include "plugin/link/vlClientFeatureMgr.h"
#include "plugin/link/vlGetPACHelper.h"

vlAPIGetPAC::vlAPIGetPAC(decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase(
          {ClientAction::GetPAC, ClientAnswer::GetPAC, accountsFeedbackError, true, false, sendResponse}) {}

ClientError vlAPIGetPAC::doAction(QWidget *window) {
    if (!vlClientFeatureMgr::sharedInstance().isVelaClientSupportPACAndNoVideo())
        return ClientError::None;
    return vlAPIBase::doAction(window);
}

bool vlAPIGetPAC::handle(const PendingRequest &, const QString &content) {
    handleUnasked(content);
    sendResponse(MeetingCommand::CmdGetAudioConferenceDone, {});
    return true;
}

void vlAPIGetPAC::handleUnasked(const QString &content) {
    vlGetPACHelper::sharedInstance().setPACInfo(content);
}
