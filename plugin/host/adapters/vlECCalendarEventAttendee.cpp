#include "plugin/host/adapters/vlECCalendarEventAttendee.h"

#include "plugin/host/adapters/hostNames.h"
#include "plugin/link/meetingKeys.h"

vlECCalendarEventAttendee::vlECCalendarEventAttendee(rt::Object *attendee)
    : vlDelegateBase(key_vlECCalendarEventAttendee, attendee) {}

QString vlECCalendarEventAttendee::name() const {
    return rt::textValue(getOLItemID(olItem_name));
}

QString vlECCalendarEventAttendee::emailAddress() const {
    return rt::textValue(getOLItemID(olItem_emailAddress));
}

qint32 vlECCalendarEventAttendee::attendeeType() const {
    return qint32(rt::integerValue(getOLItemID(olItem_attendeeType)));
}

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
