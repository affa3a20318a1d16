// The interface of the sheet's window controller for the parts of a settings sheet.
#pragma once

#include <QVariantMap>

class QWidget;

class SheetOwner {
public:
    virtual ~SheetOwner() = default;
    // Takes effect on the next turn of the run loop.
    virtual void makeFirstResponderWithObject(QWidget *control) = 0;
    // Reports to the workflow how the user closed the sheet; after OK also saves the settings as the user's
    // defaults.
    virtual void postSettingCommitCommand(const QVariantMap &command) = 0;
};
