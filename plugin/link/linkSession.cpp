#include "plugin/link/linkSession.h"

#include "plugin/link/CVlGetMeetingProtoParse.h"
#include "plugin/link/CVlGetPACProtoParse.h"
#include "plugin/link/RequestOwner.h"
#include "plugin/link/sharedObject.h"
#include "plugin/link/vlAPIMgr.h"
#include "plugin/link/vlAPIStartMeeting.h"
#include "plugin/link/vlGetClientVersionHelper.h"
#include "plugin/link/vlGetMeetingHelper.h"
#include "plugin/link/vlGetPACHelper.h"
#include "plugin/link/vlUserProfileHelper.h"

void startLinkAfresh() {
    RequestOwner::setNobody(std::make_shared<RequestOwner>());
    SharedObject<vlAPIMgr>::renew();
    SharedObject<vlAPIStartMeeting>::renew();
    SharedObject<vlGetClientVersionHelper>::renew();
    SharedObject<vlGetMeetingHelper>::renew();
    SharedObject<vlGetPACHelper>::renew();
    SharedObject<vlUserProfileHelper>::renew();
    // No bytes at all are a good, empty message.
    constexpr char noBytes[] = "";
    CVlGetMeetingProtoParse(noBytes, 0);
    CVlGetPACProtoParse(noBytes, 0);
}
