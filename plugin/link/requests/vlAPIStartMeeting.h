// Starts an instant meeting. No answer comes, so nothing is waited for.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"
#include "plugin/util/sharedObject.h"

class vlAPIStartMeeting : public SharedObject<vlAPIStartMeeting>, public vlAPIBase {
public:
    vlAPIStartMeeting()
        : vlAPIBase(Kind{}) {}
    using vlAPIBase::doAction;
    // An error is shown without a window and returned.
    ClientError doAction(bool withVideo);
};
