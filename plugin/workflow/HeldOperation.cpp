#include "plugin/workflow/HeldOperation.h"

#include "platform/runtime/Runtime.h"

#include <algorithm>

namespace {

rt::Value hostSave(rt::Object *editor) {
    return rt::send(editor, "vl_ERCalendarEventEditorViewController_saveArg:", rt::Value());
}
rt::Value hostSaveAndClose(rt::Object *editor) {
    return rt::send(editor, "vl_ERCalendarEventEditorViewController_saveAndCloseWindow:", true);
}
rt::Value hostSaveAndCloseWithError(rt::Object *editor) {
    return rt::send(editor,
                    "vl_ERCalendarEventEditorViewController_saveAndCloseWindowAndReturnError:andReturnError:",
                    true, rt::Value());
}
rt::Value hostSend(rt::Object *editor) {
    return rt::send(editor, "vl_ERCalendarEventEditorViewController_sendMeetingPostValidate");
}
rt::Value nothing(rt::Object *) {
    return {};
}

using enum HostAction;

constexpr HeldOperation operations[] = {
    {ActionSave, false, false, false, hostSave, false},
    {ActionSaveAndClose, false, true, true, hostSaveAndClose, true},
    {ActionSaveAndCloseWithError, false, true, true, hostSaveAndCloseWithError, true},
    {ActionCalendarDrag, false, false, true, nothing, false},
    // Whether it was sent, the host does not say: what is known is forgotten when the editor closes.
    {ActionSend, true, true, false, hostSend, false},
};

} // namespace

const HeldOperation *heldOperation(HostAction action, bool hasAttendees) {
    const auto found = std::find_if(std::begin(operations), std::end(operations), [&](const auto &held) {
        return held.action == action && held.withAttendees == hasAttendees;
    });
    return found == std::end(operations) ? nullptr : found;
}
