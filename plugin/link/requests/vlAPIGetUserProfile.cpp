#include "plugin/link/requests/vlAPIGetUserProfile.h"

#include "platform/runtime/Value.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/feedbackErrors.h"
#include "plugin/util/vlOLUtils.h"

vlAPIGetUserProfile::vlAPIGetUserProfile(decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase({ClientAction::GetUserProfile, ClientAnswer::GetUserProfile, profileFeedbackError, true, true,
                 sendResponse}) {}

bool vlAPIGetUserProfile::handle(const PendingRequest &, const QString &content) {
    handleUnasked(content);
    const rt::Value parsed = vlOLUtils::toArrayOrNSDictionary(content);
    const bool isDictionary = parsed.typeId() == QMetaType::QVariantMap;
    sendResponse(MeetingCommand::CmdGetUserProfileDone, isDictionary ? parsed : rt::Value());
    return true;
}

void vlAPIGetUserProfile::handleUnasked(const QString &content) {
    vlUserProfileHelper::sharedInstance().setUserProfile(
        rt::mapValue(vlOLUtils::toArrayOrNSDictionary(content)));
}
