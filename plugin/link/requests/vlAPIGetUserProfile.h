// Asks for the signed-in user's profile.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

// Stores the profile in vlUserProfileHelper (an empty one if the answer is not a dictionary) and delivers it.
class vlAPIGetUserProfile : public vlAPIBase {
public:
    explicit vlAPIGetUserProfile(decltype(Kind::sendResponse) sendResponse = nullptr);

protected:
    [[nodiscard]] Answer decoded(const QString &content) const override;
    bool handle(const PendingRequest &request, const Answer &answer) override;
    void handleUnasked(const Answer &answer) override;
};
