// The object runtime: classes by name, methods by selector, calls, and the exchange of implementations.
// Semantics follow the well-known object runtimes. Main thread only.
#pragma once

#include "platform/runtime/Object.h"

#include <utility>

namespace rt {

// Makes a class. The superclass may be nullptr (a root class). Returns the existing class if the name is
// taken with the same superclass, and nullptr if it is taken with another one or the name is empty.
Class *defineClass(const QString &name, Class *superclass = nullptr);
// The class of that name; nullptr if there is none.
[[nodiscard]] Class *classNamed(const QString &name);
// The metaclass of that class, whose table has the class methods; nullptr if there is none.
[[nodiscard]] Class *metaclassNamed(const QString &name);

// Adds a method to the class itself. Returns false and changes nothing if this class itself already has a
// method under that selector or an argument is missing. Add class methods to the metaclass.
bool addMethod(Class *cls, Selector selector, Implementation implementation, const char *signature);

// The method that an instance of the class (or the class itself) would run; nullptr if there is none.
[[nodiscard]] Method *instanceMethod(Class *cls, Selector selector);
[[nodiscard]] Method *classMethod(Class *cls, Selector selector);

// Swaps the implementations of two method entries. Subclasses that inherit an entry see the exchange. Returns
// false and changes nothing if either is missing.
bool exchangeImplementations(Method *a, Method *b);

[[nodiscard]] bool isKindOf(const Object *object, const Class *cls);
[[nodiscard]] bool respondsTo(Object *object, Selector selector);

// Calls the object's method for the selector. Returns no value if the object is nullptr or has no such
// method, or if the number of arguments differs from the selector's. Inline together with the cached lookup,
// so that a call by name costs little more than a virtual call.
inline Value sendArgs(Object *object, Selector selector, Args arguments) {
    Class *cls = object ? object->isa() : nullptr; // a metaclass has none
    const Method *method = cls ? cls->lookup(selector) : nullptr;
    if (!method || arguments.count() != selector.argumentCount()) [[unlikely]]
        return {};
    return method->implementation(object, selector, arguments);
}

template<typename... A>
Value send(Object *object, Selector selector, A &&...arguments) {
    if constexpr (sizeof...(A) == 0) {
        return sendArgs(object, selector, Args());
    } else {
        const Value values[] = {Value(std::forward<A>(arguments))...};
        return sendArgs(object, selector, Args(values, int(sizeof...(A))));
    }
}

// Keeps a temporary object alive until the end of the current turn of the main event loop (without a loop:
// until deferred deletions are sent). For results of methods that have no owner. Returns the object.
Object *temporary(std::unique_ptr<Object> object);
template<typename T>
T *temporary(std::unique_ptr<T> object) {
    T *raw = object.get();
    temporary(std::unique_ptr<Object>(std::move(object)));
    return raw;
}

} // namespace rt
