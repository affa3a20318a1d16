#include "plugin/hooks/vlHookERageMainWindowController.h"

#include "platform/toolkit/Windows.h"
#include "plugin/util/vlOLUtils.h"

namespace {
const QString mainWindowControllerClass = QStringLiteral("ERageMainWindowController");
}

vlHookERageMainWindowController &vlHookERageMainWindowController::sharedInstance() {
    static auto *hook = new vlHookERageMainWindowController;
    return *hook;
}

void vlHookERageMainWindowController::addUIToMainWindow(const QString &identifier) {
    const QList<QWidget *> windows = platform::orderedWindows();
    for (QWidget *window : windows)
        if (vlOLUtils::kindofClass(platform::windowController(window), mainWindowControllerClass))
            addVelaButtonToToolbar(window, identifier);
}

// The toolkit has no tool-bar yet that asks for items by identifier: there is nothing to insert into.
void vlHookERageMainWindowController::addVelaButtonToToolbar(QWidget *, const QString &) {}
