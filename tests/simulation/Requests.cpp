#include "tests/simulation/Requests.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace simulation {

std::optional<Request> requestOf(const platform::TextMap &envelope) {
    const QString content = envelope.value(u"content"_s);
    switch (envelope.value(u"actionId"_s).toInt()) {
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
    static const QMap<QString, Request> subCommands{{u"1;"_s, Request::Schedule},
                                                    {u"2;"_s, Request::Update},
                                                    {u"3;"_s, Request::Delete},
                                                    {u"4;"_s, Request::GetMeeting}};
    const auto found = subCommands.constFind(content.left(2));
    return found == subCommands.constEnd() ? std::nullopt : std::optional(*found);
}

QString meetingOf(const platform::TextMap &request) {
    const QString content = request.value(u"content"_s);
    const std::optional<Request> kind = requestOf(request);
    if (kind == Request::GetMeeting || kind == Request::Delete)
        return content.mid(2);
    const QJsonDocument json =
        QJsonDocument::fromJson(content.mid(content.lastIndexOf(u";{"_s) + 1).toUtf8());
    return kind == Request::Update ? json.object().value(u"meetingKey").toString() : QString();
}

std::optional<Answer> trueAnswer(const platform::TextMap &envelope) {
    static const QMap<QString, Request> kinds{{u"1"_s, Request::Schedule}, {u"2"_s, Request::Update},
                                              {u"3"_s, Request::Delete},   {u"4"_s, Request::GetMeeting},
                                              {u"6"_s, Request::Profile},  {u"9"_s, Request::Accounts}};
    const auto kind = kinds.constFind(envelope.value(u"actionId"_s));
    const QString content = envelope.value(u"content"_s);
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
    static const QStringList schedule{u"strip"_s, u"sheet"_s, u"new video"_s};
    static const QStringList remove{u"strip"_s, u"save"_s, u"send"_s, u"question"_s, u"alert"_s};
    const int answers = int(step.answers.size());
    if (timesSent(step, Request::Schedule) > answers + (beginsWith(step, schedule) ? 1 : 0))
        return u"a meeting was scheduled that nobody had asked for"_s;
    if (timesSent(step, Request::Delete) > (beginsWith(step, remove) ? 1 : 0))
        return u"a meeting was deleted that nobody had asked for"_s;
    for (const auto &posted : step.requests)
        if (!requestOf(posted.userInfo))
            return u"what was sent is no request"_s;
    return {};
}

} // namespace simulation
