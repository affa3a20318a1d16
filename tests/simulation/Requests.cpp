#include "tests/simulation/Requests.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace simulation {

namespace {

using Counts = QMap<Request, int>;

const struct {
    Request request;
    const char *name;
} names[] = {
    {Request::Start, "start"},       {Request::Schedule, "schedule"},      {Request::Update, "update"},
    {Request::Delete, "delete"},     {Request::GetMeeting, "get meeting"}, {Request::Profile, "profile"},
    {Request::Accounts, "accounts"},
};

// What each thing that happens can send by itself, once.
const struct {
    const char *begin; // of the step's line
    QList<Request> sent;
} actions[] = {
    {"new video", {Request::Profile, Request::Schedule, Request::GetMeeting}},
    {"new audio", {Request::Profile, Request::Accounts}},
    {"start", {Request::Start}},
    {"strip", {Request::Profile, Request::Schedule, Request::GetMeeting, Request::Delete}},
    {"audio", {Request::Profile, Request::Accounts}},
    {"sheet", {Request::Schedule, Request::Update, Request::GetMeeting, Request::Profile}},
    {"save", {Request::GetMeeting, Request::Update, Request::Delete, Request::Profile}},
    {"send", {Request::GetMeeting, Request::Update, Request::Delete, Request::Profile}},
    {"question", {Request::GetMeeting, Request::Update, Request::Delete, Request::Profile}},
    {"move", {Request::GetMeeting}},
    {"resize", {Request::GetMeeting}},
    {"rename", {Request::GetMeeting}},
    {"alert", {Request::Delete, Request::Start}},
};

const QMap<QString, QList<Request>> &answers() {
    static const QMap<QString, QList<Request>> table{
        {QStringLiteral("1"), {Request::GetMeeting}},
        {QStringLiteral("2"), {Request::GetMeeting}},
        {QStringLiteral("4"), {Request::Update, Request::Schedule, Request::GetMeeting, Request::Profile}},
        {QStringLiteral("6"), {Request::Accounts, Request::GetMeeting, Request::Schedule}},
    };
    return table;
}

void allow(Counts &allowed, const QList<Request> &requests) {
    for (const Request request : requests)
        ++allowed[request];
}

} // namespace

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
    if (kind == kinds.constEnd() || content.isEmpty() || fields[0] == u"0")
        return {};
    if (*kind == Request::Profile || *kind == Request::Accounts)
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

QString unaskedRequest(const Happened &step) {
    Counts allowed;
    for (const auto &action : actions)
        if (step.line.startsWith(QLatin1String(action.begin)))
            allow(allowed, action.sent);
    for (const auto &answer : step.answers)
        allow(allowed, answers().value(answer.userInfo.value(QStringLiteral("actionId"))));
    for (const auto &posted : step.requests)
        if (!requestOf(posted.userInfo))
            return QStringLiteral("what was sent is no request");
    for (const auto &[request, name] : names)
        if (timesSent(step, request) > allowed.value(request))
            return QStringLiteral("%1 %2 requests were sent, %3 can follow from the step")
                .arg(timesSent(step, request))
                .arg(QLatin1String(name))
                .arg(allowed.value(request));
    return {};
}

} // namespace simulation
