// Writes changed values of an appointment into its component.
#pragma once

#include "standin/mailhost/store/AppointmentReader.h"

namespace mailhost {

// Writes the values that differ from the component's; all other lines keep their text. `zones` belongs to the
// VCALENDAR around the component and adds the VTIMEZONEs that new times need. Returns false if nothing
// differed. Does not touch UID, RECURRENCE-ID, DTSTAMP and LAST-MODIFIED.
bool writeAppointment(Component &component, const Appointment &appointment, ZoneTable &zones);

// Sets LAST-MODIFIED and DTSTAMP to the present time. In a stored calendar they mean the same.
void touch(Component &component);

// The plain twin of a body, as DESCRIPTION has it.
[[nodiscard]] QString plainTextOf(const QString &html);

} // namespace mailhost
