// A VEVENT as plain values.
#pragma once

#include "standin/mailhost/store/Times.h"

namespace mailhost {

// The X- property of the private field.
inline const QByteArray ucCapabilitiesProperty = QByteArrayLiteral("X-PARLO-UC-CAPABILITIES");

// `uid` is left empty when the component has none.
[[nodiscard]] Appointment readAppointment(const Component &component, ZoneTable &zones);

// Address of an ATTENDEE or ORGANIZER line: without "mailto:".
[[nodiscard]] Attendee readAttendee(const ContentLine &line);

// The line that holds the body as HTML and is preferred, null when there is none: STYLED-DESCRIPTION, then
// X-ALT-DESC.
[[nodiscard]] const ContentLine *styledBodyLine(const Component &component);
[[nodiscard]] const ContentLine *alternativeBodyLine(const Component &component);
// The body; null when the component has none. A DESCRIPTION alone becomes HTML; one that carries its HTML in
// an ALTREP data address is taken from there.
[[nodiscard]] QString readBody(const Component &component);

} // namespace mailhost
