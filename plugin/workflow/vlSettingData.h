// The model behind the settings sheet.
#pragma once

#include <QString>
#include <QVariantMap>

// The values are written into the user's defaults at every set (once when several are set together), so that
// they outlive the process. An object answers what it has set, and for the rest what the defaults say;
// without a value false, 0 or "". Main thread only.
class vlSettingData {
public:
    // "audioOption".
    enum class AudioType : int { Telephone = 0, Computer = 1, Both = 2, ThirdParty = 3, NoChoice = 100 };
    static constexpr int passwordDigits = 6;

    // Everything that is set while one exists is written together, when the outermost one ends: a sheet that
    // opens sets most values twice, and each time the system would wait for the disk.
    class OneWrite {
    public:
        OneWrite();
        ~OneWrite();
        OneWrite(const OneWrite &) = delete;
        OneWrite &operator=(const OneWrite &) = delete;
    };

    [[nodiscard]] bool hostvideoOn() const;
    void setHostvideoOn(bool on);
    [[nodiscard]] bool paticipantvideoOn() const;
    void setPaticipantvideoOn(bool on);
    [[nodiscard]] int audioType() const; // an AudioType, or whatever number was stored
    void setAudioType(int type);
    [[nodiscard]] bool requiredMeetingPassword() const;
    void setRequiredMeetingPassword(bool required);
    [[nodiscard]] QString meetingPassword() const;
    void setMeetingPassword(const QString &password);
    [[nodiscard]] bool enableJoinBeforeHost() const;
    void setEnableJoinBeforeHost(bool enabled);
    [[nodiscard]] bool usePMI() const;
    void setUsePMI(bool use);
    [[nodiscard]] QString roomMeetingId() const; // for display only, never sent
    void setRoomMeetingId(const QString &number);
    [[nodiscard]] bool enableThirdPartyAudio() const;
    void setEnableThirdPartyAudio(bool enabled);
    [[nodiscard]] QString thirdPartyAudio() const;
    void setThirdPartyAudio(const QString &text);
    [[nodiscard]] bool notShowMeAgain() const;
    void setNotShowMeAgain(bool hide);
    [[nodiscard]] QString scheduleForEmail() const;
    void setScheduleForEmail(const QString &email);

    // The defaults of a new meeting: fixed ones, then what the profile, the site and the user's saved
    // settings say.
    void initSettingData();
    void initWithUserProfile();
    void updateWithSiteDefault();
    void initWithSavedProfile();
    // The settings of the loaded meeting, when there is one.
    void initWithSiteMeetingInfo();
    // Six digits, each 0 to 8.
    void setMeetingPasswordWithRadomDigit();

    // The settings dictionary; "meetingPassword" only when a password is required.
    [[nodiscard]] QVariantMap getSettingsData() const;

    // A personal meeting number in groups ("123-456-7890"); null for a null or empty text.
    [[nodiscard]] static QString getFormatRoomMeetingId(const QString &number);

private:
    [[nodiscard]] QVariant stored(const QString &key) const;
    [[nodiscard]] QString storedText(const QString &key) const;
    void store(const QString &key, const QVariant &value);
    void storeText(const QString &key, const QString &text);
    void setFixedDefaults();
    void takeSavedSettings(const QVariantMap &saved);

    QVariantMap m_values; // what was set
};
