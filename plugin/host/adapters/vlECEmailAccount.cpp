#include "plugin/host/adapters/vlECEmailAccount.h"

#include "plugin/host/adapters/hostNames.h"

vlECEmailAccount::vlECEmailAccount(rt::Object *account)
    : vlDelegateBase(key_vlECEmailAccount, account) {
    if (rt::Object *address = fromAddress())
        m_fromAddress.emplace(address);
}

QString vlECEmailAccount::emailAddress() const {
    return rt::textValue(getOLItemID(olItem_emailAddress));
}

QString vlECEmailAccount::curFromAddress() const {
    return m_fromAddress ? m_fromAddress->emailAddress() : u""_s;
}

rt::Object *vlECEmailAccount::fromAddress() const {
    return rt::objectValue(getOLItemID(olItem_fromAddress));
}

rt::Value vlECEmailAccount::connectionState() const {
    return getOLItemID(olItem_connectionState);
}

bool vlECEmailAccount::isAccountConnected() const {
    return rt::boolValue(getOLItemID(olItem_isAccountConnected));
}

rt::Value vlECEmailAccount::accountType() const {
    return getOLItemID(olItem_accountType);
}

bool vlECEmailAccount::isDefault() const {
    return rt::boolValue(getOLItemID(olItem_isDefault));
}

QString vlECEmailAccount::name() const {
    return rt::textValue(getOLItemID(olItem_name));
}

QString vlECEmailAccount::realName() const {
    return rt::textValue(getOLItemID(olItem_realName));
}
