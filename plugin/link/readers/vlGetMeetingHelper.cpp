#include "plugin/link/readers/vlGetMeetingHelper.h"

#include "platform/runtime/Value.h"
#include "plugin/link/calendarDateRecord.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/CVlGetMeetingProtoParse.h"
#include "plugin/link/readers/base64Reader.h"
#include "plugin/util/TimeUtils.h"

#include <QTimeZone>

namespace {

// Members that only the client's meeting dictionary has.
const QString keyEnable3rdPartyAudio = u"enable3rdPartyAudio"_s;
const QString noMeetingNumber = u"0"_s;

constexpr qint64 personalMeeting = 1; // value of "usePMI"

void copyMember(const QVariantMap &from, QVariantMap &to, const QString &key) {
    const rt::Value value = from.value(key);
    if (rt::isPresent(value))
        to.insert(key, value);
}

QVariantMap appointmentOf(const QVariantMap &meeting) {
    QVariantMap appointment;
    for (const QString &key : {vl_ApptInfo_Subject, vl_ApptInfo_Duration, vl_ApptInfo_Recurrence})
        copyMember(meeting, appointment, key);
    const rt::Value startTime = meeting.value(vl_ApptInfo_StartTime);
    if (rt::isPresent(startTime)) {
        const QDateTime start = TimeUtils::timestampToDate(rt::integerValue(startTime));
        appointment.insert(vl_ApptInfo_StartTime,
                           GenerateVlCalendarDate(TimeUtils::dateToUTCString(start), QString(),
                                                  rt::Value::fromValue(QTimeZone::utc())));
    }
    return appointment;
}

QVariantMap settingOf(const QVariantMap &meeting) {
    QVariantMap setting;
    for (const QString &key :
         {vl_Setting_AudioOption, vl_Setting_EnableHostVideo, vl_Setting_EnableParticipantsVideo,
          vl_Setting_EnableJBH, vl_Setting_IsPMI, vl_Setting_MeetingPassword})
        copyMember(meeting, setting, key);
    if (rt::boolValue(meeting.value(keyEnable3rdPartyAudio)))
        copyMember(meeting, setting, vl_Setting_ThirdPartyAudio);
    setting.insert(vl_Setting_RequiredMPW,
                   !rt::textValue(meeting.value(vl_Setting_MeetingPassword)).isEmpty());
    return setting;
}

bool isPersonal(const QVariantMap &meeting) {
    return rt::integerValue(meeting.value(vl_Setting_IsPMI)) == personalMeeting;
}

// The client sends the number as a text or as an integer; null for anything else.
QString numberText(const rt::Value &number) {
    const int type = number.typeId();
    const bool isInteger = type == QMetaType::Int || type == QMetaType::LongLong;
    return isInteger ? QString::number(number.toLongLong()) : rt::textValue(number);
}

// The key of a personal meeting is its number, which is the same for every meeting.
rt::Value keyOf(const QVariantMap &meeting) {
    const QString number = numberText(meeting.value(vl_Meeting_OriginalNumber));
    const bool hasNumber = !number.isNull() && number != noMeetingNumber;
    return isPersonal(meeting) && hasNumber ? rt::Value(number) : meeting.value(vl_MeetingKey);
}

} // namespace

void vlGetMeetingHelper::setMeetingData(const QVariantMap &data, bool forPMI) {
    QVariantMap &held = RequestOwner::atHand()->loadedMeeting.data;
    const bool staysPersonal = forPMI && isPersonal(held);
    const rt::Value remembered = held.value(vl_Setting_IsPMI);
    held = data;
    if (staysPersonal)
        held.insert(vl_Setting_IsPMI, remembered);
}

bool vlGetMeetingHelper::hasMeetingInfo() const {
    return !rt::textValue(meetingData().value(vl_MeetingKey)).isEmpty();
}

QVariantMap vlGetMeetingHelper::getMeetingInfo() const {
    QVariantMap info{{vl_Outlook_ApptInfo, appointmentOf(meetingData())},
                     {vl_Setting, settingOf(meetingData())}};
    const rt::Value key = keyOf(meetingData());
    if (rt::isPresent(key))
        info.insert(vl_MeetingKey, key);
    const QString invitation = getInviteEmail();
    if (!invitation.isEmpty())
        info.insert(vl_ApptInfo_Body, invitation);
    copyMember(meetingData(), info, vl_Meeting_JoinUrl);
    const QString html = getInviteHtmlEmail();
    if (!html.isNull())
        info.insert(vl_API_Para_InviteHtmlEmail, html);
    return info;
}

void vlGetMeetingHelper::setPBMeetingData(const QString &base64) {
    if (!base64.isNull())
        RequestOwner::atHand()->loadedMeeting.binary = base64;
}

QString vlGetMeetingHelper::getInviteHtmlEmail() const {
    const QString &binary = RequestOwner::atHand()->loadedMeeting.binary;
    return hasPBMeetingData() ? readerOver<CVlGetMeetingProtoParse>(binary).GetInviteHtmlEmail() : QString();
}

bool vlGetMeetingHelper::supportHtmlEmail() const {
    return !getInviteHtmlEmail().isEmpty();
}

QString vlGetMeetingHelper::getInviteEmail() const {
    return rt::textValue(meetingData().value(vl_API_Para_InvitationEmail));
}
