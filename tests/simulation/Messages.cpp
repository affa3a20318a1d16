#include "tests/simulation/Messages.h"

#include "plugin/link/channel/vlIPCChannel.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace simulation {

namespace {

// By action of an answer, and by sub-command of a request about meetings.
const QMap<QString, Request> kinds{{u"1"_s, Request::Schedule}, {u"2"_s, Request::Update},
                                   {u"3"_s, Request::Delete},   {u"4"_s, Request::GetMeeting},
                                   {u"6"_s, Request::Profile},  {u"9"_s, Request::Accounts}};

std::optional<Request> kindOf(const QString &name) {
    return kinds.contains(name) ? std::optional(kinds[name]) : std::nullopt;
}

QString keyIn(const QByteArray &json) {
    return QJsonDocument::fromJson(json).object().value(u"meetingKey").toString();
}

Message requestOf(const QString &action, const QString &content) {
    if (action == u"2")
        return {false, Request::Start, {}};
    Message message{false, kindOf(action == u"3" ? content.left(1) : action), {}};
    if (message.request == Request::GetMeeting || message.request == Request::Delete)
        message.meeting = content.mid(2);
    if (message.request == Request::Update)
        message.meeting = keyIn(content.mid(content.lastIndexOf(u";{"_s) + 1).toUtf8());
    return message;
}

Message answerOf(const QString &action, const QString &content) {
    const QStringList fields = content.split(u';');
    const bool isError = fields[0] == u"0";
    if (content.isEmpty() || (isError && !content.startsWith(u"0;Error")))
        return {true, {}, {}};
    const std::optional<Request> kind = kindOf(action);
    if (isError || kind == Request::Profile || kind == Request::Accounts)
        return {true, kind, {}};
    if (kind == Request::GetMeeting &&
        keyIn(QByteArray::fromBase64(fields.value(13).toLatin1())) != fields[0])
        return {true, {}, {}};
    return {true, kind, fields[0]};
}

} // namespace

Message messageOf(const platform::MemoryNotificationBus::Posted &posted) {
    const QString action = posted.userInfo.value(u"actionId"_s);
    const QString content = posted.userInfo.value(u"content"_s);
    return posted.name == kIPCNotifyVelaClientToOutlookPlugin ? answerOf(action, content)
                                                              : requestOf(action, content);
}

} // namespace simulation
