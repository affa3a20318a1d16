#include "plugin/workflow/vlSettingData.h"

#include "platform/services/Services.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlCommon.h"
#include "plugin/util/vlOLUtils.h"

#include <QRandomGenerator>

namespace {

int openWrites = 0;

bool usesRandomPassword() {
    const vlUserProfileHelper &profile = vlUserProfileHelper::sharedInstance();
    return profile.hasUserProfile() && profile.useRandomPasswordByDefault();
}

} // namespace

vlSettingData::OneWrite::OneWrite() {
    ++openWrites;
}

vlSettingData::OneWrite::~OneWrite() {
    if (--openWrites == 0)
        platform::services().userDefaults->synchronize();
}

// A sheet shows its own values even after another editor's sheet has changed the defaults.
rt::Value vlSettingData::stored(const QString &key) const {
    const auto own = m_values.constFind(key);
    return own == m_values.constEnd() ? platform::services().userDefaults->value(key) : *own;
}

void vlSettingData::store(const QString &key, const rt::Value &value) {
    const OneWrite write;
    const rt::Value kept = rt::isPresent(value) ? value : rt::Value();
    m_values.insert(key, kept);
    platform::services().userDefaults->setValue(key, kept);
}

QVariantMap vlSettingData::savedSettings() {
    return vlOLUtils::toNSDictionary(
        vlOLUtils::readStrFromFile(vlCommon::getVlUserProfilePath(vlCommon::getUID())));
}

void vlSettingData::initSettingData() {
    const OneWrite write;
    setFixedDefaults();
    initWithUserProfile();
    updateWithSiteDefault();
    initWithSavedProfile();
}

void vlSettingData::setFixedDefaults() {
    setHostvideoOn(false);
    setPaticipantvideoOn(false);
    setAudioType(int(AudioType::Both));
    setRequiredMeetingPassword(false);
    setEnableJoinBeforeHost(false);
    setUsePMI(false);
    setNotShowMeAgain(false);
    setMeetingPassword(u""_s);
    setThirdPartyAudio(u""_s);
    setScheduleForEmail(u""_s);
}

void vlSettingData::initWithUserProfile() {
    const vlUserProfileHelper &profile = vlUserProfileHelper::sharedInstance();
    if (!profile.hasUserProfile())
        return;
    setEnableThirdPartyAudio(profile.enableThirdPartyAudio());
    if (profile.enableThirdPartyAudio())
        setThirdPartyAudio(profile.thirdPartyAudioInfo());
    setRoomMeetingId(profile.roomMeetingID());
}

void vlSettingData::updateWithSiteDefault() {
    const vlUserProfileHelper &profile = vlUserProfileHelper::sharedInstance();
    if (!profile.hasUserProfile())
        return;
    if (usesRandomPassword() && !usePMI()) {
        setRequiredMeetingPassword(true);
        setMeetingPasswordWithRadomDigit();
    }
    if (profile.enableThirdPartyAudio() && profile.use3rdPartyAsDefaultAudio())
        setAudioType(int(AudioType::ThirdParty));
}

void vlSettingData::initWithSavedProfile() {
    const QVariantMap saved = savedSettings();
    if (saved.isEmpty())
        return;
    setUsePMI(rt::boolValue(saved.value(vl_Setting_IsPMI)));
    if (!rt::boolValue(saved.value(vl_Setting_NotShowMeAgain)))
        return;
    takeOptions(saved);
    const QString password = rt::textValue(saved.value(vl_Setting_MeetingPassword));
    const bool keepsRandomPassword = usesRandomPassword() && !usePMI();
    if (!keepsRandomPassword && !password.isEmpty()) {
        setRequiredMeetingPassword(true);
        setMeetingPassword(password);
    }
    setNotShowMeAgain(true);
}

void vlSettingData::takeOptions(const QVariantMap &settings) {
    setHostvideoOn(rt::boolValue(settings.value(vl_Setting_EnableHostVideo)));
    setPaticipantvideoOn(rt::boolValue(settings.value(vl_Setting_EnableParticipantsVideo)));
    setAudioType(int(rt::integerValue(settings.value(vl_Setting_AudioOption))));
    setEnableJoinBeforeHost(rt::boolValue(settings.value(vl_Setting_EnableJBH)));
}

void vlSettingData::initWithSiteMeetingInfo() {
    const vlGetMeetingHelper &meeting = vlGetMeetingHelper::sharedInstance();
    if (!meeting.hasMeetingInfo())
        return;
    const QVariantMap settings = rt::mapValue(meeting.getMeetingInfo().value(vl_Setting));
    takeOptions(settings);
    setUsePMI(rt::boolValue(settings.value(vl_Setting_IsPMI)));
    const QString password = rt::textValue(settings.value(vl_Setting_MeetingPassword));
    setRequiredMeetingPassword(!password.isEmpty());
    setMeetingPassword(rt::orEmpty(password));
    const QString thirdParty = rt::textValue(settings.value(vl_Setting_ThirdPartyAudio));
    if (!thirdParty.isEmpty())
        setThirdPartyAudio(thirdParty);
}

void vlSettingData::setMeetingPasswordWithRadomDigit() {
    constexpr quint32 digitValues = 9; // 9 is never used
    QString password;
    for (int i = 0; i < passwordDigits; ++i)
        password += QString::number(QRandomGenerator::system()->bounded(digitValues));
    setMeetingPassword(password);
}

QVariantMap vlSettingData::getSettingsData() const {
    QVariantMap settings{{vl_Setting_EnableHostVideo, hostvideoOn()},
                         {vl_Setting_EnableParticipantsVideo, paticipantvideoOn()},
                         {vl_Setting_AudioOption, audioType()},
                         {vl_Setting_EnableThirdPartyAudio, enableThirdPartyAudio()},
                         {vl_Setting_ThirdPartyAudio, thirdPartyAudio()},
                         {vl_Setting_RequiredMPW, requiredMeetingPassword()},
                         {vl_Setting_EnableJBH, enableJoinBeforeHost()},
                         {vl_Setting_IsPMI, usePMI()},
                         {vl_Setting_NotShowMeAgain, notShowMeAgain()},
                         {vl_Setting_ScheduleFor, scheduleForEmail()}};
    if (requiredMeetingPassword())
        settings.insert(vl_Setting_MeetingPassword, meetingPassword());
    return settings;
}

QString vlSettingData::getFormatRoomMeetingId(const QString &number) {
    if (number.isEmpty())
        return {};
    constexpr QChar dash = u'-';
    constexpr qsizetype firstGroup = 3;
    constexpr qsizetype longNumber = 11; // from this length on the second group has four digits
    const qsizetype secondDash = number.size() >= longNumber ? 8 : 7;
    QString formatted = number;
    if (formatted.size() >= firstGroup)
        formatted.insert(firstGroup, dash);
    if (formatted.size() >= secondDash)
        formatted.insert(secondDash, dash);
    return formatted;
}
