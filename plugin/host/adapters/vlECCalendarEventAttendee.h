// Someone, or a room, invited to an appointment.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

#include <QVariantMap>

class vlECCalendarEventAttendee : public vlDelegateBase {
public:
    explicit vlECCalendarEventAttendee(rt::Object *attendee);

    [[nodiscard]] QString name() const;
    [[nodiscard]] QString emailAddress() const;
    [[nodiscard]] qint32 attendeeType() const; // 2: a resource, such as a room

    // The attendee record: "name", "email" and "type" (decimal), in this order, ending before the first that
    // is missing.
    [[nodiscard]] QVariantMap getVlMeetingData() const;
};
