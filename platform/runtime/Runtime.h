// The object runtime: classes by name, methods by selector, calls, and the exchange of implementations.
// Semantics follow the well-known object runtimes. Main thread only.
#pragma once

#include "platform/runtime/Object.h"

#include <utility>

namespace rt {

// Makes a class. The superclass may be nullptr (a root). Answers the existing class when the name is taken
// and has the same superclass, nullptr when it is taken with another one or the name is empty.
Class *defineClass(const QString &name, Class *superclass = nullptr);
// The class of that name; nullptr when there is none.
[[nodiscard]] Class *classNamed(const QString &name);
// Its metaclass, in whose table the class methods are; nullptr when there is none.
[[nodiscard]] Class *metaclassNamed(const QString &name);

// Adds a method to the class itself. False, and nothing changed, when this very class already has one under
// that selector, or an argument is missing. Add class methods to the metaclass.
bool addMethod(Class *cls, Selector selector, Implementation implementation, const char *signature);
bool addMethod(Class *cls, const char *selector, Implementation implementation, const char *signature);

// The method that an instance of the class (or the class itself) would run; nullptr when there is none.
[[nodiscard]] Method *instanceMethod(Class *cls, Selector selector);
[[nodiscard]] Method *classMethod(Class *cls, Selector selector);

// Swaps the implementations of two method entries. What inherits an entry sees the exchange. False, and
// nothing changed, when either is missing.
bool exchangeImplementations(Method *a, Method *b);

[[nodiscard]] bool isKindOf(const Object *object, const Class *cls);
[[nodiscard]] bool respondsTo(Object *object, Selector selector);

// Calls the method that the object has under the selector. No value when the object is nullptr, has no such
// method, or the number of arguments is not the selector's. In the header, as is what it calls until a cache
// misses: a call by name is to cost little more than a virtual one.
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
template<typename... A>
Value send(Object *object, const char *selector, A &&...arguments) {
    return send(object, Selector(selector), std::forward<A>(arguments)...);
}

// Keeps a temporary object alive until the current turn of the main event loop has ended (or, in a test
// without one, until drainTemporaries()). For results that a method hands out and that nobody owns. Answers
// the object.
Object *temporary(std::unique_ptr<Object> object);
template<typename T>
T *temporary(std::unique_ptr<T> object) {
    T *raw = object.get();
    temporary(std::unique_ptr<Object>(std::move(object)));
    return raw;
}
void drainTemporaries();

} // namespace rt
