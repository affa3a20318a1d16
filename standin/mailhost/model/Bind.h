// Member functions of C++ objects as methods of runtime classes.
#pragma once

#include "platform/runtime/Runtime.h"

#include <QRectF>
#include <QWidget>
#include <initializer_list>
#include <type_traits>
#include <utility>

namespace mailhost {

struct MethodRow {
    const char *selector;
    rt::Implementation implementation;
    const char *signature;
};

inline void addMethods(rt::Class *cls, std::initializer_list<MethodRow> rows) {
    for (const MethodRow &row : rows)
        rt::addMethod(cls, row.selector, row.implementation, row.signature);
}

namespace detail {

template<typename T>
auto argument(const rt::Value &value) {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, rt::Value>)
        return value;
    else if constexpr (std::is_same_v<Plain, QString>)
        return rt::textValue(value);
    else if constexpr (std::is_same_v<Plain, bool>)
        return rt::boolValue(value);
    else if constexpr (std::is_floating_point_v<Plain>)
        return rt::doubleValue(value);
    else if constexpr (std::is_integral_v<Plain>)
        return Plain(rt::integerValue(value));
    else if constexpr (std::is_same_v<Plain, rt::Object *>)
        return rt::objectValue(value);
    else if constexpr (std::is_same_v<Plain, QWidget *>)
        return rt::widgetValue(value);
    else if constexpr (std::is_convertible_v<Plain, rt::Object *>)
        return dynamic_cast<Plain>(rt::objectValue(value));
    else
        return value.value<Plain>();
}

template<typename R>
rt::Value result(R &&value) {
    using Plain = std::remove_cvref_t<R>;
    if constexpr (std::is_same_v<Plain, rt::Value>)
        return std::forward<R>(value);
    else if constexpr (std::is_convertible_v<Plain, rt::Object *>)
        return rt::fromObject(value);
    else if constexpr (std::is_convertible_v<Plain, QWidget *>)
        return rt::fromWidget(value);
    else if constexpr (std::is_same_v<Plain, QString>)
        return value.isNull() ? rt::Value() : rt::Value(value);
    else
        return rt::Value::fromValue(std::forward<R>(value));
}

template<auto Member, typename T, typename R, typename... A>
struct Binder {
    static rt::Value call(rt::Object *self, rt::Selector, rt::Args arguments) {
        return invoke(dynamic_cast<T *>(self), arguments, std::index_sequence_for<A...>());
    }
    template<std::size_t... I>
    static rt::Value invoke(T *receiver, [[maybe_unused]] rt::Args arguments, std::index_sequence<I...>) {
        if (!receiver)
            return {};
        if constexpr (std::is_void_v<R>) {
            (receiver->*Member)(argument<A>(arguments[int(I)])...);
            return {};
        } else {
            return result((receiver->*Member)(argument<A>(arguments[int(I)])...));
        }
    }
};
template<auto Member, typename T, typename R, typename... A>
Binder<Member, T, R, A...> binderOf(R (T::*)(A...));
template<auto Member, typename T, typename R, typename... A>
Binder<Member, T, R, A...> binderOf(R (T::*)(A...) const);

} // namespace detail

// The method implementation that calls the member function. It returns no value for null texts, null pointers
// and receivers of another C++ class, and passes a null marker as a null text.
template<auto Member>
inline constexpr rt::Implementation bind = &decltype(detail::binderOf<Member>(Member))::call;

} // namespace mailhost
