// A VEVENT as plain values, and changes of them.
#pragma once

#include "standin/mailhost/store/Times.h"

namespace mailhost {

// The X- property of the private field.
inline const QByteArray ucCapabilitiesProperty = QByteArrayLiteral("X-PARLO-UC-CAPABILITIES");

// `uid` is left empty when the component has none.
[[nodiscard]] Appointment readAppointment(const Component &component, ZoneTable &zones);
// Writes the values that differ from the component's; all other lines keep their text. `zones` belongs to the
// VCALENDAR around the component and adds the VTIMEZONEs that new times need. Returns false if nothing
// differed. Does not touch UID, RECURRENCE-ID, DTSTAMP and LAST-MODIFIED.
bool writeAppointment(Component &component, const Appointment &appointment, ZoneTable &zones);

// The text of a line; null if the component has no line of that name.
[[nodiscard]] QString textOf(const Component &component, const QByteArray &name);
// The identifiers; empty if the component has none.
[[nodiscard]] QString uidOf(const Component &component);
[[nodiscard]] QString recurrenceIdOf(const Component &component);

// The plain twin of a body, as DESCRIPTION has it.
[[nodiscard]] QString plainTextOf(const QString &html);

} // namespace mailhost
