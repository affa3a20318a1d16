// The alert that the meeting client is not running, which offers to launch it.
#pragma once

#include "plugin/ui/dialogs/alertSheet.h"

class vlClientNotRunningError {
public:
    static vlClientNotRunningError &sharedInstance();
    void showClientError(QWidget *window, const QString &message);
    // Newer hosts may not start programs themselves: there the agent is asked to.
    void alertDidEnd(AlertReturn result);
};
