// A person or a room invited to an appointment.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

#include <QVariantMap>

class vlECCalendarEventAttendee : public vlDelegateBase {
public:
    explicit vlECCalendarEventAttendee(rt::Object *attendee)
        : vlDelegateBase(key_vlECCalendarEventAttendee, attendee) {}

    [[nodiscard]] QString name() const { return text(olItem_name); }
    [[nodiscard]] QString emailAddress() const { return text(olItem_emailAddress); }
    // 2: a resource, such as a room.
    [[nodiscard]] qint32 attendeeType() const { return number(olItem_attendeeType); }

    // The attendee record: "name", "email" and "type" (decimal), in this order. It ends before the first
    // missing value.
    [[nodiscard]] QVariantMap getVlMeetingData() const;
};
