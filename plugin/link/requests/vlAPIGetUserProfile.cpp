#include "plugin/link/requests/vlAPIGetUserProfile.h"

#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/feedbackErrors.h"

vlAPIGetUserProfile::vlAPIGetUserProfile(decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase({ClientAction::GetUserProfile, ClientAnswer::GetUserProfile, profileFeedbackError, true, true,
                 sendResponse}) {}

vlAPIGetUserProfile::Answer vlAPIGetUserProfile::decoded(const QString &content) const {
    return {content, {}, dictionaryIn(content)};
}

bool vlAPIGetUserProfile::handle(const PendingRequest &, const Answer &answer) {
    handleUnasked(answer);
    sendResponse(MeetingCommand::CmdGetUserProfileDone, answer.dictionary);
    return true;
}

void vlAPIGetUserProfile::handleUnasked(const Answer &answer) {
    vlUserProfileHelper::sharedInstance().setUserProfile(rt::mapValue(answer.dictionary));
}
