#include "plugin/host/adapters/vlECEmailAddress.h"

#include "plugin/host/adapters/hostNames.h"

vlECEmailAddress::vlECEmailAddress(rt::Object *address)
    : vlDelegateBase(key_vlECEmailAddress, address) {}

QString vlECEmailAddress::emailAddress() const {
    return rt::textValue(getOLItemID(olItem_emailAddress));
}

QString vlECEmailAddress::name() const {
    return rt::textValue(getOLItemID(olItem_name));
}

rt::Value vlECEmailAddress::type() const {
    return getOLItemID(olItem_type);
}
