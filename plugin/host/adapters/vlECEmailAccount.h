// An e-mail account of the host.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"
#include "plugin/host/adapters/vlECEmailAddress.h"

#include <optional>

class vlECEmailAccount : public vlDelegateBase {
public:
    explicit vlECEmailAccount(rt::Object *account);

    [[nodiscard]] QString emailAddress() const; // null when not known
    // The address that mail of this account comes from, as it was when the adapter was made; "" when the
    // account has none.
    [[nodiscard]] QString curFromAddress() const;
    [[nodiscard]] rt::Object *fromAddress() const;
    [[nodiscard]] rt::Value connectionState() const;
    [[nodiscard]] bool isAccountConnected() const;
    [[nodiscard]] rt::Value accountType() const;
    [[nodiscard]] bool isDefault() const;
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString realName() const;

private:
    std::optional<vlECEmailAddress> m_fromAddress;
};
