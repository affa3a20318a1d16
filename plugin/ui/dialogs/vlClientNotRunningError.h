// The alert that the meeting client is not running. It offers to launch the client.
#pragma once

#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

class vlClientNotRunningError : public SharedObject<vlClientNotRunningError> {
public:
    void showClientError(QWidget *window, const QString &message);
    // Newer hosts are not allowed to start programs, so the agent starts the client there.
    void alertDidEnd(AlertReturn result);
};
