#include "plugin/hooks/vlHookERageMainWindowController.h"

#include "platform/toolkit/Toolbar.h"
#include "platform/toolkit/Windows.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/util/vlOLUtils.h"

namespace {

void addUsualItems(QWidget *window) {
    vlHookERageMainWindowController &hook = vlHookERageMainWindowController::sharedInstance();
    hook.addVelaButtonToToolbar(window, vlScheduleToolbarItemIdentifier);
    hook.addVelaButtonToToolbar(window, vlStartToolbarItemIdentifier);
}

// The hooks do not change the host's list of allowed items, so users find these items only if the tool-bar
// offers them.
void offerAllItems() {
    platform::Toolbar::offerItems(key_vlERageMainWindowController,
                                  {vlStartToolbarItemIdentifier, vlScheduleToolbarItemIdentifier,
                                   vlSchedulePACToolbarItemIdentifier, vlOpenLogFolderIdentifier},
                                  addUsualItems);
}

} // namespace

void vlHookERageMainWindowController::addUIToMainWindow(const QString &identifier) {
    offerAllItems();
    const QList<QWidget *> windows = platform::orderedWindows();
    for (QWidget *window : windows)
        if (vlOLUtils::kindofClass(platform::windowController(window), key_vlERageMainWindowController))
            addVelaButtonToToolbar(window, identifier);
}

void vlHookERageMainWindowController::addVelaButtonToToolbar(QWidget *window,
                                                             const QString &toobarIdentifier) {
    platform::Toolbar *toolbar = platform::windowToolbar(window);
    if (!toolbar || !toolbar->isToolbarVisible())
        return;
    QStringList shown;
    for (const platform::ToolbarItem *item : toolbar->visibleItems())
        shown.append(item->itemIdentifier());
    const int index = qMax(0, int(shown.lastIndexOf(platform::toolbarFlexibleSpaceIdentifier)));
    const bool needsSeparator = index != 0 && shown[index - 1] != platform::toolbarSeparatorIdentifier;
    // The tool-bar refuses an item that it already has.
    if (toolbar->insertItem(toobarIdentifier, index) && needsSeparator)
        toolbar->insertItem(platform::toolbarSeparatorIdentifier, index);
}
