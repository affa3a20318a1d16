#include "plugin/workflow/workflowSession.h"

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/CalendarChanges.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlPACMeetingMgr.h"

void startWorkflowAfresh() {
    RequestOwner::setNobody(MeetingContext::make());
    SharedObject<CalendarChanges>::renew();
    SharedObject<vlMeetingMgr>::renew();
    SharedObject<vlMeetingDataMgr>::renew();
    SharedObject<vlPACMeetingMgr>::renew();
    SharedObject<vlApptUIActionMgr>::renew();
    SharedObject<vlCalendarActionMgr>::renew();
}
