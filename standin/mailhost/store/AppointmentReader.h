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

// Whether a STYLED-DESCRIPTION, or an X-ALT-DESC, holds the body as HTML. The former is preferred.
[[nodiscard]] bool isStyledBody(const ContentLine &line);
[[nodiscard]] bool isHtml(const ContentLine &line);
// The body; null if the component has none. A DESCRIPTION alone is converted to HTML, unless its ALTREP data
// address holds the HTML.
[[nodiscard]] QString readBody(const Component &component);

} // namespace mailhost
