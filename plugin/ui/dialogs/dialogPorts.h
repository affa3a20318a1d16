// Implements the ports of the lower layers with the dialogs.
#pragma once

#include "plugin/link/linkPorts.h"
#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/dialogs/vlAutoRemoveVelaMeetingMessage.h"
#include "plugin/ui/dialogs/vlClientNotRunningError.h"
#include "plugin/ui/dialogs/vlProgressUIMgr.h"
#include "plugin/workflow/workflowPorts.h"

class DialogPorts : public RequestFeedback, public WorkflowAlerts {
public:
    [[nodiscard]] std::unique_ptr<RequestProgress> makeProgress(ClientAnswer kind) override {
        return std::make_unique<vlProgressUIMgr>(kind);
    }
    // Implements both ports.
    void showAlertMessage(QWidget *window, const QString &message) override {
        vlAlertHelper::sharedInstance().showAlertMessage(window, message);
    }
    void showClientError(QWidget *window, const QString &message) override {
        vlClientNotRunningError::sharedInstance().showClientError(window, message);
    }
    void showRemoveMeetingWarning(rt::Object *editor, QWidget *window) override {
        auto &warning = vlAutoRemoveVelaMeetingMessage::sharedInstance();
        warning.setEditorViewCtrl(editor);
        warning.showMessage(window);
    }
};
