#include "plugin/hooks/loadSteps.h"

#include "plugin/hooks/hookGuard.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/hooks/vlHookERageMainWindowController.h"
#include "plugin/link/localizedString.h"
#include "plugin/link/vlAppHelper.h"
#include "plugin/link/vlGetClientVersionHelper.h"
#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/toolbar/vlCommandItemMgr.h"

namespace {

const QString keyHostTooOld = QStringLiteral("OutlookVersionLowerThan1414");

bool hostIsSupported() {
    return vlAppHelper::sharedInstance().isSupportedOutlookVersion();
}

// The one step that says so; the others leave their rows out silently.
bool hostIsSupportedElseTell() {
    if (hostIsSupported())
        return true;
    vlAlertHelper::sharedInstance().showAlertMessage(nullptr, vlLocalizedString(keyHostTooOld));
    return false;
}

// The version is asked for whatever the host's own is.
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
    {"vlHookOLCalendarHeaderContainerView", 1, 1, hostIsSupportedElseTell, nullptr},
    {"vlHookOLAutoLayoutAttachmentsAcceptingView", 2, 3, nullptr, nullptr},
    {"vlHookERCalendarEventEditorWindowController", 4, 8, nullptr, nullptr},
    {"vlHookOLCalendarGridViewWrapper", 9, 11, nullptr, nullptr},
    {"vlHookCCEventTitleView", 12, 12, hostIsSupported, nullptr},
    {"vlHookOLAttachmentsAcceptingView", 13, 13, nullptr, nullptr},
    {"vlHookECCalendarEvent", 14, 15, nullptr, nullptr},
    {"vlHookOLAutoLayoutView", 16, 16, nullptr, nullptr},
    {"vlHookOLCalendarEventViewResponder", 17, 17, nullptr, nullptr},
    {"vlHookERageMainWindowController", 18, 20, askForClientVersion, addToTheMainWindows},
    {"vlHookERCalendarEventEditorViewController", 21, 30, nullptr, nullptr},
    {"vlHookECMutableCalendarEvent", 31, 32, nullptr, nullptr},
};

void run(const LoadStep &step) {
    if (step.before && !step.before())
        return;
    for (int row = step.firstRow; row <= step.lastRow; ++row)
        installHook(hookTable()[std::size_t(row) - 1]);
    if (step.after)
        step.after();
}

} // namespace

std::span<const LoadStep> loadSteps() {
    return steps;
}

void runLoadSteps() {
    for (const LoadStep &step : steps)
        hooks::guarded(step.hookClass, [&step] { run(step); });
}
