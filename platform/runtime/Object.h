// Objects and classes that callers know by name only.
#pragma once

#include "platform/runtime/Selector.h"
#include "platform/runtime/Value.h"

#include <QHash>
#include <array>
#include <initializer_list>
#include <memory>
#include <vector>

namespace rt {

class Class;

namespace detail {
inline const Value noValue;
}

// The arguments of one call. An index beyond the last argument gives no value and never reads foreign memory.
class Args {
public:
    constexpr Args() = default;
    Args(const Value *data, int count)
        : m_data(data)
        , m_count(count) {}
    Args(const std::vector<Value> &values)
        : m_data(values.data())
        , m_count(int(values.size())) {}
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] const Value &operator[](int index) const {
        return index >= 0 && index < m_count ? m_data[index] : detail::noValue;
    }
    [[nodiscard]] const Value *data() const { return m_data; }

private:
    const Value *m_data = nullptr;
    int m_count = 0;
};

// The code of a method. `self` is the receiver: for a class method the class itself.
using Implementation = Value (*)(Object *self, Selector command, Args arguments);

// One entry of a class's method table. Owned by its class, which lives as long as the process.
struct Method {
    Selector selector;
    Implementation implementation = nullptr;
    QByteArray signature; // the platform's type encoding, stored as given
};

// The base of every object that is called by name. An object never changes its class. Its destruction sets
// every Weak reference to it to nullptr. An Object may also be a QWidget (multiple inheritance).
class Object {
public:
    explicit Object(Class *isa)
        : m_isa(isa) {}
    virtual ~Object();
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;

    // Never nullptr for an existing object that was made with a class.
    [[nodiscard]] Class *isa() const { return m_isa; }
    // Expires when the object is destroyed.
    [[nodiscard]] std::weak_ptr<bool> life() const;

private:
    Class *m_isa;
    mutable std::shared_ptr<bool> m_life; // made on first use
};

// A reference that does not keep its object alive and becomes nullptr when the object is destroyed.
template<typename T = Object>
class Weak {
public:
    Weak() = default;
    Weak(T *object)
        : m_object(object) {
        if (object)
            m_life = object->life();
    }
    [[nodiscard]] T *get() const { return m_life.expired() ? nullptr : m_object; }
    explicit operator bool() const { return get() != nullptr; }

private:
    T *m_object = nullptr;
    std::weak_ptr<bool> m_life;
};

// A class: a name, a superclass, a table of instance methods, and a metaclass whose table holds the class
// methods. Classes are objects; they live as long as the process.
class Class final : public Object {
public:
    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] Class *superclass() const { return m_superclass; }
    [[nodiscard]] Class *metaclass() const { return m_metaclass; }
    [[nodiscard]] bool isSubclassOf(const Class *other) const; // also true for itself
    // The nearest method up the class chain, or nullptr; nullptr for the null selector. Cached.
    [[nodiscard]] Method *lookup(Selector selector) {
        const CacheSlot &slot = m_cache[selector.cachePlace()];
        // An empty slot contains the null selector, which has no method.
        return slot.selector == selector ? slot.method : lookupAndKeep(selector);
    }

private:
    friend class Registry;
    Class(QString name, Class *superclass, Class *metaclass);
    Method *lookupAndKeep(Selector selector);
    Method *lookupUncached(Selector selector) const;
    struct CacheSlot {
        Selector selector;
        Method *method = nullptr;
    };
    QString m_name;
    Class *m_superclass;
    Class *m_metaclass;
    QHash<Selector, Method *> m_methods;
    std::array<CacheSlot, detail::cachePlaces> m_cache{};
};

} // namespace rt

Q_DECLARE_METATYPE(rt::Object *)
