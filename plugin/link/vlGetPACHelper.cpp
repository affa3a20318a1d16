#include "plugin/link/vlGetPACHelper.h"

#include "plugin/link/CVlGetPACProtoParse.h"
#include "plugin/link/base64Reader.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/sharedObject.h"
#include "plugin/link/siteConfiguration.h"

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
    savePACConfigToLocal();
}

void vlGetPACHelper::savePACConfigToLocal() const {
    siteConfiguration::setMember(vl_LocalProfile_EnablePAC, pacCount() != 0);
}

int vlGetPACHelper::pacCount() const {
    return hasPACInfo() ? readerOver<Accounts>(m_dataPACInfo).GetPACCount() : 0;
}

QString vlGetPACHelper::pacDialInNumber(int account) const {
    return hasPACInfo() ? readerOver<Accounts>(m_dataPACInfo).GetPACDialInNumber(account) : QString();
}

QString vlGetPACHelper::pacDialInNumberWithCommaSeparator(int account) const {
    return hasPACInfo() ? readerOver<Accounts>(m_dataPACInfo).GetPACDialInNumberWithCommaSeparator(account)
                        : QString();
}

QString vlGetPACHelper::pacMeetingID(int account) const {
    return hasPACInfo() ? QString::number(readerOver<Accounts>(m_dataPACInfo).GetPACMeetingNumber(account))
                        : QString();
}

QString vlGetPACHelper::invitationMail(int account) const {
    return hasPACInfo() ? readerOver<Accounts>(m_dataPACInfo).GetInvitationEmail(account) : QString();
}

QString vlGetPACHelper::htmlInvitationMail(int account) const {
    return hasPACInfo() ? readerOver<Accounts>(m_dataPACInfo).GetHtmlInvitationEmail(account) : QString();
}

bool vlGetPACHelper::supportHtmlInvitationMail(int account) const {
    return !htmlInvitationMail(account).isEmpty();
}

bool vlGetPACHelper::isPACEnabled() const {
    return rt::boolValue(siteConfiguration::member(vl_LocalProfile_EnablePAC));
}
