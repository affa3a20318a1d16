// Asks for the user's personal audio-conference accounts.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

// Keeps the accounts in vlGetPACHelper and hands back without data. An error is said; then nothing changes.
class vlAPIGetPAC : public vlAPIBase {
public:
    explicit vlAPIGetPAC(decltype(Kind::sendResponse) sendResponse = nullptr);
    // Does nothing, and no answer will come, when the client is too old for such accounts.
    ClientError doAction(QWidget *window) override;

protected:
    bool handle(const PendingRequest &request, const Answer &answer) override;
    void handleUnasked(const Answer &answer) override;
};
