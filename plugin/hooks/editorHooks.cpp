// Replacements of the host methods of an appointment editor and of the record that it stores.
#include "platform/Guarded.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/workflow/recordWriteBack.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

namespace hooks {

namespace {

constexpr int heldBackResult = -1; // result of both save-and-close operations while held back
constexpr quint32 lastRefreshingReturnCode = 1;

struct Decision {
    bool proceed;
    bool actionResult;
};

EditorStrip *stripOf(const rt::Weak<> &editor) {
    return platform::guarded("finding the meeting buttons", static_cast<EditorStrip *>(nullptr),
                             [&editor] { return vlMeetingWindows::stripOfEditor(editor.get()); });
}

// Asks the workflow what the operation requires. If that fails with an exception, the operation is held back:
// the editor stays open with its changes.
Decision decide(const rt::Weak<> &editor, HostAction action) {
    return platform::guarded(
        "saving an appointment with a meeting", Decision{false, false}, [&editor, action] {
            vlApptUIActionMgr &manager = vlApptUIActionMgr::sharedInstance();
            const int result =
                manager.handleVLMeeting(editor.get(), {{keyApptViewActionID, quint32(action)}});
            return Decision{result == vlApptUIActionMgr::hostMayProceed,
                            manager.getActionResultWithCalEventEditorViewCtrl(editor.get())};
        });
}

// The workflow may close the editor; then there is nothing to save.
rt::Value saveAndClose(HookRowName row, HostAction action, rt::Object *self, rt::Args arguments) {
    const rt::Weak<> editor(self);
    const ContextScope scope(stripOf(editor));
    if (decide(editor, action).proceed)
        return callHost(row, editor.get(), arguments);
    return heldBackResult;
}

rt::Value saveOrSend(HookRowName row, HostAction action, rt::Object *self, rt::Args arguments) {
    const rt::Weak<> editor(self);
    const ContextScope scope(stripOf(editor));
    const Decision decision = decide(editor, action);
    return decision.proceed ? callHost(row, editor.get(), arguments) : rt::Value(decision.actionResult);
}

} // namespace

rt::Value editorSaveAndCloseWindow(rt::Object *self, rt::Selector, rt::Args arguments) {
    return saveAndClose(HookRowName::EditorSaveAndCloseWindow, HostAction::ActionSaveAndClose, self,
                        arguments);
}

rt::Value editorSave(rt::Object *self, rt::Selector, rt::Args arguments) {
    return saveOrSend(HookRowName::EditorSaveFromSender, HostAction::ActionSave, self, arguments);
}

rt::Value editorSaveAndCloseWithError(rt::Object *self, rt::Selector, rt::Args arguments) {
    return saveAndClose(HookRowName::EditorSaveAndCloseWithError, HostAction::ActionSaveAndCloseWithError,
                        self, arguments);
}

rt::Value editorSend(rt::Object *self, rt::Selector, rt::Args arguments) {
    const bool matched = platform::guarded("checking for whom the meeting is", false, [self] {
        vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
        if (manager.checkScheduleOwnerMatched(self))
            return true;
        manager.showWarningNotAllowScheduleForOthers(self);
        return false;
    });
    if (!matched)
        return {};
    return saveOrSend(HookRowName::EditorSend, HostAction::ActionSend, self, arguments);
}

rt::Value editorPassThroughRow(HookRowName row, rt::Object *self, rt::Args arguments) {
    const ContextScope scope(stripOf(rt::Weak<>(self)));
    return callHost(row, self, arguments);
}

rt::Value editorFromFieldModified(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> editor(self);
    rt::Value result = callHost(HookRowName::EditorFromFieldModified, self, arguments);
    platform::guarded("following the From field", [&editor] {
        EditorStrip *strip = stripOf(editor);
        if (!strip)
            return;
        strip->refreshUI();
        const bool matched = vlMeetingMgr::sharedInstance().checkScheduleOwnerMatched(editor.get());
        if (EditorStrip *stillThere = stripOf(editor))
            stillThere->enableChangeSettingButton(matched);
    });
    return result;
}

rt::Value editorRecurrenceEnded(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> editor(self);
    const auto returnCode = quint32(rt::integerValue(arguments[1]));
    rt::Value result = callHost(HookRowName::EditorRecurrenceEnded, self, arguments);
    platform::guarded("following the recurrence", [&editor, returnCode] {
        if (returnCode > lastRefreshingReturnCode)
            return;
        if (EditorStrip *strip = stripOf(editor))
            strip->refreshUI();
    });
    return result;
}

rt::Value editorHostWordMailEditor(rt::Object *self, rt::Selector, rt::Args arguments) {
    platform::guarded("taking the body editor", [&arguments, self] {
        vlMeetingMgr::sharedInstance().setOLWordMailEditor(rt::objectValue(arguments[0]), self);
    });
    return callHost(HookRowName::EditorHostWordMailEditor, self, arguments);
}

rt::Value recordSave(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> record(self);
    platform::guarded("bringing the stored meeting up to date", [self] {
        if (vlCalendarActionMgr::sharedInstance().isCurVelaMeeting(self))
            updateVlKeyInfoToAppointment(self);
        else if (vlMeetingDataMgr::sharedInstance().isPACMeeting())
            updateVlKeyInfoToAppointmentForPAC(self);
        else
            cleanVlKeyInfoFromAppointment(self);
    });
    return callHost(HookRowName::RecordSave, record.get(), arguments);
}

} // namespace hooks
