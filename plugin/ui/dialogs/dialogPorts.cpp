#include "plugin/ui/dialogs/dialogPorts.h"

#include "plugin/ui/dialogs/vlAlertHelper.h"
#include "plugin/ui/dialogs/vlAutoRemoveVelaMeetingMessage.h"
#include "plugin/ui/dialogs/vlClientNotRunningError.h"
#include "plugin/ui/dialogs/vlProgressUIMgr.h"

std::unique_ptr<RequestProgress> DialogRequestFeedback::makeProgress() {
    return std::make_unique<vlProgressUIMgr>();
}

void DialogRequestFeedback::showAlertMessage(QWidget *window, const QString &message) {
    vlAlertHelper::sharedInstance().showAlertMessage(window, message);
}

void DialogRequestFeedback::showClientError(QWidget *window, const QString &message) {
    vlClientNotRunningError::sharedInstance().showClientError(window, message);
}

void DialogWorkflowAlerts::showAlertMessage(QWidget *window, const QString &message) {
    vlAlertHelper::sharedInstance().showAlertMessage(window, message);
}

void DialogWorkflowAlerts::showRemoveMeetingWarning(rt::Object *editor, QWidget *window) {
    auto &warning = vlAutoRemoveVelaMeetingMessage::sharedInstance();
    warning.setEditorViewCtrl(editor);
    warning.showMessage(window);
}
