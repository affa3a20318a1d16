// The base of every adapter: one host object, reached by name.
#pragma once

#include "platform/runtime/Object.h"
#include "platform/runtime/Value.h"

#include <QString>

// Wraps a host object, which may be missing, of another class, or lack what is asked of it; then every access
// yields no value and nothing else happens. The object is not kept alive, and it may go away at any time.
// What an access answers is the host's value, unchanged. Main thread only.
class vlDelegateBase {
public:
    // An adapter on nothing.
    vlDelegateBase() = default;
    // Wraps the object only when it is of the host class of that name (or of a subclass).
    vlDelegateBase(const QString &className, rt::Object *delegate);

    // Points the adapter at another object, of whatever class. Accesses to one of a wrong class still fail.
    void setDelegate(rt::Object *delegate) { m_delegate = rt::Weak<>(delegate); }
    // The wrapped object; nullptr when there is none (any more).
    [[nodiscard]] rt::Object *delegate() const { return m_delegate.get(); }
    // Whether there is an object and it is of the class; both are looked up anew.
    [[nodiscard]] bool isValidConnection() const;

    // Calls the member of that name with the given arguments. No value when the connection is not valid, the
    // name is empty, the object has no such member, or it takes another number of arguments.
    rt::Value getOLItemID(const QString &member) const;
    rt::Value getOLItemID(const QString &member, const rt::Value &arg1) const;
    rt::Value getOLItemID(const QString &member, const rt::Value &arg1, const rt::Value &arg2) const;

protected:
    // The same for any number of arguments.
    rt::Value callMember(const QString &member, rt::Args arguments) const;
    // What a member without arguments answers, as the kind of value that is wanted.
    [[nodiscard]] QString text(const QString &member) const { return rt::textValue(getOLItemID(member)); }
    [[nodiscard]] bool flag(const QString &member) const { return rt::boolValue(getOLItemID(member)); }
    [[nodiscard]] int number(const QString &member) const {
        return int(rt::integerValue(getOLItemID(member)));
    }
    [[nodiscard]] rt::Object *object(const QString &member) const {
        return rt::objectValue(getOLItemID(member));
    }
    [[nodiscard]] bool hasMember(const QString &member) const;

private:
    QString m_className;
    rt::Weak<> m_delegate;
};
