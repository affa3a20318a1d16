#include "plugin/link/requests/vlAPICommitMeeting.h"

#include "plugin/link/linkPorts.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/requests/feedbackErrors.h"
#include "plugin/util/TimeUtils.h"
#include "plugin/util/vlOLUtils.h"

#include <QTimeZone>

namespace {

constexpr int emptyFieldsInHead = 13;
constexpr qint64 thirdPartyAudioOption = 3;
const QString noMeetingKey = u"0"_s;

void copyMember(const QVariantMap &from, QVariantMap &to, const QString &key) {
    const rt::Value value = from.value(key);
    if (value.isValid())
        to.insert(key, value);
}

QString sentSubject(const rt::Value &subject) {
    return rt::orEmpty(rt::textValue(subject)).left(vlAPICommitMeeting::maximumSubjectLength);
}

QVariantMap sentAppointment(const QVariantMap &snapshot) {
    QVariantMap sent;
    copyMember(snapshot, sent, vl_ApptInfo_Duration);
    copyMember(snapshot, sent, vl_ApptInfo_Location);
    sent.insert(vl_ApptInfo_Subject, sentSubject(snapshot.value(vl_ApptInfo_Subject)));
    copyMember(snapshot, sent, vl_ApptInfo_Recurrence);
    const QVariantMap start = rt::mapValue(snapshot.value(vl_ApptInfo_StartTime));
    const QString localTime = rt::textValue(start.value(vl_ApptInfo_CalDate_LocalTime));
    if (!localTime.isNull())
        sent.insert(vl_ApptInfo_StartTime, TimeUtils::stringToTimestamp(localTime));
    const auto zone = start.value(vl_ApptInfo_Timezone).value<QTimeZone>();
    if (zone.isValid())
        sent.insert(vl_ApptInfo_Timezone, QString::fromUtf8(zone.id()));
    return sent;
}

QString sentPassword(const QVariantMap &setting) {
    const QString password = rt::textValue(setting.value(vl_Setting_MeetingPassword));
    const bool isSent = rt::boolValue(setting.value(vl_Setting_RequiredMPW)) && !password.isNull();
    return isSent ? password : u""_s;
}

QVariantMap sentSetting(const QVariantMap &setting) {
    QVariantMap sent;
    copyMember(setting, sent, vl_Setting_AudioOption);
    if (rt::integerValue(setting.value(vl_Setting_AudioOption)) == thirdPartyAudioOption)
        copyMember(setting, sent, vl_Setting_ThirdPartyAudio);
    for (const QString &key : {vl_Setting_EnableHostVideo, vl_Setting_EnableJBH,
                               vl_Setting_EnableParticipantsVideo, vl_Setting_IsPMI})
        copyMember(setting, sent, key);
    sent.insert(vl_Setting_MeetingPassword, sentPassword(setting));
    const QString scheduleFor = rt::textValue(setting.value(vl_Setting_ScheduleFor));
    if (!scheduleFor.isEmpty())
        sent.insert(vl_Setting_ScheduleFor, scheduleFor);
    return sent;
}

} // namespace

vlAPICommitMeeting::vlAPICommitMeeting(ClientAnswer answer, decltype(Kind::sendResponse) sendResponse)
    : vlAPIBase({ClientAction::Meeting, answer, meetingFeedbackError, true, true, sendResponse}) {}

ClientError vlAPICommitMeeting::doAction(QWidget *window) {
    const ClientError error = vlAPIBase::doAction(window);
    FinishReceiver *receiver = LinkPorts::instance().finishReceiver;
    if (error == ClientError::None && receiver) {
        const QVariantMap setting = rt::mapValue(m_dataMeetingInfo.value(vl_Setting));
        receiver->setScheduleForEmail(rt::textValue(setting.value(vl_Setting_ScheduleFor)));
    }
    return error;
}

QString vlAPICommitMeeting::getContentIdentifierHead() const {
    return QString::number(qint32(m_msgParamActionId)) + QString(emptyFieldsInHead, fieldSeparator);
}

QString vlAPICommitMeeting::getAPIData() const {
    const QVariantMap setting = rt::mapValue(m_dataMeetingInfo.value(vl_Setting));
    QVariantMap content{
        {vl_Outlook_ApptInfo, sentAppointment(rt::mapValue(m_dataMeetingInfo.value(vl_Outlook_ApptInfo)))},
        {vl_Setting, sentSetting(setting)}};
    const QString meetingKey = rt::textValue(m_dataMeetingInfo.value(vl_MeetingKey));
    if (!meetingKey.isEmpty() && meetingKey != noMeetingKey)
        content.insert(vl_MeetingKey, meetingKey);
    return getContentIdentifierHead() + vlOLUtils::toJSONString(content);
}

void vlAPICommitMeeting::describe(PendingRequest &request) const {
    request.meetingKey = rt::textValue(m_dataMeetingInfo.value(vl_MeetingKey));
    const QVariantMap setting = rt::mapValue(m_dataMeetingInfo.value(vl_Setting));
    request.forPMI = rt::boolValue(setting.value(vl_Setting_IsPMI));
}

vlAPICommitMeeting::Answer vlAPICommitMeeting::decoded(const QString &content) const {
    const QString key = vlOLUtils::trimAllSpace(content.section(fieldSeparator, 0, 0));
    return {content, key.isEmpty() || key == noMeetingKey ? QStringList() : QStringList{key}, {}};
}

bool vlAPICommitMeeting::handle(const PendingRequest &, const Answer &answer) {
    const QString &content = answer.content;
    const qsizetype separator = content.indexOf(fieldSeparator);
    if (separator < 0)
        return false;
    // The invitation may contain separators itself: only the first one counts.
    const QString rawKey = content.left(separator);
    const QString invitation = content.mid(separator + 1);
    if (rawKey.isEmpty() || rawKey == noMeetingKey) {
        // The content is the client's error text.
        popupWarnWithErrorMsg(parentWindow(), content);
        return false;
    }
    const auto command =
        isUpdateMeeting() ? MeetingCommand::CmdUpdateMeeting : MeetingCommand::CmdScheduleMeeting;
    sendResponse(command, QVariantMap{{vl_MeetingKey, vlOLUtils::trimAllSpace(rawKey)},
                                      {vl_API_Para_InvitationEmail, invitation},
                                      {keyVLResult, getAPIResult()}});
    return true;
}
