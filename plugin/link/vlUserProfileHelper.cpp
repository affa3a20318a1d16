#include "plugin/link/vlUserProfileHelper.h"

#include "plugin/link/sharedObject.h"

namespace {

// Members of the client's profile answer.
const QString keyEmail = QStringLiteral("email");
const QString keyAccountName = QStringLiteral("accountName");
const QString keyUserId = QStringLiteral("userId");
const QString keySnsId = QStringLiteral("snsId");
const QString keySnsType = QStringLiteral("snsType");
const QString keyHasSelfTelephony = QStringLiteral("hasSelfTelephony");
const QString keyEnableThirdPartyAudio = QStringLiteral("enableThirdPartyAudio");
const QString keyEnablePSTN = QStringLiteral("enablePSTN");
const QString keyMyTelephonyInfo = QStringLiteral("myTelephonInfo"); // as the client spells it
const QString keyRoomMeetingId = QStringLiteral("roomMeetingId");
const QString keyThirdPartyAudio = QStringLiteral("thirdPartyAudio");
const QString keyBosses = QStringLiteral("bosses");
const QString keyUse3rdPartyAsDefaultAudio = QStringLiteral("use3rdPartyAsDefaultAudio");
const QString keyUseRandomPasswordByDefault = QStringLiteral("useRandomPasswordByDefault");
const QString keyUserOption = QStringLiteral("userOption");

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
