// What the parts of a settings sheet ask of the sheet's window controller.
#pragma once

#include <QVariantMap>

class QWidget;

class SheetOwner {
public:
    virtual ~SheetOwner() = default;
    // On the next turn of the run loop.
    virtual void makeFirstResponderWithObject(QWidget *control) = 0;
    // Tells the workflow how the sheet was left, and keeps the settings as the user's defaults after OK.
    virtual void postSettingCommitCommand(const QVariantMap &command) = 0;
};
