// The dialogs as the lower floors see them.
#pragma once

#include "plugin/link/linkPorts.h"
#include "plugin/workflow/workflowPorts.h"

class DialogRequestFeedback : public RequestFeedback {
public:
    [[nodiscard]] std::unique_ptr<RequestProgress> makeProgress() override;
    void showAlertMessage(QWidget *window, const QString &message) override;
    void showClientError(QWidget *window, const QString &message) override;
};

class DialogWorkflowAlerts : public WorkflowAlerts {
public:
    void showAlertMessage(QWidget *window, const QString &message) override;
    void showRemoveMeetingWarning(rt::Object *editor, QWidget *window) override;
};
