// The second pass of the write-back: changes the record of an appointment that the host is about to store.
#pragma once

#include "platform/runtime/Object.h"

// `record` is the host's editable record; other objects stay unchanged. The hook calls one of the first three
// functions for every record that the host stores, while the editor's context (nobody's for a change on the
// calendar) is the current one. The call consumes the pending write-back.

// For a record of a meeting.
void updateVlKeyInfoToAppointment(rt::Object *record);
// For a record with an audio conference.
void updateVlKeyInfoToAppointmentForPAC(rt::Object *record);
// For any other record.
void cleanVlKeyInfoFromAppointment(rt::Object *record);

// Whether the record lacks the location that was composed last.
[[nodiscard]] bool needUpdateLocation(rt::Object *record);
