// The signed-in user's profile, as the meeting client reports it.
#pragma once

#include "platform/Literals.h"
#include "platform/runtime/Value.h"
#include "plugin/util/sharedObject.h"

#include <QString>
#include <QVariantMap>

// Without a profile, or if the profile lacks the member, getters return null, empty, false or 0. Main thread
// only.
class vlUserProfileHelper : public SharedObject<vlUserProfileHelper> {
public:
    // Replaces the profile with the dictionary; ignores anything else. A user id that differs from the last
    // one sets the account-changed flag, which stays set until it is cleared.
    void setUserProfile(const rt::Value &profile);
    // Keeps the last user id, so that the next profile of another user still counts as a change of account.
    void clearUserProfile() { m_dataUserProfile.clear(); }
    [[nodiscard]] bool hasUserProfile() const { return !m_dataUserProfile.isEmpty(); }
    [[nodiscard]] const QVariantMap &userProfile() const { return m_dataUserProfile; }

    [[nodiscard]] QString getEmail() const { return rt::textValue(member(keyEmail)); }
    [[nodiscard]] QString getAccountName() const { return rt::textValue(member(keyAccountName)); }
    [[nodiscard]] QString getUID() const { return rt::textValue(member(keyUserId)); }
    [[nodiscard]] QString getSnsId() const { return rt::textValue(member(keySnsId)); }
    [[nodiscard]] rt::Value getSnsType() const { return member(keySnsType); }
    [[nodiscard]] rt::Value myTelephonyInfo() const { return member(keyMyTelephonyInfo); }
    // The personal meeting number.
    [[nodiscard]] QString roomMeetingID() const { return rt::textValue(member(keyRoomMeetingId)); }
    [[nodiscard]] QString thirdPartyAudioInfo() const { return rt::textValue(member(keyThirdPartyAudio)); }
    // A list of the people for whom the user may schedule.
    [[nodiscard]] rt::Value bossesInfo() const { return member(keyBosses); }

    [[nodiscard]] bool hasSelfTelephony() const { return rt::boolValue(member(keyHasSelfTelephony)); }
    [[nodiscard]] bool enableThirdPartyAudio() const {
        return rt::boolValue(member(keyEnableThirdPartyAudio));
    }
    [[nodiscard]] bool enablePSTN() const { return rt::boolValue(member(keyEnablePSTN)); }
    [[nodiscard]] bool use3rdPartyAsDefaultAudio() const {
        return rt::boolValue(member(keyUse3rdPartyAsDefaultAudio));
    }
    [[nodiscard]] bool useRandomPasswordByDefault() const {
        return rt::boolValue(member(keyUseRandomPasswordByDefault));
    }

    [[nodiscard]] qint64 userOption() const { return rt::integerValue(member(keyUserOption)); }
    // No site option changes these defaults.
    [[nodiscard]] bool alwaysUseBothAsDefaultAudio() const { return false; }
    [[nodiscard]] bool alwaysTurnOnHostVideoByDefault() const { return false; }
    [[nodiscard]] bool alwaysTurnOnAttendeeVideoByDefault() const { return false; }
    [[nodiscard]] bool alwaysEnableJoinBeforeHostByDefault() const { return false; }

    [[nodiscard]] bool isAccountChanged() const { return m_isAccountChanged; }
    void setAccountChangedFlag(bool changed) { m_isAccountChanged = changed; }

private:
    // Members of the client's profile answer.
    static inline const QString keyEmail = u"email"_s;
    static inline const QString keyAccountName = u"accountName"_s;
    static inline const QString keyUserId = u"userId"_s;
    static inline const QString keySnsId = u"snsId"_s;
    static inline const QString keySnsType = u"snsType"_s;
    static inline const QString keyHasSelfTelephony = u"hasSelfTelephony"_s;
    static inline const QString keyEnableThirdPartyAudio = u"enableThirdPartyAudio"_s;
    static inline const QString keyEnablePSTN = u"enablePSTN"_s;
    static inline const QString keyMyTelephonyInfo = u"myTelephonInfo"_s; // as the client spells it
    static inline const QString keyRoomMeetingId = u"roomMeetingId"_s;
    static inline const QString keyThirdPartyAudio = u"thirdPartyAudio"_s;
    static inline const QString keyBosses = u"bosses"_s;
    static inline const QString keyUse3rdPartyAsDefaultAudio = u"use3rdPartyAsDefaultAudio"_s;
    static inline const QString keyUseRandomPasswordByDefault = u"useRandomPasswordByDefault"_s;
    static inline const QString keyUserOption = u"userOption"_s;

    [[nodiscard]] rt::Value member(const QString &key) const { return m_dataUserProfile.value(key); }

    QVariantMap m_dataUserProfile;
    QString m_userID;
    bool m_isAccountChanged = false;
};
