// The signed-in user, as the meeting client tells it.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>
#include <QVariantList>
#include <QVariantMap>

// Without a profile, or without the member asked for, every answer is null, empty, false or 0. Main thread
// only.
class vlUserProfileHelper {
public:
    static vlUserProfileHelper &sharedInstance();

    // Replaces the profile with the dictionary; anything else is ignored. Another user id than the last one
    // raises the account-changed flag, which stays until it is taken down.
    void setUserProfile(const rt::Value &profile);
    // The last user id outlives it: another user's next profile still counts as a change of account.
    void clearUserProfile();
    [[nodiscard]] bool hasUserProfile() const { return !m_dataUserProfile.isEmpty(); }
    [[nodiscard]] const QVariantMap &userProfile() const { return m_dataUserProfile; }

    [[nodiscard]] QString getEmail() const;
    [[nodiscard]] QString getAccountName() const;
    [[nodiscard]] QString getUID() const;
    [[nodiscard]] QString getSnsId() const;
    [[nodiscard]] rt::Value getSnsType() const;
    [[nodiscard]] rt::Value myTelephonyInfo() const;
    [[nodiscard]] QString roomMeetingID() const; // the personal meeting number
    [[nodiscard]] QString thirdPartyAudioInfo() const;
    [[nodiscard]] rt::Value bossesInfo() const; // a list of the people for whom the user may schedule

    [[nodiscard]] bool hasSelfTelephony() const;
    [[nodiscard]] bool enableThirdPartyAudio() const;
    [[nodiscard]] bool enablePSTN() const;
    [[nodiscard]] bool use3rdPartyAsDefaultAudio() const;
    [[nodiscard]] bool useRandomPasswordByDefault() const;

    [[nodiscard]] qint64 userOption() const;
    // No site option changes these defaults in this edition.
    [[nodiscard]] bool alwaysUseBothAsDefaultAudio() const { return false; }
    [[nodiscard]] bool alwaysTurnOnHostVideoByDefault() const { return false; }
    [[nodiscard]] bool alwaysTurnOnAttendeeVideoByDefault() const { return false; }
    [[nodiscard]] bool alwaysEnableJoinBeforeHostByDefault() const { return false; }

    [[nodiscard]] bool isAccountChanged() const { return m_isAccountChanged; }
    void setAccountChangedFlag(bool changed) { m_isAccountChanged = changed; }

private:
    [[nodiscard]] rt::Value member(const QString &key) const { return m_dataUserProfile.value(key); }

    QVariantMap m_dataUserProfile;
    QString m_userID;
    bool m_isAccountChanged = false;
};
