// Lists of people and rooms as the user types them.
#pragma once

#include "standin/mailhost/store/Appointment.h"

namespace mailhost {

// "Name <address>, other@address; ..." as one text; separators are ", ".
[[nodiscard]] QString addressText(const QList<Attendee> &attendees, bool rooms);
// The people (or rooms) in the text. An entry without an address keeps its text as its name and has no
// address. An attendee in `before` with the same address keeps its type, unless that would change it between
// person and room.
[[nodiscard]] QList<Attendee> parseAddresses(const QString &text, bool rooms, const QList<Attendee> &before);
// The entries without a usable address, as typed.
[[nodiscard]] QStringList incompleteAddresses(const QList<Attendee> &attendees);

} // namespace mailhost
