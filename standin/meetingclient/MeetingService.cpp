#include "standin/meetingclient/MeetingService.h"

#include "meeting.pb.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QTimeZone>
#include <QUrl>

namespace meetingclient {

namespace {

namespace wire = com::brindle::webapp::proto;

const QString errorNotSignedIn = u"0;Error VelaClientNotSignIn"_s;
const QString errorNotFound = u"0;Error 3001"_s;
const QString errorBadRequest = u"0;Error 5003"_s;

constexpr int subCommandDigits = 1;
constexpr int commitHeadSemicolons = 13;

// The JSON object after "<digit>;;;;;;;;;;;;;"; none if the head or the JSON is wrong.
std::optional<QJsonObject> commitRequest(const QString &content) {
    const int head = subCommandDigits + commitHeadSemicolons;
    if (content.mid(subCommandDigits, commitHeadSemicolons) != QString(commitHeadSemicolons, u';'))
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(content.mid(head).toUtf8());
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QString grouped(const QString &number) {
    if (number.size() < 9)
        return number;
    return u"%1-%2-%3"_s.arg(number.left(3), number.mid(3, 3), number.mid(6));
}

// The request gives the appointment's clock time as seconds in this computer's zone, and names the zone of
// the appointment. An unknown zone counts as the computer's.
qint64 startInstant(const QJsonObject &appointment) {
    const qint64 seconds = appointment["startTime"].toString().toLongLong();
    const QTimeZone zone(appointment["timezone"].toString().toUtf8());
    const QDateTime clock = QDateTime::fromSecsSinceEpoch(seconds);
    return zone.isValid() ? QDateTime(clock.date(), clock.time(), zone).toSecsSinceEpoch() : seconds;
}

void applyRequest(const QJsonObject &request, QJsonObject &meeting) {
    const QJsonObject appointment = request["apptInfo"].toObject();
    const QJsonObject setting = request["setting"].toObject();
    const auto copy = [&meeting](const QJsonObject &from, const QStringList &keys) {
        for (const QString &key : keys)
            if (from.contains(key))
                meeting.insert(key, from[key]);
    };
    copy(appointment, {u"subject"_s, u"duration"_s, u"location"_s, u"timezone"_s});
    copy(setting, {u"audioOption"_s, u"scheduleFor"_s});
    meeting[u"recurrence"] = appointment["recurrence"].toVariant().toBool();
    meeting[u"startTime"] = startInstant(appointment);
    for (const QString &key :
         {u"enableHostVideo"_s, u"enableParticipantsVideo"_s, u"enableJBH"_s, u"usePMI"_s})
        meeting[key] = setting[key].toVariant().toBool();
    meeting[u"meetingPassword"] = setting["meetingPassword"].toString();
    const bool external = setting["audioOption"].toVariant().toInt() == 3;
    meeting[u"enable3rdPartyAudio"] = external;
    meeting[u"thirdPartyAudio"] = external ? setting["thirdPartyAudio"].toString() : QString();
}

// Derives the URL and the plain-text invitation from the meeting's settings.
void complete(QJsonObject &meeting, const QString &number, const QString &userName) {
    const QString password = meeting["meetingPassword"].toString();
    const QString audio = meeting["thirdPartyAudio"].toString();
    const QString url = joinUrl(number, password);
    QString invitation = u"%1 is inviting you to a Parlo Meetings meeting.\n\n"
                         "Join by video: %2 \n\nMeeting ID: %3\n"_s.arg(userName, url, grouped(number));
    if (!password.isEmpty())
        invitation += u"Password: %1\n"_s.arg(password);
    if (!audio.isEmpty())
        invitation += u"\nAudio: %1\n"_s.arg(audio);
    meeting[u"originalMeetingNumber"] = number;
    meeting[u"joinUrl"] = url;
    meeting[u"invitationEmail"] =
        invitation + u"\nHelp with joining: https://meetings.parlo.example/help \n"_s;
}

// Changes the stored meeting as requested.
QString committed(MeetingStore &store, const QString &key, const QJsonObject &request) {
    QJsonObject meeting = *store.meeting(key);
    applyRequest(request, meeting);
    const QString room = store.profile()["roomMeetingId"].toString();
    complete(meeting, meeting[u"usePMI"].toBool() && !room.isEmpty() ? room : key,
             store.profile()["accountName"].toString());
    store.replaceMeeting(key, meeting);
    return key + u';' + meeting[u"invitationEmail"].toString();
}

QString schedule(MeetingStore &store, const QString &content) {
    const std::optional<QJsonObject> request = commitRequest(content);
    return request ? committed(store, store.addMeeting({}), *request) : errorBadRequest;
}

QString update(MeetingStore &store, const QString &content) {
    const std::optional<QJsonObject> request = commitRequest(content);
    if (!request)
        return errorBadRequest;
    const QString key = request->value(u"meetingKey"_s).toString();
    return store.meeting(key) ? committed(store, key, *request) : errorNotFound;
}

QString get(const MeetingStore &store, const QString &key) {
    std::optional<QJsonObject> meeting = store.meeting(key);
    if (!meeting)
        return errorNotFound;
    if (meeting->value(u"joinUrl"_s).toString().isEmpty()) // a personal meeting as it was installed
        complete(*meeting, meeting->value(u"originalMeetingNumber"_s).toString(key),
                 store.profile()["accountName"].toString());
    const QByteArray json = QJsonDocument(*meeting).toJson(QJsonDocument::Compact).toBase64();
    const wire::MeetingProto binary;
    const QByteArray bytes = QByteArray::fromStdString(binary.SerializePartialAsString()).toBase64();
    // Thirteen fields that plug-ins do not read stand before the meeting.
    return key + QString(13, u';') + QString::fromLatin1(json) + u';' + QString::fromLatin1(bytes);
}

void addNumbers(const QJsonValue &numbers,
                google::protobuf::RepeatedPtrField<wire::CountryCodeProto> *field) {
    for (const QJsonValue &entry : numbers.toArray()) {
        wire::CountryCodeProto *number = field->Add();
        if (const QJsonValue country = entry["country"]; country.isString())
            number->set_country(country.toString().toStdString());
        if (const QJsonValue digits = entry["number"]; digits.isString())
            number->set_number(digits.toString().toStdString());
    }
}

QString accounts(const MeetingStore &store) {
    wire::Response response;
    wire::PACInfo *info = response.mutable_pac_info();
    for (const QJsonValue &account : store.accounts()) {
        wire::PACMeeting *meeting = info->add_meetings();
        if (const QJsonValue number = account["meetingNumber"]; !number.isUndefined())
            meeting->set_meeting_number(number.toInteger());
        addNumbers(account["tollNumbers"], meeting->mutable_toll_numbers());
        addNumbers(account["tollFreeNumbers"], meeting->mutable_toll_free_numbers());
        if (const QJsonValue invitation = account["invitation"]; !invitation.isUndefined())
            meeting->set_invitation_email(invitation.toString().toStdString());
    }
    // Partial: the one required field of this message is of no use to a plug-in.
    return QString::fromLatin1(QByteArray::fromStdString(response.SerializePartialAsString()).toBase64());
}

QString answerTo(MeetingStore &store, Operation operation, const QString &content) {
    if (!store.signedIn())
        return errorNotSignedIn;
    const QString key = content.mid(2);
    switch (operation) {
    case Operation::Schedule:
        return schedule(store, content);
    case Operation::Update:
        return update(store, content);
    case Operation::Delete:
        return store.removeMeeting(key) ? key : errorNotFound;
    case Operation::Get:
        return get(store, key);
    case Operation::Profile:
        return QString::fromUtf8(QJsonDocument(store.profile()).toJson(QJsonDocument::Compact));
    case Operation::Accounts:
        return accounts(store);
    case Operation::StartMeeting:
        break;
    }
    return {};
}

} // namespace

QString joinUrl(const QString &meetingNumber, const QString &password) {
    const QString url = u"https://meetings.parlo.example/j/%1"_s.arg(meetingNumber);
    return password.isEmpty() ? url
                              : url + u"?pwd="_s + QString::fromLatin1(QUrl::toPercentEncoding(password));
}

std::optional<Operation> operationOf(quint32 actionId, const QString &content) {
    switch (actionId) {
    case 2:
        return Operation::StartMeeting;
    case 6:
        return Operation::Profile;
    case 9:
        return Operation::Accounts;
    default:
        break;
    }
    if (actionId != 3 || content.size() < 2 || content[1] != u';' || content[0] < u'1' || content[0] > u'4')
        return std::nullopt;
    return Operation(content[0].unicode() - u'0');
}

std::optional<Answer> carryOut(MeetingStore &store, quint32 actionId, const QString &content) {
    const std::optional<Operation> operation = operationOf(actionId, content);
    if (!operation)
        return std::nullopt;
    if (*operation != Operation::StartMeeting)
        return Answer{*operation, answerTo(store, *operation, content)};
    const QJsonObject request = QJsonDocument::fromJson(content.toUtf8()).object();
    return Answer{*operation, joinUrl(store.profile()["roomMeetingId"].toString(), QString()),
                  request["launchtype"].toString() == u"groupVideo"};
}

} // namespace meetingclient
