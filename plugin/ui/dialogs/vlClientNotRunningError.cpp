#include "plugin/ui/dialogs/vlClientNotRunningError.h"

#include "plugin/link/clientCodes.h"
#include "plugin/link/localizedString.h"
#include "plugin/link/sharedObject.h"
#include "plugin/link/vlAppHelper.h"
#include "plugin/link/vlIPCChannel.h"
#include "plugin/ui/localizationKeys.h"

vlClientNotRunningError &vlClientNotRunningError::sharedInstance() {
    return SharedObject<vlClientNotRunningError>::get();
}

void vlClientNotRunningError::showClientError(QWidget *window, const QString &message) {
    showAlertSheet(window, message,
                   {vlLocalizedString(uiKeys::buttonLaunchClient), vlLocalizedString(uiKeys::buttonCancel)},
                   [this](AlertReturn result) { alertDidEnd(result); });
}

void vlClientNotRunningError::alertDidEnd(AlertReturn result) {
    if (result != AlertReturn::Default)
        return;
    if (vlAppHelper::sharedInstance().isOutlookVersionLargeThan2016())
        vlIPCChannel::sendIPCMessageToPluginAgent(quint32(AgentAction::LaunchClient), QString());
    else
        vlAppHelper::sharedInstance().LaunchVelaClient();
}
