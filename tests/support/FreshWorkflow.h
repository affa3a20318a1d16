// A plug-in that begins anew inside one process, which the real one never does.
#pragma once

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/CalendarChanges.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlPACMeetingMgr.h"

// Forgets all that the workflow keeps. For a test or a simulation that puts other services in place: the
// singletons are recreated on next use, with the services set at that time. Existing references become
// invalid, and the ports of lower layers that lead to them are emptied.
inline void startWorkflowAfresh() {
    RequestOwner::setNobody(MeetingContext::make());
    SharedObject<CalendarChanges>::renew();
    SharedObject<vlMeetingMgr>::renew();
    SharedObject<vlMeetingDataMgr>::renew();
    SharedObject<vlPACMeetingMgr>::renew();
    SharedObject<vlApptUIActionMgr>::renew();
    SharedObject<vlCalendarActionMgr>::renew();
}
