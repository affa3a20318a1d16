// An appointment as a mail to its attendees (iMIP, RFC 6047).
#pragma once

#include "standin/mailhost/store/CalendarFile.h"

namespace mailhost {

// Writes the message into the outbox folder as one .eml file, atomically: from the organizer to every
// attendee, with a text part and the text/calendar part. Answers the file's path; a null text, with a
// sentence in `error`, if it cannot be written.
QString writeImipMessage(const QString &outbox, const CalendarFile &calendar, const Appointment &appointment,
                         bool cancel, QString *error);

} // namespace mailhost
