#include "plugin/link/requests/vlAPIStartMeeting.h"

#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/util/vlOLUtils.h"

#include <QVariantMap>

namespace {

const QString keyFrom = u"from"_s;
const QString keyLaunchType = u"launchtype"_s;
const QString fromThisPlugin = u"macOutlookPlugin"_s;
const QString launchWithVideo = u"groupVideo"_s;
const QString launchWithoutVideo = u"groupShare"_s;

} // namespace

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
