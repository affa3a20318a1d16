// An e-mail account of the host.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"
#include "plugin/host/adapters/vlECEmailAddress.h"

#include <optional>

class vlECEmailAccount : public vlDelegateBase {
public:
    explicit vlECEmailAccount(rt::Object *account)
        : vlDelegateBase(key_vlECEmailAccount, account) {
        if (rt::Object *address = fromAddress())
            m_fromAddress.emplace(address);
    }

    // Null if unknown.
    [[nodiscard]] QString emailAddress() const { return text(olItem_emailAddress); }
    // The sender address of this account at the time when the adapter was made; "" if the account has none.
    [[nodiscard]] QString curFromAddress() const {
        return m_fromAddress ? m_fromAddress->emailAddress() : u""_s;
    }
    [[nodiscard]] rt::Object *fromAddress() const { return object(olItem_fromAddress); }
    [[nodiscard]] rt::Value connectionState() const { return getOLItemID(olItem_connectionState); }
    [[nodiscard]] bool isAccountConnected() const { return flag(olItem_isAccountConnected); }
    [[nodiscard]] rt::Value accountType() const { return getOLItemID(olItem_accountType); }
    [[nodiscard]] bool isDefault() const { return flag(olItem_isDefault); }
    [[nodiscard]] QString name() const { return text(olItem_name); }
    [[nodiscard]] QString realName() const { return text(olItem_realName); }

private:
    std::optional<vlECEmailAddress> m_fromAddress;
};
