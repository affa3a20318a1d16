// Asks for the user's personal audio-conference accounts.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

// Stores the accounts in vlGetPACHelper and delivers a result without data. An error is shown and changes
// nothing.
class vlAPIGetPAC : public vlAPIBase {
public:
    explicit vlAPIGetPAC(decltype(Kind::sendResponse) sendResponse = nullptr);
    // Does nothing if the client is too old for such accounts; then no answer will come.
    ClientError doAction(QWidget *window) override;

protected:
    bool handle(const PendingRequest &request, const Answer &answer) override;
    void handleUnasked(const Answer &answer) override;
};
