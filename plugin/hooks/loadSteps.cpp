#include "plugin/hooks/loadSteps.h"

#include "platform/Guarded.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"
#include "plugin/util/localizedString.h"

namespace {

using enum HookRowName;

const QString keyHostTooOld = u"OutlookVersionLowerThan1414"_s;

bool hostIsSupported() {
    return vlAppHelper::sharedInstance().isSupportedOutlookVersion();
}

// Only this step shows a message; the others silently skip their rows.
bool hostIsSupportedElseTell() {
    if (hostIsSupported())
        return true;
    vlAlertHelper::sharedInstance().showAlertMessage(nullptr, vlLocalizedString(keyHostTooOld));
    return false;
}

// Requests the client's version for every version of the host.
bool askForClientVersion() {
    vlGetClientVersionHelper::sharedInstance().getClientVersion();
    return hostIsSupported();
}

void addToTheMainWindows() {
    vlHookERageMainWindowController &hook = vlHookERageMainWindowController::sharedInstance();
    hook.addUIToMainWindow(vlScheduleToolbarItemIdentifier);
    hook.addUIToMainWindow(vlStartToolbarItemIdentifier);
    vlCommandItemMgr::sharedInstance().initPluginInstance();
}

const LoadStep steps[] = {
    {"vlHookOLCalendarHeaderContainerView", OlderHeaderDraw, OlderHeaderDraw, hostIsSupportedElseTell,
     nullptr},
    {"vlHookOLAutoLayoutAttachmentsAcceptingView", NewerHeaderInit, NewerHeaderDraw, nullptr, nullptr},
    {"vlHookERCalendarEventEditorWindowController", ShowMeeting, ShowCancellation, nullptr, nullptr},
    {"vlHookOLCalendarGridViewWrapper", GridResize, GridRename, nullptr, nullptr},
    {"vlHookCCEventTitleView", TileInit, TileInit, hostIsSupported, nullptr},
    {"vlHookOLAttachmentsAcceptingView", OlderHeaderInit, OlderHeaderInit, nullptr, nullptr},
    {"vlHookECCalendarEvent", EventDelete, EventCancel, nullptr, nullptr},
    {"vlHookOLAutoLayoutView", HeaderRowDraw, HeaderRowDraw, nullptr, nullptr},
    {"vlHookOLCalendarEventViewResponder", SwitchToSeries, SwitchToSeries, nullptr, nullptr},
    {"vlHookERageMainWindowController", ToolbarItem, ToolbarAllowedItems, askForClientVersion,
     addToTheMainWindows},
    {"vlHookERCalendarEventEditorViewController", EditorSaveAndClose, EditorHostWordMailEditor, nullptr,
     nullptr},
    {"vlHookECMutableCalendarEvent", RecordSetCapabilities, RecordSave, nullptr, nullptr},
};

void run(const LoadStep &step) {
    if (step.before && !step.before())
        return;
    for (const HookRow &row : hookTable())
        if (row.name >= step.firstRow && row.name <= step.lastRow)
            installHook(row);
    if (step.after)
        step.after();
}

} // namespace

std::span<const LoadStep> loadSteps() {
    return steps;
}

void runLoadSteps() {
    for (const LoadStep &step : steps)
        platform::guarded(step.hookClass, [&step] { run(step); });
}
