#include "tests/simulation/Requests.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace simulation {

std::optional<Request> requestOf(const platform::TextMap &envelope) {
    const QString content = envelope.value(QStringLiteral("content"));
    switch (envelope.value(QStringLiteral("actionId")).toInt()) {
    case 2:
        return Request::Start;
    case 6:
        return content == u"6" ? std::optional(Request::Profile) : std::nullopt;
    case 9:
        return content == u"9" ? std::optional(Request::Accounts) : std::nullopt;
    case 3:
        break;
    default:
        return std::nullopt;
    }
    static const QMap<QString, Request> subCommands{{QStringLiteral("1;"), Request::Schedule},
                                                    {QStringLiteral("2;"), Request::Update},
                                                    {QStringLiteral("3;"), Request::Delete},
                                                    {QStringLiteral("4;"), Request::GetMeeting}};
    const auto found = subCommands.constFind(content.left(2));
    return found == subCommands.constEnd() ? std::nullopt : std::optional(*found);
}

QString meetingOf(const platform::TextMap &request) {
    const QString content = request.value(QStringLiteral("content"));
    const std::optional<Request> kind = requestOf(request);
    if (kind == Request::GetMeeting || kind == Request::Delete)
        return content.mid(2);
    const QJsonDocument json =
        QJsonDocument::fromJson(content.mid(content.lastIndexOf(QStringLiteral(";{")) + 1).toUtf8());
    return kind == Request::Update ? json.object().value(u"meetingKey").toString() : QString();
}

std::optional<Answer> trueAnswer(const platform::TextMap &envelope) {
    static const QMap<QString, Request> kinds{
        {QStringLiteral("1"), Request::Schedule}, {QStringLiteral("2"), Request::Update},
        {QStringLiteral("3"), Request::Delete},   {QStringLiteral("4"), Request::GetMeeting},
        {QStringLiteral("6"), Request::Profile},  {QStringLiteral("9"), Request::Accounts}};
    const auto kind = kinds.constFind(envelope.value(QStringLiteral("actionId")));
    const QString content = envelope.value(QStringLiteral("content"));
    const QStringList fields = content.split(u';');
    const bool isSilent = fields[0] == u"0" && !content.startsWith(u"0;Error"); // the user is told nothing
    if (kind == kinds.constEnd() || content.isEmpty() || isSilent)
        return {};
    if (*kind == Request::Profile || *kind == Request::Accounts || fields[0] == u"0")
        return Answer{*kind, {}};
    if (*kind != Request::GetMeeting)
        return Answer{*kind, fields[0]};
    const QByteArray json = QByteArray::fromBase64(fields.value(13).toLatin1());
    if (QJsonDocument::fromJson(json).object().value(u"meetingKey").toString() != fields[0])
        return {};
    return Answer{*kind, fields[0]};
}

int timesSent(const Happened &step, Request request) {
    return int(std::count_if(step.requests.begin(), step.requests.end(), [request](const auto &posted) {
        return requestOf(posted.userInfo) == request;
    }));
}

// Whether the step's line begins with one of the words.
static bool beginsWith(const Happened &step, const QStringList &words) {
    return std::any_of(words.begin(), words.end(),
                       [&step](const QString &word) { return step.line.startsWith(word); });
}

QString unaskedRequest(const Happened &step) {
    static const QStringList schedule{QStringLiteral("strip"), QStringLiteral("sheet"),
                                      QStringLiteral("new video")};
    static const QStringList remove{QStringLiteral("strip"), QStringLiteral("save"), QStringLiteral("send"),
                                    QStringLiteral("question"), QStringLiteral("alert")};
    const int answers = int(step.answers.size());
    if (timesSent(step, Request::Schedule) > answers + (beginsWith(step, schedule) ? 1 : 0))
        return QStringLiteral("a meeting was scheduled that nobody had asked for");
    if (timesSent(step, Request::Delete) > (beginsWith(step, remove) ? 1 : 0))
        return QStringLiteral("a meeting was deleted that nobody had asked for");
    for (const auto &posted : step.requests)
        if (!requestOf(posted.userInfo))
            return QStringLiteral("what was sent is no request");
    return {};
}

} // namespace simulation
