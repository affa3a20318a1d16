#include "plugin/workflow/recordWriteBack.h"

#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlECMutableCalendarEvent.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlGetMeetingHelper.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlPACMeetingMgr.h"

namespace {

void fillEmptySubject(const vlECMutableCalendarEvent &record) {
    const vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
    if (!meeting.hasMeetingInfo() || !vlOLUtils::trimRLSpace(record.summary()).isEmpty())
        return;
    const QVariantMap apptInfo = rt::mapValue(meeting.getMeetingInfo().value(vl_Outlook_ApptInfo));
    const QString subject = rt::textValue(apptInfo.value(vl_ApptInfo_Subject));
    if (!subject.isNull())
        record.setSummary(subject);
}

// With several editors open, or a change on the calendar, another appointment may be stored before the one
// that something is meant for. What does not say which it is counts as meant.
bool isMeantFor(const QString &appointment, rt::Object *record) {
    const QString stored = rt::textValue(rt::send(record, rt::Selector(olItem_UUID)));
    return appointment.isEmpty() || stored.isEmpty() || stored == appointment;
}

bool isWriteBackFor(rt::Object *record) {
    return isMeantFor(vlMeetingMgr::sharedInstance().writtenAppointment(), record);
}

} // namespace

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
    if (!isWriteBackFor(record))
        return;
    vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
    const vlECMutableCalendarEvent adapter(record);
    if (!manager.getOLNewLocation().isNull() && needUpdateLocation(record))
        adapter.setLocation(manager.getOLNewLocation());
    fillEmptySubject(adapter);
    manager.cleanVlInfoForUpdApptInfo();
}

void updateVlKeyInfoToAppointmentForPAC(rt::Object *record) {
    const vlPACMeetingMgr &conferences = vlPACMeetingMgr::sharedInstance();
    if (conferences.isAwaited() || !isMeantFor(conferences.appointment(), record))
        return cleanVlKeyInfoFromAppointment(record);
    const vlECMutableCalendarEvent adapter(record);
    const QString location = adapter.location();
    const QString newLocation = conferences.getNewLocationForPAC(location);
    if (!newLocation.isNull() && newLocation != location)
        adapter.setLocation(newLocation);
    if (isWriteBackFor(record))
        vlMeetingMgr::sharedInstance().cleanVlInfoForUpdApptInfo();
}

void cleanVlKeyInfoFromAppointment(rt::Object *record) {
    if (!isWriteBackFor(record))
        return;
    vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
    if (manager.needClearLocation())
        vlECMutableCalendarEvent(record).setLocation(QStringLiteral(""));
    manager.cleanVlInfoForUpdApptInfo();
}
