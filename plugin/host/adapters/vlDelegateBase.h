// The base class of all adapters, which call a host object by name.
#pragma once

#include "platform/runtime/Object.h"
#include "platform/runtime/Value.h"

#include <QString>

// Wraps a host object that may be missing, may have another class or may lack the member; then every access
// returns no value and has no effect. The object is not kept alive and may be deleted at any time. An access
// returns the host's value unchanged. Main thread only.
class vlDelegateBase {
public:
    // An adapter without an object.
    vlDelegateBase() = default;
    // Wraps the object only if it is an instance of the host class of that name or of a subclass.
    vlDelegateBase(const QString &className, rt::Object *delegate);

    // Sets another object without checking its class. Accesses to an object of a wrong class still fail.
    void setDelegate(rt::Object *delegate) { m_delegate = rt::Weak<>(delegate); }
    // The wrapped object; nullptr if there is none or it was deleted.
    [[nodiscard]] rt::Object *delegate() const { return m_delegate.get(); }
    // Whether the object still exists and is an instance of the class.
    [[nodiscard]] bool isValidConnection() const;

    // Calls the member of that name with the given arguments. Returns no value if the connection is not
    // valid, the name is empty, or the object has no such member with that number of arguments.
    rt::Value getOLItemID(const QString &member) const;
    rt::Value getOLItemID(const QString &member, const rt::Value &arg1) const;
    rt::Value getOLItemID(const QString &member, const rt::Value &arg1, const rt::Value &arg2) const;

protected:
    // The same for any number of arguments.
    rt::Value callMember(const QString &member, rt::Args arguments) const;
    // The result of a member without arguments, converted to the requested type.
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
