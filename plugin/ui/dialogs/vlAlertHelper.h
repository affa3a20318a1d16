// A warning with one button.
#pragma once

#include "plugin/util/sharedObject.h"

#include <QString>

class QWidget;

class vlAlertHelper : public SharedObject<vlAlertHelper> {
public:
    // On its own when there is no window. Does not wait.
    void showAlertMessage(QWidget *window, const QString &message);
};
