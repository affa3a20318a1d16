// The model behind the settings sheet.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/link/meetingKeys.h"

#include <QString>
#include <QVariantMap>

// Every set writes the value into the user's defaults (several sets can share one write), so that it outlives
// the process. An object returns its own values first, then those of the defaults; false, 0 or "" if there is
// no value. Main thread only.
class vlSettingData {
public:
    // "audioOption".
    enum class AudioType : int { Telephone = 0, Computer = 1, Both = 2, ThirdParty = 3, NoChoice = 100 };
    static constexpr int passwordDigits = 6;

    // Collects all sets during its lifetime into one write, made when the outermost object ends. A sheet that
    // opens sets most values twice, and every write waits for the disk.
    class OneWrite {
    public:
        OneWrite();
        ~OneWrite();
        OneWrite(const OneWrite &) = delete;
        OneWrite &operator=(const OneWrite &) = delete;
    };

    [[nodiscard]] bool hostvideoOn() const { return flag(vl_Setting_EnableHostVideo); }
    void setHostvideoOn(bool on) { store(vl_Setting_EnableHostVideo, on); }
    [[nodiscard]] bool paticipantvideoOn() const { return flag(vl_Setting_EnableParticipantsVideo); }
    void setPaticipantvideoOn(bool on) { store(vl_Setting_EnableParticipantsVideo, on); }
    // An AudioType, or any other number that was stored.
    [[nodiscard]] int audioType() const { return number(vl_Setting_AudioOption); }
    void setAudioType(int type) { store(vl_Setting_AudioOption, type); }
    [[nodiscard]] bool requiredMeetingPassword() const { return flag(vl_Setting_RequiredMPW); }
    void setRequiredMeetingPassword(bool required) { store(vl_Setting_RequiredMPW, required); }
    [[nodiscard]] QString meetingPassword() const { return text(vl_Setting_MeetingPassword); }
    void setMeetingPassword(const QString &password) { store(vl_Setting_MeetingPassword, password); }
    [[nodiscard]] bool enableJoinBeforeHost() const { return flag(vl_Setting_EnableJBH); }
    void setEnableJoinBeforeHost(bool enabled) { store(vl_Setting_EnableJBH, enabled); }
    [[nodiscard]] bool usePMI() const { return flag(vl_Setting_IsPMI); }
    void setUsePMI(bool use) { store(vl_Setting_IsPMI, use); }
    // For display only, never sent.
    [[nodiscard]] QString roomMeetingId() const { return text(vl_Setting_RoomMeetingId); }
    void setRoomMeetingId(const QString &number) { store(vl_Setting_RoomMeetingId, number); }
    [[nodiscard]] bool enableThirdPartyAudio() const { return flag(vl_Setting_EnableThirdPartyAudio); }
    void setEnableThirdPartyAudio(bool enabled) { store(vl_Setting_EnableThirdPartyAudio, enabled); }
    [[nodiscard]] QString thirdPartyAudio() const { return text(vl_Setting_ThirdPartyAudio); }
    void setThirdPartyAudio(const QString &text) { store(vl_Setting_ThirdPartyAudio, text); }
    [[nodiscard]] bool notShowMeAgain() const { return flag(vl_Setting_NotShowMeAgain); }
    void setNotShowMeAgain(bool hide) { store(vl_Setting_NotShowMeAgain, hide); }
    [[nodiscard]] QString scheduleForEmail() const { return text(vl_Setting_ScheduleFor); }
    void setScheduleForEmail(const QString &email) { store(vl_Setting_ScheduleFor, email); }

    // Sets the defaults of a new meeting: fixed values first, then those of the profile, the site and the
    // user's saved settings.
    void initSettingData();
    void initWithUserProfile();
    void updateWithSiteDefault();
    void initWithSavedProfile();
    // Sets the values of the loaded meeting, if there is one.
    void initWithSiteMeetingInfo();
    // Sets a random password of six digits, each 0 to 8.
    void setMeetingPasswordWithRadomDigit();

    // The settings dictionary, with "meetingPassword" only if a password is required.
    [[nodiscard]] QVariantMap getSettingsData() const;

    // The settings that the signed-in user last confirmed, from the local profile file; empty without a
    // profile, without a file, or if the file is not JSON.
    [[nodiscard]] static QVariantMap savedSettings();
    // A personal meeting number in groups ("123-456-7890"); null for a null or empty text.
    [[nodiscard]] static QString getFormatRoomMeetingId(const QString &number);

private:
    [[nodiscard]] rt::Value stored(const QString &key) const;
    [[nodiscard]] bool flag(const QString &key) const { return rt::boolValue(stored(key)); }
    [[nodiscard]] int number(const QString &key) const { return int(rt::integerValue(stored(key))); }
    [[nodiscard]] QString text(const QString &key) const { return rt::orEmpty(rt::textValue(stored(key))); }
    void store(const QString &key, const rt::Value &value);
    void setFixedDefaults();
    void takeOptions(const QVariantMap &settings);

    QVariantMap m_values; // set on this object
};
