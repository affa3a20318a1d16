// Brings the plug-in's items into the tool-bars of the host's main windows.
#pragma once

#include <QString>

class QWidget;

inline const QString vlScheduleToolbarItemIdentifier = QStringLiteral("VLScheduleToolbarItem");
inline const QString vlStartToolbarItemIdentifier = QStringLiteral("VLStartToolbarItem");

class vlHookERageMainWindowController {
public:
    static vlHookERageMainWindowController &sharedInstance();

    // Adds the item to every main window that is open, in the application's order of windows.
    void addUIToMainWindow(const QString &identifier);
    // Nothing for a window whose tool-bar is not visible or cannot take items from outside, which is every
    // one so far.
    void addVelaButtonToToolbar(QWidget *window, const QString &identifier);
};
