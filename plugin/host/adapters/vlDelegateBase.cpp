#include "plugin/host/adapters/vlDelegateBase.h"

#include "platform/runtime/Runtime.h"
#include "plugin/util/vlDebugHelper.h"
#include "plugin/util/vlOLUtils.h"

vlDelegateBase::vlDelegateBase(const QString &className, rt::Object *delegate)
    : m_className(className) {
    if (vlOLUtils::kindofClass(delegate, className))
        m_delegate = rt::Weak<>(delegate);
    vlDebugHelper::displayClassFuncs(m_delegate.get());
}

bool vlDelegateBase::isValidConnection() const {
    return vlOLUtils::kindofClass(m_delegate.get(), m_className);
}

rt::Value vlDelegateBase::getOLItemID(const QString &member) const {
    return callMember(member, rt::Args());
}

rt::Value vlDelegateBase::getOLItemID(const QString &member, const rt::Value &arg1) const {
    return callMember(member, rt::Args(&arg1, 1));
}

rt::Value vlDelegateBase::getOLItemID(const QString &member, const rt::Value &arg1,
                                      const rt::Value &arg2) const {
    const rt::Value arguments[] = {arg1, arg2};
    return callMember(member, rt::Args(arguments, 2));
}

rt::Value vlDelegateBase::callMember(const QString &member, rt::Args arguments) const {
    if (!isValidConnection() || member.isEmpty())
        return {};
    return rt::sendArgs(m_delegate.get(), rt::Selector(member), arguments);
}

bool vlDelegateBase::hasMember(const QString &member) const {
    return isValidConnection() && rt::respondsTo(m_delegate.get(), rt::Selector(member));
}
