// The join link of an appointment as a CONFERENCE property (RFC 7986, section 5.11), so that other calendars
// can offer to join.
#pragma once

#include "standin/mailhost/store/ComponentTree.h"

namespace mailhost {

// The link with which one joins: the "joinUrl" of the private record when the location holds it, else the
// first https address in the location. Empty when there is none, or only one of more than 2000 characters.
[[nodiscard]] QString joinLink(const QString &location, const QString &record);

// Makes the component's own CONFERENCE line say the link; an empty one takes the line away. Only the link of
// a line that is there is changed: a label that somebody gave it stays. Lines that another program wrote are
// never touched, and when one of them has the link already no second one is written.
void writeConferenceLink(Component &component, const QString &link);

} // namespace mailhost
