// An appointment as a message to its attendees (iTIP, RFC 5546).
#pragma once

#include "standin/mailhost/store/Zones.h"

namespace mailhost {

// METHOD:REQUEST (or CANCEL) with the zones that the component names, without alarms and the private field.
// CRLF.
[[nodiscard]] QByteArray itipMessage(const Component &component, const ZoneTable &zones, bool cancel);

} // namespace mailhost
