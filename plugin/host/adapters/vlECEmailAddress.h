// One e-mail address of a host account.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

class vlECEmailAddress : public vlDelegateBase {
public:
    explicit vlECEmailAddress(rt::Object *address);

    [[nodiscard]] QString emailAddress() const; // null when not known
    [[nodiscard]] QString name() const;
    [[nodiscard]] rt::Value type() const;
};
