// Replacements of the host methods that change appointments without an editor.
#include "platform/Guarded.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"

#include <QApplication>

namespace hooks {

namespace {

constexpr int accepted = 0;

// Whether the grid's selected event has a meeting.
bool isCurrentVelaMeeting(rt::Object *gridWrapper) {
    const vlOLCalendarGridViewWrapper wrapper(gridWrapper);
    const vlCCGridViewController controller(wrapper.gridViewController());
    return vlCalendarActionMgr::sharedInstance().isCurVelaMeeting(controller.ecCalendarEvent());
}

// Passes a change on the grid to the workflow first. The host applies it only if the workflow accepts it.
template<typename Update>
rt::Value changeOnGrid(HookRowName row, rt::Object *self, rt::Args arguments, Update update) {
    const rt::Weak<> grid(self);
    const bool isRefused = platform::guarded("changing a meeting on the calendar", true, [&grid, &update] {
        return isCurrentVelaMeeting(grid.get()) &&
               update(vlCalendarActionMgr::sharedInstance(), grid.get()) != accepted;
    });
    if (isRefused)
        return true; // handled: the tile returns to its old place
    return callHost(row, grid.get(), arguments);
}

// Unlike a deletion, a cancellation depends only on the action result.
struct Permission {
    bool mayDelete;
    bool mayCancel;
};

Permission deleteMeetingOf(const rt::Weak<> &event) {
    return platform::guarded("deleting a meeting on the calendar", Permission{false, false}, [&event] {
        vlCalendarActionMgr &manager = vlCalendarActionMgr::sharedInstance();
        if (!manager.isCurVelaMeeting(event.get()))
            return Permission{true, true};
        const int result = manager.deleteMeeting(event.get());
        const bool actionResult = manager.getActionResult();
        return Permission{result == accepted && actionResult, actionResult};
    });
}

} // namespace

rt::Value gridResize(rt::Object *self, rt::Selector, rt::Args arguments) {
    return changeOnGrid(HookRowName::GridResize, self, arguments,
                        [&arguments](vlCalendarActionMgr &manager, rt::Object *grid) {
                            return manager.updateDuration(grid, rt::objectValue(arguments[2]),
                                                          rt::doubleValue(arguments[3]));
                        });
}

rt::Value gridMove(rt::Object *self, rt::Selector, rt::Args arguments) {
    return changeOnGrid(HookRowName::GridMove, self, arguments,
                        [&arguments](vlCalendarActionMgr &manager, rt::Object *grid) {
                            return manager.updateStartTime(grid, rt::objectValue(arguments[2]));
                        });
}

rt::Value gridRename(rt::Object *self, rt::Selector, rt::Args arguments) {
    return changeOnGrid(HookRowName::GridRename, self, arguments,
                        [&arguments](vlCalendarActionMgr &manager, rt::Object *grid) {
                            return manager.updateSubject(grid, rt::textValue(arguments[0]));
                        });
}

rt::Value eventDelete(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> event(self);
    if (!deleteMeetingOf(event).mayDelete)
        return false;
    return callHost(HookRowName::EventDelete, event.get(), arguments);
}

rt::Value eventCancel(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Weak<> event(self);
    if (!deleteMeetingOf(event).mayCancel)
        return {};
    return callHost(HookRowName::EventCancel, event.get(), arguments);
}

rt::Value switchToSeries(rt::Object *self, rt::Selector, rt::Args arguments) {
    // The window in which the user acted. After the host's method another window may be active and this one
    // closed.
    const QPointer<QWidget> window = QApplication::activeWindow();
    rt::Value result = callHost(HookRowName::SwitchToSeries, self, arguments);
    platform::guarded("following the switch to the series", [&window] {
        const QPointer<vlActionAdditionView> strip = dynamic_cast<vlActionAdditionView *>(
            vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByWindow(window));
        if (!strip)
            return;
        const ContextScope scope(strip);
        strip->attachOutlookERCalendarEventEditorWindowController(strip->editorWindowController());
        callHost(HookRowName::EditorSave, strip->editorViewController(), {});
        if (strip && !strip->isApptDirty()) // the save runs host code, which may close the window
            strip->refreshUI();
    });
    return result;
}

} // namespace hooks
