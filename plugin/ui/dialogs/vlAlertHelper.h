// A warning with one button.
#pragma once

#include <QString>

class QWidget;

class vlAlertHelper {
public:
    static vlAlertHelper &sharedInstance();
    // On its own when there is no window. Does not wait.
    void showAlertMessage(QWidget *window, const QString &message);
};
