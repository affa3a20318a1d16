// The alert that the meeting client is not running, which offers to launch it.
#pragma once

#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

class vlClientNotRunningError : public SharedObject<vlClientNotRunningError> {
public:
    void showClientError(QWidget *window, const QString &message);
    // Newer hosts may not start programs themselves: there the agent is asked to.
    void alertDidEnd(AlertReturn result);
};
