#include "plugin/link/linkSession.h"

#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/RequestOwner.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/link/requests/vlAPIStartMeeting.h"

void startLinkAfresh() {
    RequestOwner::setNobody(std::make_shared<RequestOwner>());
    SharedObject<vlAPIMgr>::renew();
    SharedObject<vlAPIStartMeeting>::renew();
    SharedObject<vlGetClientVersionHelper>::renew();
    SharedObject<vlGetMeetingHelper>::renew();
    SharedObject<vlGetPACHelper>::renew();
    SharedObject<vlUserProfileHelper>::renew();
}
