// Writes changed values of an appointment into its component.
#pragma once

#include "standin/mailhost/store/AppointmentReader.h"

namespace mailhost {

// Writes what differs from what the component says now; all else keeps its text. `zones` belongs to the
// VCALENDAR around the component and gives it the VTIMEZONEs that the new times name. False when nothing
// differed. Does not touch UID, RECURRENCE-ID, DTSTAMP and LAST-MODIFIED.
bool writeAppointment(Component &component, const Appointment &appointment, ZoneTable &zones);

// Sets LAST-MODIFIED and DTSTAMP, which are the same thing in a calendar that is not a message, to now.
void touch(Component &component);

// The plain twin of a body, as DESCRIPTION has it.
[[nodiscard]] QString plainTextOf(const QString &html);

} // namespace mailhost
