#include "platform/runtime/Runtime.h"

#include <QWidget>

namespace rt {

namespace {

QHash<QString, detail::SelectorEntry *> &selectorTable() {
    static auto *table = new QHash<QString, detail::SelectorEntry *>;
    return *table;
}

const detail::SelectorEntry *intern(const QString &name) {
    if (name.isEmpty())
        return nullptr;
    detail::SelectorEntry *&entry = selectorTable()[name];
    if (!entry)
        entry = new detail::SelectorEntry{name, int(name.count(u':')),
                                          std::uint32_t(::qHash(name) % detail::cachePlaces)};
    return entry;
}

} // namespace

Selector::Selector(const QString &name)
    : m_entry(intern(name)) {}
Selector::Selector(const char *name)
    : m_entry(name ? intern(QString::fromUtf8(name)) : nullptr) {}

QString Selector::name() const {
    return m_entry ? m_entry->name : QString();
}

Object::~Object() = default;

std::weak_ptr<bool> Object::life() const {
    if (!m_life)
        m_life = std::make_shared<bool>(true);
    return m_life;
}

Class::Class(QString name, Class *superclass, Class *metaclass)
    : Object(metaclass)
    , m_name(std::move(name))
    , m_superclass(superclass)
    , m_metaclass(metaclass) {}

bool Class::isSubclassOf(const Class *other) const {
    for (const Class *c = this; c; c = c->m_superclass)
        if (c == other)
            return true;
    return false;
}

Method *Class::lookupUncached(Selector selector) const {
    for (const Class *c = this; c; c = c->m_superclass)
        if (Method *method = c->m_methods.value(selector))
            return method;
    return nullptr;
}

Method *Class::lookupAndKeep(Selector selector) {
    if (selector.isNull())
        return nullptr;
    Method *method = lookupUncached(selector);
    // A miss is not cached, because the method may later be added to this class or to a superclass.
    if (method)
        m_cache[selector.cachePlace()] = {selector, method};
    return method;
}

// Owns every class. Adding a method clears all caches. An exchange does not have to, because caches contain
// method entries.
class Registry {
public:
    static Registry &instance() {
        static auto *registry = new Registry;
        return *registry;
    }

    Class *define(const QString &name, Class *superclass) {
        if (name.isEmpty())
            return nullptr;
        if (Class *existing = m_classes.value(name))
            return existing->superclass() == superclass ? existing : nullptr;
        auto *meta = new Class(name, superclass ? superclass->metaclass() : nullptr, nullptr);
        auto *cls = new Class(name, superclass, meta);
        m_classes.insert(name, cls);
        return cls;
    }

    Class *find(const QString &name) const { return m_classes.value(name); }

    bool add(Class *cls, Selector selector, Implementation implementation, const char *signature) {
        if (!cls || selector.isNull() || !implementation || cls->m_methods.contains(selector))
            return false;
        cls->m_methods.insert(selector, new Method{selector, implementation, QByteArray(signature)});
        for (Class *c : std::as_const(m_classes)) {
            c->m_cache = {};
            c->metaclass()->m_cache = {};
        }
        return true;
    }

private:
    QHash<QString, Class *> m_classes;
};

Class *defineClass(const QString &name, Class *superclass) {
    return Registry::instance().define(name, superclass);
}

Class *classNamed(const QString &name) {
    return Registry::instance().find(name);
}

Class *metaclassNamed(const QString &name) {
    Class *cls = classNamed(name);
    return cls ? cls->metaclass() : nullptr;
}

bool addMethod(Class *cls, Selector selector, Implementation implementation, const char *signature) {
    return Registry::instance().add(cls, selector, implementation, signature);
}

Method *instanceMethod(Class *cls, Selector selector) {
    return cls ? cls->lookup(selector) : nullptr;
}

Method *classMethod(Class *cls, Selector selector) {
    return cls && cls->metaclass() ? cls->metaclass()->lookup(selector) : nullptr;
}

bool exchangeImplementations(Method *a, Method *b) {
    if (!a || !b)
        return false;
    std::swap(a->implementation, b->implementation);
    return true;
}

bool isKindOf(const Object *object, const Class *cls) {
    return object && cls && object->isa() && object->isa()->isSubclassOf(cls);
}

bool respondsTo(Object *object, Selector selector) {
    return object && object->isa() && object->isa()->lookup(selector) != nullptr;
}

namespace {

// Is destroyed at the end of the turn of the event loop in which it was made. A nested loop (a menu, a
// dialog) does not end that turn; this is the event system's rule for deferred deletion.
class TemporaryHolder : public QObject {
public:
    explicit TemporaryHolder(std::unique_ptr<Object> object)
        : m_object(std::move(object)) {
        deleteLater();
    }

private:
    std::unique_ptr<Object> m_object;
};

} // namespace

Object *temporary(std::unique_ptr<Object> object) {
    Object *raw = object.get();
    if (raw)
        new TemporaryHolder(std::move(object));
    return raw;
}

// Values that are objects

namespace {

QString addressText(const void *address) {
    if (!address)
        return {};
    return QString::number(quint32(reinterpret_cast<quintptr>(address) & 0xffffffffU), 16);
}

} // namespace

Object *objectValue(const Value &value) {
    if (value.metaType() == QMetaType::fromType<Object *>())
        return value.value<Object *>();
    return dynamic_cast<Object *>(value.value<QWidget *>());
}

QWidget *widgetValue(const Value &value) {
    if (value.metaType() == QMetaType::fromType<Object *>())
        return dynamic_cast<QWidget *>(value.value<Object *>());
    return value.value<QWidget *>();
}

Value fromObject(Object *object) {
    return object ? Value::fromValue(object) : Value();
}

Value fromWidget(QWidget *widget) {
    return widget ? Value::fromValue(widget) : Value();
}

QString identifier(const Object *object) {
    return addressText(object);
}

QString identifier(const QWidget *widget) {
    return addressText(widget);
}

} // namespace rt
