#include "plugin/link/readers/vlUserProfileHelper.h"

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
