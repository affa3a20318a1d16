// Starts an instant meeting. No answer comes, so nothing is waited for.
#pragma once

#include "plugin/link/requests/vlAPIBase.h"

class vlAPIStartMeeting : public vlAPIBase {
public:
    static vlAPIStartMeeting &sharedInstance();
    vlAPIStartMeeting()
        : vlAPIBase(Kind{}) {}
    using vlAPIBase::doAction;
    // An error is shown without a window and returned.
    ClientError doAction(bool withVideo);
};
