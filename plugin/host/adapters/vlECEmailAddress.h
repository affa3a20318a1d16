// One e-mail address of a host account.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

class vlECEmailAddress : public vlDelegateBase {
public:
    explicit vlECEmailAddress(rt::Object *address)
        : vlDelegateBase(key_vlECEmailAddress, address) {}

    // Null if unknown.
    [[nodiscard]] QString emailAddress() const { return text(olItem_emailAddress); }
    [[nodiscard]] QString name() const { return text(olItem_name); }
    [[nodiscard]] rt::Value type() const { return getOLItemID(olItem_type); }
};
