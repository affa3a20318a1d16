// An appointment as a message to its attendees (iTIP, RFC 5546), and as a mail with it (iMIP, RFC 6047).
#pragma once

#include "standin/mailhost/store/Zones.h"

namespace mailhost {

// METHOD:REQUEST (or CANCEL) with the zones that the component names, without alarms and the private field.
// CRLF.
[[nodiscard]] QByteArray itipMessage(const Component &component, const ZoneTable &zones, bool cancel);

// Writes the mail into the outbox folder as one .eml file, atomically: from the organizer to every attendee,
// with a text part and the part of the iTIP message (empty: the appointment is not in the calendar). Answers
// the file's path; a null text, with a sentence in `error`, if it cannot be written.
QString writeImipMessage(const QString &outbox, const Appointment &appointment,
                         const QByteArray &calendarText, bool cancel, QString *error);

} // namespace mailhost
