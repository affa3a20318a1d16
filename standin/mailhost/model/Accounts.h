// The accounts from which the user sends.
#pragma once

#include "platform/runtime/Object.h"
#include "standin/mailhost/model/HostOptions.h"

#include <memory>
#include <vector>

namespace mailhost {

class EmailAddress : public rt::Object {
public:
    explicit EmailAddress(Mailbox mailbox);
    [[nodiscard]] QString emailAddress() const { return m_mailbox.email; }
    [[nodiscard]] QString name() const { return m_mailbox.name; }
    [[nodiscard]] int type() const { return 0; }

private:
    Mailbox m_mailbox;
};

class EmailAccount : public rt::Object {
public:
    EmailAccount(Mailbox mailbox, bool isDefault, bool delegating);
    [[nodiscard]] QString emailAddress() const { return m_mailbox.email; }
    [[nodiscard]] EmailAddress *fromAddress() const { return m_fromAddress.get(); }
    [[nodiscard]] QString name() const { return m_mailbox.name; }
    [[nodiscard]] bool isDefault() const { return m_default; }
    [[nodiscard]] int connectionState() const { return 1; }
    [[nodiscard]] bool isAccountConnected() const { return true; }
    [[nodiscard]] int accountType() const { return 1; }
    // Whether the account belongs to another person for whom the user may schedule.
    [[nodiscard]] bool isDelegating() const { return m_delegating; }
    [[nodiscard]] const Mailbox &mailbox() const { return m_mailbox; }

private:
    Mailbox m_mailbox;
    bool m_default;
    bool m_delegating;
    std::unique_ptr<EmailAddress> m_fromAddress;
};

// At least one account; the first is the default one.
class Accounts {
public:
    explicit Accounts(const QList<Mailbox> &own, const QList<Mailbox> &delegating = {});
    [[nodiscard]] const std::vector<std::unique_ptr<EmailAccount>> &all() const { return m_all; }
    // Finds an account by address, ignoring case; nullptr if there is none.
    [[nodiscard]] EmailAccount *find(const QString &email) const;
    [[nodiscard]] EmailAccount *defaultAccount() const { return m_all.front().get(); }

private:
    std::vector<std::unique_ptr<EmailAccount>> m_all;
};

void defineAccountClasses();

} // namespace mailhost
