#include "plugin/link/vlAPIStartMeeting.h"

#include "plugin/link/sharedObject.h"
#include "plugin/link/vlIPCChannel.h"
#include "plugin/util/vlOLUtils.h"

#include <QVariantMap>

namespace {

const QString keyFrom = QStringLiteral("from");
const QString keyLaunchType = QStringLiteral("launchtype");
const QString fromThisPlugin = QStringLiteral("macOutlookPlugin");
const QString launchWithVideo = QStringLiteral("groupVideo");
const QString launchWithoutVideo = QStringLiteral("groupShare");

} // namespace

vlAPIStartMeeting &vlAPIStartMeeting::sharedInstance() {
    return SharedObject<vlAPIStartMeeting>::get();
}

ClientError vlAPIStartMeeting::doAction(bool withVideo) {
    const ClientError error = checkVelaAppError();
    if (error != ClientError::None) {
        popupErrorMsg(nullptr, error);
        return error;
    }
    const QVariantMap request{{keyFrom, fromThisPlugin},
                              {keyLaunchType, withVideo ? launchWithVideo : launchWithoutVideo}};
    vlIPCChannel::sendIPCMessageToVelaClient(quint32(ClientAction::StartMeeting),
                                             vlOLUtils::toJSONString(request));
    return ClientError::None;
}
