#include "plugin/link/readers/vlGetPACHelper.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/base64Reader.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlMeetingCommon.h"

void vlGetPACHelper::setPACInfo(const QString &base64) {
    if (base64.isNull())
        return;
    m_dataPACInfo = base64;
    const auto accounts = readerOver<CVlGetPACProtoParse>(base64);
    if (hasPACInfo() && accounts.isParsed()) {
        m_accounts = accounts;
        m_userID = vlUserProfileHelper::sharedInstance().getUID();
    }
    vlMeetingCommon::savePACConfigToLocal(pacCount());
}

bool vlGetPACHelper::isOfPresentUser() const {
    return hasPACInfo() && m_accounts.isParsed() &&
           (m_userID.isNull() || m_userID == vlUserProfileHelper::sharedInstance().getUID());
}

int vlGetPACHelper::pacCount() const {
    return hasPACInfo() ? m_accounts.GetPACCount() : 0;
}

QString vlGetPACHelper::pacDialInNumber(int account) const {
    return hasPACInfo() ? m_accounts.GetPACDialInNumber(account) : QString();
}

QString vlGetPACHelper::pacDialInNumberWithCommaSeparator(int account) const {
    return hasPACInfo() ? m_accounts.GetPACDialInNumberWithCommaSeparator(account) : QString();
}

QString vlGetPACHelper::pacMeetingID(int account) const {
    return hasPACInfo() ? QString::number(m_accounts.GetPACMeetingNumber(account)) : QString();
}

QString vlGetPACHelper::invitationMail(int account) const {
    return hasPACInfo() ? m_accounts.GetInvitationEmail(account) : QString();
}

QString vlGetPACHelper::htmlInvitationMail(int account) const {
    return hasPACInfo() ? m_accounts.GetHtmlInvitationEmail(account) : QString();
}

bool vlGetPACHelper::supportHtmlInvitationMail(int account) const {
    return !htmlInvitationMail(account).isEmpty();
}

bool vlGetPACHelper::isPACEnabled() const {
    return rt::boolValue(vlMeetingCommon::siteConfigMember(vl_LocalProfile_EnablePAC));
}
