// Brings the plug-in's items into the tool-bars of the host's main windows.
#pragma once

#include "plugin/ui/toolbar/vlToolbarItemMgr.h"
#include "plugin/util/sharedObject.h"

#include <QString>

class QWidget;

class vlHookERageMainWindowController : public SharedObject<vlHookERageMainWindowController> {
public:
    // Adds the item to every main window that is open, in the application's order of windows. From then on
    // all items of the plug-in can be chosen where a tool-bar is customized.
    void addUIToMainWindow(const QString &identifier);
    // Puts the item before the last flexible space, with a separator before it unless one stands there
    // already; first of all, and without a separator, where there is no flexible space. Nothing for a
    // tool-bar that is not visible or has the item.
    void addVelaButtonToToolbar(QWidget *window, const QString &toobarIdentifier);
};
