#include "plugin/link/requests/vlAPIGetPAC.h"

#include "plugin/link/discovery/vlClientFeatureMgr.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/requests/feedbackErrors.h"

vlAPIGetPAC::vlAPIGetPAC(decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase(
          {ClientAction::GetPAC, ClientAnswer::GetPAC, accountsFeedbackError, true, false, sendResponse}) {}

ClientError vlAPIGetPAC::doAction(QWidget *window) {
    if (!vlClientFeatureMgr::sharedInstance().isVelaClientSupportPACAndNoVideo())
        return ClientError::None;
    return vlAPIBase::doAction(window);
}

bool vlAPIGetPAC::handle(const PendingRequest &, const Answer &answer) {
    handleUnasked(answer);
    sendResponse(MeetingCommand::CmdGetAudioConferenceDone, {});
    return true;
}

void vlAPIGetPAC::handleUnasked(const Answer &answer) {
    vlGetPACHelper::sharedInstance().setPACInfo(answer.content);
}
