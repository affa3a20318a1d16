// The join link of an appointment as a CONFERENCE property (RFC 7986, section 5.11), so that other calendars
// can offer to join.
#pragma once

#include "standin/mailhost/store/ComponentTree.h"

namespace mailhost {

// The link to join the meeting: the "joinUrl" of the private record if the location holds it, else the first
// https address in the location. Empty if there is none of at most 2000 characters.
[[nodiscard]] QString joinLink(const QString &location, const QString &record);

// The first CONFERENCE of the component that is an https address; empty when there is none.
[[nodiscard]] QString conferenceLink(const Component &component);

// The link that a program may open to join: the record's when the location holds it, else the component's,
// else the first one in the location. Only https, and without a user name before the host, which could pass
// for one. Empty when there is none.
[[nodiscard]] QString linkToOpen(const QString &location, const QString &record, const QString &conference);

// Writes the link into this program's CONFERENCE line; an empty link removes the line. Of an existing line
// only the link changes: a label that a user gave it stays. Lines of other programs are never touched; if one
// of them has the link already, no second one is written.
void writeConferenceLink(Component &component, const QString &link);

} // namespace mailhost
