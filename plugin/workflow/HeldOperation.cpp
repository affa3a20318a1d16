#include "plugin/workflow/HeldOperation.h"

#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/hostNames.h"

#include <algorithm>

namespace {

rt::Value hostSave(rt::Object *editor) {
    return rt::send(editor, olItem_hostSaveFromSender, rt::Value());
}
rt::Value hostSaveAndClose(rt::Object *editor) {
    return rt::send(editor, olItem_hostSaveAndCloseWindow, true);
}
rt::Value hostSaveAndCloseWithError(rt::Object *editor) {
    return rt::send(editor, olItem_hostSaveAndCloseWindowAndReturnError, true, rt::Value());
}
rt::Value hostSend(rt::Object *editor) {
    return rt::send(editor, olItem_hostSendMeeting);
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
    // The host does not report whether it has sent: the saved data is cleared when the editor closes.
    {ActionSend, true, true, false, hostSend, false},
};

} // namespace

const HeldOperation *heldOperation(HostAction action, bool hasAttendees) {
    const auto found = std::find_if(std::begin(operations), std::end(operations), [&](const auto &held) {
        return held.action == action && held.withAttendees == hasAttendees;
    });
    return found == std::end(operations) ? nullptr : found;
}
