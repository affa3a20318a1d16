#include "plugin/workflow/recordWriteBack.h"

#include "plugin/host/adapters/vlECMutableCalendarEvent.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/appointmentText.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlPACMeetingMgr.h"

bool needUpdateLocation(rt::Object *record) {
    const vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
    const QString location = vlECMutableCalendarEvent(record).location();
    if (location.isNull())
        return true;
    if (manager.getOLNewLocation().isNull() || manager.getOLNewLocation() == location)
        return false;
    if (manager.getJoinURLFromProperty().isNull())
        return !location.contains(manager.getVlLocation());
    return manager.getVlLocation() != manager.getJoinURLFromProperty();
}

void updateVlKeyInfoToAppointment(rt::Object *record) {
    vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
    const vlECMutableCalendarEvent adapter(record);
    if (!manager.getOLNewLocation().isNull() && needUpdateLocation(record))
        adapter.setLocation(manager.getOLNewLocation());
    const vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
    if (meeting.hasMeetingInfo())
        fillEmptySubject(adapter, vlOLUtils::trimRLSpace(adapter.summary()), meeting.getMeetingInfo());
    manager.cleanVlInfoForUpdApptInfo();
}

void updateVlKeyInfoToAppointmentForPAC(rt::Object *record) {
    const vlPACMeetingMgr &conferences = vlPACMeetingMgr::sharedInstance();
    if (!MeetingContext::atHand().isPACApplied) // not answered yet, or unusable (an alert said so)
        return cleanVlKeyInfoFromAppointment(record);
    const vlECMutableCalendarEvent adapter(record);
    const QString location = adapter.location();
    const QString newLocation = conferences.getNewLocationForPAC(location);
    if (newLocation != location)
        adapter.setLocation(newLocation);
    vlMeetingMgr::sharedInstance().cleanVlInfoForUpdApptInfo();
}

void cleanVlKeyInfoFromAppointment(rt::Object *record) {
    vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
    if (manager.needClearLocation())
        vlECMutableCalendarEvent(record).setLocation(u""_s);
    manager.cleanVlInfoForUpdApptInfo();
}
