// The host operation of an editor that waited for the meeting work.
#pragma once

#include "plugin/workflow/workflowPorts.h"

struct HeldOperation {
    HostAction action;
    bool withAttendees; // whether it is for appointments with attendees or for those without
    bool endsEditor;    // the editor closes with it, so it runs only while it is held back
    bool forgets;       // what is known of the meeting is forgotten when it has succeeded
    // Runs the host's own operation, under the selector that leads past the plug-in's hook. Its result.
    rt::Value (*run)(rt::Object *editor);
    bool closesWindow;
};

// nullptr: the operation is not repeated. Appointments with attendees are only sent, those without only
// saved.
[[nodiscard]] const HeldOperation *heldOperation(HostAction action, bool hasAttendees);
