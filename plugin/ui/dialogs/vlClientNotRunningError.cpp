#include "plugin/ui/dialogs/vlClientNotRunningError.h"

#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/link/clientCodes.h"
#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/ui/localizationKeys.h"
#include "plugin/util/localizedString.h"

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
