#include "plugin/link/channel/channelObserver.h"

#include "platform/runtime/Value.h"
#include "platform/services/Services.h"
#include "plugin/link/meetingKeys.h"

#include <QLocale>

ChannelObserver::ChannelObserver(const QString &name,
                                 std::function<void(const platform::TextMap &userInfo)> handler) {
    auto registered = std::make_shared<bool>();
    m_registered = registered;
    m_id = platform::services().distributedNotifications->addObserver(
        name, [registered, handler = std::move(handler)](const QString &, const platform::TextMap &userInfo) {
            handler(userInfo);
        });
}

ChannelObserver::~ChannelObserver() {
    // If the notification centre was replaced, the new one may have given the same id to another observer.
    if (!m_registered.expired())
        platform::services().distributedNotifications->removeObserver(m_id);
}

qint64 envelopeActionId(const platform::TextMap &userInfo) {
    return rt::integerValue(QLocale::c().toDouble(userInfo.value(VL_IPC_ACTION_ID)));
}

QString envelopeContent(const platform::TextMap &userInfo) {
    return userInfo.value(VL_IPC_CONTENT);
}
