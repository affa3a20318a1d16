// Starts an instant meeting. The client sends no answer, so the request does not wait.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"
#include "plugin/util/sharedObject.h"

class vlAPIStartMeeting : public SharedObject<vlAPIStartMeeting>, public vlAPIBase {
public:
    vlAPIStartMeeting()
        : vlAPIBase(Kind{}) {}
    using vlAPIBase::doAction;
    // Shows an error without a parent window and returns it.
    ClientError doAction(bool withVideo);
};
