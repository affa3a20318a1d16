// The end of the meeting work on an editor: the host operation that waited for it.
#include "platform/runtime/Runtime.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

namespace {

// The host's own operations, under the selectors that lead past the plug-in's hooks.
void hostSave(rt::Object *editor) {
    rt::send(editor, "vl_ERCalendarEventEditorViewController_saveArg:", rt::Value());
}
void hostSaveAndClose(rt::Object *editor) {
    rt::send(editor, "vl_ERCalendarEventEditorViewController_saveAndCloseWindow:", true);
}
void hostSaveAndCloseWithError(rt::Object *editor) {
    rt::send(editor,
             "vl_ERCalendarEventEditorViewController_saveAndCloseWindowAndReturnError:andReturnError:", true,
             rt::Value());
}
void hostSend(rt::Object *editor) {
    rt::send(editor, "vl_ERCalendarEventEditorViewController_sendMeetingPostValidate");
}
void nothing(rt::Object *) {}

struct HeldOperation {
    HostAction action;
    bool withAttendees; // whether it is for appointments with attendees or for those without
    bool clearsSavedData;
    void (*reissue)(rt::Object *editor);
    bool closesWindow;
};

// What is not here is not run again: an appointment with attendees is only ever sent, one without only saved.
constexpr HeldOperation heldOperations[] = {
    {HostAction::Save, false, false, hostSave, false},
    {HostAction::SaveAndClose, false, true, hostSaveAndClose, true},
    {HostAction::SaveAndCloseWithError, false, true, hostSaveAndCloseWithError, true},
    {HostAction::CalendarDrag, false, true, nothing, false},
    {HostAction::Send, true, true, hostSend, false},
};

} // namespace

void vlMeetingMgr::closeOLAppointment(rt::Object *editor) {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (!strip)
        return clearAllSavedData(true);
    const HostAction action = strip->getOLUIAction();
    const bool hasAttendees = !rt::listValue(rt::send(editor, "attendeeList")).isEmpty();
    for (const HeldOperation &operation : heldOperations) {
        if (operation.action != action || operation.withAttendees != hasAttendees)
            continue;
        const rt::Weak<> windowController(strip->editorWindowController());
        if (operation.clearsSavedData)
            clearAllSavedData(true);
        operation.reissue(editor);
        if (operation.closesWindow) // unless the host has closed it already
            rt::send(windowController.get(), "close");
        return;
    }
}
