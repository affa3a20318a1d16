// The second pass of the write-back: what the host is about to store as an appointment's record.
#pragma once

#include "platform/runtime/Object.h"

// `record` is the host's editable record; anything else is left alone. One of the first three is called for
// every record that the host stores, with the context of its editor at hand (nobody's for a change on the
// calendar). It uses the pending write-back up.

// For a record of a meeting.
void updateVlKeyInfoToAppointment(rt::Object *record);
// For a record with an audio conference.
void updateVlKeyInfoToAppointmentForPAC(rt::Object *record);
// For any other record.
void cleanVlKeyInfoFromAppointment(rt::Object *record);

// Whether the record still lacks the location that was composed last.
[[nodiscard]] bool needUpdateLocation(rt::Object *record);
