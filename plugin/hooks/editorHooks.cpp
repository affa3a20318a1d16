#include "plugin/hooks/hookGuard.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/workflow/recordWriteBack.h"
#include "plugin/workflow/vlApptUIActionMgr.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"

namespace hooks {

namespace {

constexpr int rowSaveAndCloseWindow = 22;
constexpr int rowSave = 24;
constexpr int rowSend = 26;
constexpr int rowFromFieldModified = 27;
constexpr int rowRecurrenceEnded = 28;
constexpr int rowSaveAndCloseWithError = 29;
constexpr int rowHostWordMailEditor = 30;
constexpr int rowSaveRecord = 32;

constexpr int heldBackResult = -1; // what the two save-and-close operations answer while they are held back
constexpr int hostMayProceed = 2;
constexpr quint32 lastRefreshingReturnCode = 1;

struct Decision {
    bool proceed;
    bool actionResult;
};

// Asks the workflow what the operation needs. When that itself goes wrong, the operation is held back: the
// editor stays open with its changes.
Decision decide(rt::Object *editor, HostAction action) {
    return guarded("saving an appointment with a meeting", Decision{false, false}, [editor, action] {
        vlApptUIActionMgr &manager = vlApptUIActionMgr::sharedInstance();
        const int result = manager.handleVLMeeting(editor, {{keyApptViewActionID, quint32(action)}});
        return Decision{result == hostMayProceed, manager.getActionResultWithCalEventEditorViewCtrl(editor)};
    });
}

EditorStrip *stripOf(rt::Object *editor) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    return strips ? strips->getVlActionAdditionViewByEditorViewCtrl(editor) : nullptr;
}

} // namespace

rt::Value editorSaveAndCloseWindow(rt::Object *self, rt::Selector, rt::Args arguments) {
    if (decide(self, HostAction::SaveAndClose).proceed)
        return callHost(rowSaveAndCloseWindow, self, arguments);
    return heldBackResult;
}

rt::Value editorSave(rt::Object *self, rt::Selector, rt::Args arguments) {
    const Decision decision = decide(self, HostAction::Save);
    return decision.proceed ? callHost(rowSave, self, arguments) : rt::Value(decision.actionResult);
}

rt::Value editorSaveAndCloseWithError(rt::Object *self, rt::Selector, rt::Args arguments) {
    if (decide(self, HostAction::SaveAndCloseWithError).proceed)
        return callHost(rowSaveAndCloseWithError, self, arguments);
    return heldBackResult;
}

rt::Value editorSend(rt::Object *self, rt::Selector, rt::Args arguments) {
    const bool matched = guarded("checking for whom the meeting is", false, [self] {
        vlMeetingMgr &manager = vlMeetingMgr::sharedInstance();
        if (manager.checkScheduleOwnerMatched(self))
            return true;
        manager.showWarningNotAllowScheduleForOthers(self);
        return false;
    });
    if (!matched)
        return {};
    const Decision decision = decide(self, HostAction::Send);
    return decision.proceed ? callHost(rowSend, self, arguments) : rt::Value(decision.actionResult);
}

rt::Value editorFromFieldModified(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> editor(self);
    const rt::Value result = callHost(rowFromFieldModified, self, arguments);
    guarded("following the From field", [&editor] {
        EditorStrip *strip = editor ? stripOf(editor.get()) : nullptr;
        if (!strip)
            return;
        strip->refreshUI();
        strip->enableChangeSettingButton(
            vlMeetingMgr::sharedInstance().checkScheduleOwnerMatched(editor.get()));
    });
    return result;
}

rt::Value editorRecurrenceEnded(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> editor(self);
    const auto returnCode = quint32(rt::integerValue(arguments[1]));
    const rt::Value result = callHost(rowRecurrenceEnded, self, arguments);
    guarded("following the recurrence", [&editor, returnCode] {
        if (returnCode > lastRefreshingReturnCode || !editor)
            return;
        if (EditorStrip *strip = stripOf(editor.get()))
            strip->refreshUI();
    });
    return result;
}

rt::Value editorHostWordMailEditor(rt::Object *self, rt::Selector, rt::Args arguments) {
    guarded("taking the body editor", [&arguments] {
        vlMeetingMgr::sharedInstance().setOLWordMailEditor(rt::objectValue(arguments[0]));
    });
    return callHost(rowHostWordMailEditor, self, arguments);
}

rt::Value recordSave(rt::Object *self, rt::Selector, rt::Args arguments) {
    guarded("bringing the stored meeting up to date", [self] {
        if (vlCalendarActionMgr::sharedInstance().isCurVelaMeeting(self))
            updateVlKeyInfoToAppointment(self);
        else if (vlMeetingDataMgr::sharedInstance().isPACMeeting())
            updateVlKeyInfoToAppointmentForPAC(self);
        else
            cleanVlKeyInfoFromAppointment(self);
    });
    return callHost(rowSaveRecord, self, arguments);
}

} // namespace hooks
