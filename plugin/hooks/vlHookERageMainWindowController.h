// Brings the plug-in's items into the tool-bars of the host's main windows.
#pragma once

#include "plugin/ui/toolbar/vlToolbarItemMgr.h"
#include "plugin/util/sharedObject.h"

#include <QString>

class QWidget;

class vlHookERageMainWindowController : public SharedObject<vlHookERageMainWindowController> {
public:
    // Adds the item to every open main window, in the application's order of windows. Afterwards users can
    // choose all items of the plug-in when they customize a tool-bar.
    void addUIToMainWindow(const QString &identifier);
    // Inserts the item before the last flexible space, after a separator that it adds if missing. Without a
    // flexible space it inserts the item first, without a separator. Does nothing if the tool-bar is hidden
    // or has the item.
    void addVelaButtonToToolbar(QWidget *window, const QString &toobarIdentifier);
};
