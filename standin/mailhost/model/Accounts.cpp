#include "standin/mailhost/model/Accounts.h"

#include "standin/mailhost/model/Bind.h"

namespace mailhost {

EmailAddress::EmailAddress(Mailbox mailbox)
    : rt::Object(rt::classNamed(u"ECEmailAddress"_s))
    , m_mailbox(std::move(mailbox)) {}

EmailAccount::EmailAccount(Mailbox mailbox, bool isDefault, bool delegating)
    : rt::Object(rt::classNamed(u"ECEmailAccount"_s))
    , m_mailbox(std::move(mailbox))
    , m_default(isDefault)
    , m_delegating(delegating)
    , m_fromAddress(std::make_unique<EmailAddress>(m_mailbox)) {}

Accounts::Accounts(const QList<Mailbox> &own, const QList<Mailbox> &delegating) {
    for (const Mailbox &mailbox : own)
        m_all.push_back(std::make_unique<EmailAccount>(mailbox, m_all.empty(), false));
    for (const Mailbox &mailbox : delegating)
        m_all.push_back(std::make_unique<EmailAccount>(mailbox, false, true));
    if (m_all.empty())
        m_all.push_back(
            std::make_unique<EmailAccount>(Mailbox{u"Ada Example"_s, u"ada@parlo.example"_s}, true, false));
}

EmailAccount *Accounts::find(const QString &email) const {
    for (const auto &account : m_all)
        if (!email.isEmpty() && account->emailAddress().compare(email, Qt::CaseInsensitive) == 0)
            return account.get();
    return nullptr;
}

void defineAccountClasses() {
    addMethods(rt::defineClass(u"ECEmailAddress"_s),
               {{"emailAddress", bind<&EmailAddress::emailAddress>, "@@:"},
                {"name", bind<&EmailAddress::name>, "@@:"},
                {"type", bind<&EmailAddress::type>, "i@:"}});
    addMethods(rt::defineClass(u"ECEmailAccount"_s),
               {{"emailAddress", bind<&EmailAccount::emailAddress>, "@@:"},
                {"fromAddress", bind<&EmailAccount::fromAddress>, "@@:"},
                {"connectionState", bind<&EmailAccount::connectionState>, "i@:"},
                {"isAccountConnected", bind<&EmailAccount::isAccountConnected>, "B@:"},
                {"accountType", bind<&EmailAccount::accountType>, "i@:"},
                {"isDefault", bind<&EmailAccount::isDefault>, "B@:"},
                {"name", bind<&EmailAccount::name>, "@@:"},
                {"realName", bind<&EmailAccount::name>, "@@:"}});
}

} // namespace mailhost
