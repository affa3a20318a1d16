#include "standin/meetingclient/MeetingService.h"

#include "meeting.pb.h"
#include "platform/Literals.h"

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
    const QString semicolons(commitHeadSemicolons, u';');
    if (content.size() < head || content.mid(subCommandDigits, commitHeadSemicolons) != semicolons)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(content.mid(head).toUtf8());
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

QString grouped(const QString &number) {
    if (number.size() < 9)
        return number;
    return u"%1-%2-%3"_s.arg(number.left(3), number.mid(3, 3), number.mid(6));
}

void copyKey(const QJsonObject &from, QJsonObject &to, const char *key) {
    if (from.contains(QLatin1String(key)))
        to.insert(QLatin1String(key), from.value(QLatin1String(key)));
}

bool truth(const QJsonValue &value) {
    return value.toVariant().toBool();
}

// The request gives the appointment's clock time as seconds in this computer's zone, and names the zone of
// the appointment. An unknown zone counts as the computer's.
qint64 startInstant(const QJsonObject &appointment) {
    const qint64 seconds = appointment["startTime"].toString().toLongLong();
    const QTimeZone zone(appointment["timezone"].toString().toUtf8());
    const QDateTime clock = QDateTime::fromSecsSinceEpoch(seconds);
    return zone.isValid() ? QDateTime(clock.date(), clock.time(), zone).toSecsSinceEpoch() : seconds;
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

} // namespace

std::optional<Operation> MeetingService::operationOf(quint32 actionId, const QString &content) {
    switch (actionId) {
    case 2:
        return Operation::StartMeeting;
    case 6:
        return Operation::Profile;
    case 9:
        return Operation::Accounts;
    case 3:
        break;
    default:
        return std::nullopt;
    }
    if (content.size() < 2 || content[1] != u';' || content[0] < u'1' || content[0] > u'4')
        return std::nullopt;
    return Operation(content[0].unicode() - u'0');
}

std::optional<Answer> MeetingService::handle(quint32 actionId, const QString &content) {
    m_started.reset();
    const std::optional<Operation> operation = operationOf(actionId, content);
    if (!operation)
        return std::nullopt;
    if (*operation == Operation::StartMeeting) {
        start(content);
        return std::nullopt;
    }
    if (!m_store.signedIn())
        return Answer{*operation, errorNotSignedIn};
    return Answer{*operation, answerTo(*operation, content)};
}

QString MeetingService::answerTo(Operation operation, const QString &content) {
    switch (operation) {
    case Operation::Schedule:
        return schedule(content);
    case Operation::Update:
        return update(content);
    case Operation::Delete:
        return remove(content.mid(2));
    case Operation::Get:
        return get(content.mid(2));
    case Operation::Profile:
        return profile();
    case Operation::Accounts:
        return accounts();
    case Operation::StartMeeting:
        break;
    }
    return {};
}

QString MeetingService::joinUrl(const QString &meetingNumber, const QString &password) {
    const QString url = u"https://meetings.parlo.example/j/%1"_s.arg(meetingNumber);
    return password.isEmpty() ? url
                              : url + u"?pwd="_s + QString::fromLatin1(QUrl::toPercentEncoding(password));
}

QString MeetingService::invitation(const QJsonObject &meeting) const {
    const QString number = meeting["originalMeetingNumber"].toString();
    const QString password = meeting["meetingPassword"].toString();
    const QString audio = meeting["thirdPartyAudio"].toString();
    QString text =
        u"%1 is inviting you to a Parlo Meetings meeting.\n\n"
        "Join by video: %2 \n\nMeeting ID: %3\n"_s.arg(m_store.profile()["accountName"].toString(),
                                                       meeting["joinUrl"].toString(), grouped(number));
    if (!password.isEmpty())
        text += u"Password: %1\n"_s.arg(password);
    if (!audio.isEmpty())
        text += u"\nAudio: %1\n"_s.arg(audio);
    return text + u"\nHelp with joining: https://meetings.parlo.example/help \n"_s;
}

void MeetingService::applyRequest(const QJsonObject &request, QJsonObject &meeting) const {
    const QJsonObject appointment = request["apptInfo"].toObject();
    const QJsonObject setting = request["setting"].toObject();
    copyKey(appointment, meeting, "subject");
    copyKey(appointment, meeting, "duration");
    copyKey(appointment, meeting, "location");
    copyKey(appointment, meeting, "timezone");
    meeting.insert(u"recurrence"_s, truth(appointment["recurrence"]));
    meeting.insert(u"startTime"_s, startInstant(appointment));
    for (const char *key : {"enableHostVideo", "enableParticipantsVideo", "enableJBH", "usePMI"})
        meeting.insert(QLatin1String(key), truth(setting.value(QLatin1String(key))));
    copyKey(setting, meeting, "audioOption");
    copyKey(setting, meeting, "scheduleFor");
    meeting.insert(u"meetingPassword"_s, setting["meetingPassword"].toString());
    const bool external = setting["audioOption"].toVariant().toInt() == 3;
    meeting.insert(u"enable3rdPartyAudio"_s, external);
    meeting.insert(u"thirdPartyAudio"_s, external ? setting["thirdPartyAudio"].toString() : QString());
}

// Derives numbers and texts from the meeting's settings, stores it, and returns the client's answer.
QString MeetingService::committed(const QString &key) const {
    QJsonObject meeting = *m_store.meeting(key);
    const QString room = m_store.profile()["roomMeetingId"].toString();
    const bool personal = truth(meeting.value(u"usePMI"_s)) && !room.isEmpty();
    const QString number = personal ? room : key;
    meeting.insert(u"originalMeetingNumber"_s, number);
    meeting.insert(u"joinUrl"_s, joinUrl(number, meeting.value(u"meetingPassword"_s).toString()));
    meeting.insert(u"invitationEmail"_s, invitation(meeting));
    m_store.replaceMeeting(key, meeting);
    return key + u';' + meeting.value(u"invitationEmail"_s).toString();
}

QString MeetingService::schedule(const QString &content) {
    const std::optional<QJsonObject> request = commitRequest(content);
    if (!request)
        return errorBadRequest;
    QJsonObject meeting;
    applyRequest(*request, meeting);
    return committed(m_store.addMeeting(meeting));
}

QString MeetingService::update(const QString &content) {
    const std::optional<QJsonObject> request = commitRequest(content);
    if (!request)
        return errorBadRequest;
    const QString key = request->value(u"meetingKey"_s).toString();
    std::optional<QJsonObject> meeting = m_store.meeting(key);
    if (!meeting)
        return errorNotFound;
    applyRequest(*request, *meeting);
    m_store.replaceMeeting(key, *meeting);
    return committed(key);
}

QString MeetingService::remove(const QString &key) {
    return m_store.removeMeeting(key) ? key : errorNotFound;
}

QString MeetingService::get(const QString &key) const {
    std::optional<QJsonObject> meeting = m_store.meeting(key);
    if (!meeting)
        return errorNotFound;
    if (meeting->value(u"joinUrl"_s).toString().isEmpty()) {
        const QString number = meeting->value(u"originalMeetingNumber"_s).toString(key);
        meeting->insert(u"joinUrl"_s, joinUrl(number, meeting->value(u"meetingPassword"_s).toString()));
        meeting->insert(u"invitationEmail"_s, invitation(*meeting));
    }
    const QByteArray json = QJsonDocument(*meeting).toJson(QJsonDocument::Compact).toBase64();
    const wire::MeetingProto binary;
    const QByteArray bytes = QByteArray::fromStdString(binary.SerializePartialAsString()).toBase64();
    // Thirteen fields that plug-ins do not read stand before the meeting.
    return key + QString(13, u';') + QString::fromLatin1(json) + u';' + QString::fromLatin1(bytes);
}

QString MeetingService::profile() const {
    return QString::fromUtf8(QJsonDocument(m_store.profile()).toJson(QJsonDocument::Compact));
}

QString MeetingService::accounts() const {
    wire::Response response;
    wire::PACInfo *info = response.mutable_pac_info();
    for (const QJsonValue &entry : m_store.accounts()) {
        const QJsonObject account = entry.toObject();
        wire::PACMeeting *meeting = info->add_meetings();
        if (account.contains(QLatin1String("meetingNumber")))
            meeting->set_meeting_number(account["meetingNumber"].toInteger());
        addNumbers(account["tollNumbers"], meeting->mutable_toll_numbers());
        addNumbers(account["tollFreeNumbers"], meeting->mutable_toll_free_numbers());
        if (account.contains(QLatin1String("invitation")))
            meeting->set_invitation_email(account["invitation"].toString().toStdString());
    }
    // Partial: the one required field of this message is of no use to a plug-in.
    return QString::fromLatin1(QByteArray::fromStdString(response.SerializePartialAsString()).toBase64());
}

void MeetingService::start(const QString &content) {
    const QJsonObject request = QJsonDocument::fromJson(content.toUtf8()).object();
    const QString room = m_store.profile()["roomMeetingId"].toString();
    m_started = InstantMeeting{request["launchtype"].toString() == QLatin1String("groupVideo"),
                               joinUrl(room, QString())};
}

} // namespace meetingclient
