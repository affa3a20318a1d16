#include "plugin/host/adapters/vlECCalendarEventAttendee.h"

#include "plugin/link/meetingKeys.h"

QVariantMap vlECCalendarEventAttendee::getVlMeetingData() const {
    QVariantMap record;
    const QString attendeeName = name();
    if (attendeeName.isNull())
        return record;
    record.insert(vl_ApptInfo_AttendeeName, attendeeName);
    const QString address = emailAddress();
    if (address.isNull())
        return record;
    record.insert(vl_ApptInfo_AttendeeEmail, address);
    record.insert(vl_ApptInfo_AttendeeType, QString::number(attendeeType()));
    return record;
}
