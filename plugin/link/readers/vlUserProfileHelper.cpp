#include "plugin/link/readers/vlUserProfileHelper.h"

#include "plugin/util/sharedObject.h"

namespace {

// Members of the client's profile answer.
const QString keyEmail = u"email"_s;
const QString keyAccountName = u"accountName"_s;
const QString keyUserId = u"userId"_s;
const QString keySnsId = u"snsId"_s;
const QString keySnsType = u"snsType"_s;
const QString keyHasSelfTelephony = u"hasSelfTelephony"_s;
const QString keyEnableThirdPartyAudio = u"enableThirdPartyAudio"_s;
const QString keyEnablePSTN = u"enablePSTN"_s;
const QString keyMyTelephonyInfo = u"myTelephonInfo"_s; // as the client spells it
const QString keyRoomMeetingId = u"roomMeetingId"_s;
const QString keyThirdPartyAudio = u"thirdPartyAudio"_s;
const QString keyBosses = u"bosses"_s;
const QString keyUse3rdPartyAsDefaultAudio = u"use3rdPartyAsDefaultAudio"_s;
const QString keyUseRandomPasswordByDefault = u"useRandomPasswordByDefault"_s;
const QString keyUserOption = u"userOption"_s;

} // namespace

vlUserProfileHelper &vlUserProfileHelper::sharedInstance() {
    return SharedObject<vlUserProfileHelper>::get();
}

void vlUserProfileHelper::setUserProfile(const rt::Value &profile) {
    if (profile.typeId() != QMetaType::QVariantMap)
        return;
    m_dataUserProfile = profile.toMap();
    const QString userId = getUID();
    if (userId.isNull())
        return;
    if (!m_userID.isNull() && m_userID != userId)
        m_isAccountChanged = true;
    m_userID = userId;
}

void vlUserProfileHelper::clearUserProfile() {
    m_dataUserProfile.clear();
}

QString vlUserProfileHelper::getEmail() const {
    return rt::textValue(member(keyEmail));
}

QString vlUserProfileHelper::getAccountName() const {
    return rt::textValue(member(keyAccountName));
}

QString vlUserProfileHelper::getUID() const {
    return rt::textValue(member(keyUserId));
}

QString vlUserProfileHelper::getSnsId() const {
    return rt::textValue(member(keySnsId));
}

rt::Value vlUserProfileHelper::getSnsType() const {
    return member(keySnsType);
}

rt::Value vlUserProfileHelper::myTelephonyInfo() const {
    return member(keyMyTelephonyInfo);
}

QString vlUserProfileHelper::roomMeetingID() const {
    return rt::textValue(member(keyRoomMeetingId));
}

QString vlUserProfileHelper::thirdPartyAudioInfo() const {
    return rt::textValue(member(keyThirdPartyAudio));
}

rt::Value vlUserProfileHelper::bossesInfo() const {
    return member(keyBosses);
}

bool vlUserProfileHelper::hasSelfTelephony() const {
    return rt::boolValue(member(keyHasSelfTelephony));
}

bool vlUserProfileHelper::enableThirdPartyAudio() const {
    return rt::boolValue(member(keyEnableThirdPartyAudio));
}

bool vlUserProfileHelper::enablePSTN() const {
    return rt::boolValue(member(keyEnablePSTN));
}

bool vlUserProfileHelper::use3rdPartyAsDefaultAudio() const {
    return rt::boolValue(member(keyUse3rdPartyAsDefaultAudio));
}

bool vlUserProfileHelper::useRandomPasswordByDefault() const {
    return rt::boolValue(member(keyUseRandomPasswordByDefault));
}

qint64 vlUserProfileHelper::userOption() const {
    return rt::integerValue(member(keyUserOption));
}
