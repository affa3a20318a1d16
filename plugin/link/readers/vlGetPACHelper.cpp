#include "plugin/link/readers/vlGetPACHelper.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/CVlGetPACProtoParse.h"
#include "plugin/link/readers/base64Reader.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/util/sharedObject.h"

namespace {
using Accounts = CVlGetPACProtoParse;
}

vlGetPACHelper &vlGetPACHelper::sharedInstance() {
    return SharedObject<vlGetPACHelper>::get();
}

void vlGetPACHelper::setPACInfo(const QString &base64) {
    if (base64.isNull())
        return;
    m_dataPACInfo = base64;
    // Parsed here, once. What does not parse leaves the last good message in place, for all that is asked.
    if (hasPACInfo() && readerOver<Accounts>(m_dataPACInfo).isParsed())
        m_userID = vlUserProfileHelper::sharedInstance().getUID();
    vlMeetingCommon::savePACConfigToLocal();
}

bool vlGetPACHelper::isOfPresentUser() const {
    return hasPACInfo() && (m_userID.isNull() || m_userID == vlUserProfileHelper::sharedInstance().getUID());
}

int vlGetPACHelper::pacCount() const {
    return hasPACInfo() ? Accounts().GetPACCount() : 0;
}

QString vlGetPACHelper::pacDialInNumber(int account) const {
    return hasPACInfo() ? Accounts().GetPACDialInNumber(account) : QString();
}

QString vlGetPACHelper::pacDialInNumberWithCommaSeparator(int account) const {
    return hasPACInfo() ? Accounts().GetPACDialInNumberWithCommaSeparator(account) : QString();
}

QString vlGetPACHelper::pacMeetingID(int account) const {
    return hasPACInfo() ? QString::number(Accounts().GetPACMeetingNumber(account)) : QString();
}

QString vlGetPACHelper::invitationMail(int account) const {
    return hasPACInfo() ? Accounts().GetInvitationEmail(account) : QString();
}

QString vlGetPACHelper::htmlInvitationMail(int account) const {
    return hasPACInfo() ? Accounts().GetHtmlInvitationEmail(account) : QString();
}

bool vlGetPACHelper::supportHtmlInvitationMail(int account) const {
    return !htmlInvitationMail(account).isEmpty();
}

bool vlGetPACHelper::isPACEnabled() const {
    return rt::boolValue(vlMeetingCommon::siteConfigMember(vl_LocalProfile_EnablePAC));
}
