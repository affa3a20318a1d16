// The host operation of an editor that waited for the meeting work.
#pragma once

#include "plugin/workflow/workflowPorts.h"

struct HeldOperation {
    HostAction action;
    bool withAttendees; // for appointments with attendees, or for those without
    bool endsEditor;    // it closes the editor, so it runs only while it is held back
    bool forgets;       // the meeting's saved data is cleared after success
    // Calls the host's original method, past the plug-in's hook, and returns its result.
    rt::Value (*run)(rt::Object *editor);
    bool closesWindow;
};

// Returns nullptr if the operation is not repeated: appointments with attendees are only sent, those without
// attendees only saved.
[[nodiscard]] const HeldOperation *heldOperation(HostAction action, bool hasAttendees);
