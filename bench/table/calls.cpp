// One call by name, with its result and its argument as values, and one through a method that the plug-in has
// exchanged and that passes it on.
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "platform/runtime/Runtime.h"
#include "plugin/hooks/hookTable.h"

#include <QObject>
#if PARLO_BENCH_OBJC
#include <objc/message.h>
#include <objc/runtime.h>
#endif

namespace bench {

namespace {

using rt::Value;

// A virtual function, and one that calls another, as an exchanged method that passes through does.
class Plain {
public:
    virtual ~Plain() = default;
    virtual Value none() { return m_value; }
    virtual Value one(const Value &argument) { return argument; }

protected:
    Value m_value = 7;
};
class Passing final : public Plain {
public:
    explicit Passing(Plain *next)
        : m_next(next) {}
    Value none() override { return m_next->none(); }
    Value one(const Value &argument) override { return m_next->one(argument); }

private:
    Plain *m_next;
};

// The compiler must not know what it is.
template<typename T>
T *hidden(T *object) {
    asm volatile("" : "+r"(object));
    return object;
}

class Named final : public rt::Object {
public:
    explicit Named(rt::Class *cls)
        : rt::Object(cls) {}
    static Value none(rt::Object *self, rt::Selector, rt::Args) {
        return static_cast<Named *>(self)->m_value;
    }
    static Value one(rt::Object *, rt::Selector, rt::Args arguments) { return arguments[0]; }

private:
    Value m_value = 7;
};

class Invokable final : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE QVariant none() { return m_value; }
    Q_INVOKABLE QVariant one(const QVariant &argument) { return argument; }

private:
    QVariant m_value = 7;
};

struct Contender {
    QString name;
    Work none;
    Work one;
    Work passing; // none: it has no such thing
};

Contender plainCalls() {
    auto *plain = hidden(new Plain);
    auto *passing = hidden<Plain>(new Passing(plain));
    return {u"virtual call"_s, repeating([=] { keep(plain->none()); }),
            repeating([=] { keep(plain->one(Value(1))); }), repeating([=] { keep(passing->one(Value(1))); })};
}

// Host classes that the hook table names, so that the very hook of the product is measured: its row passes
// through.
Contender ourCalls() {
    const HookRow &row = hookRow(HookRowName::RecordSetCapabilities);
    rt::Class *cls = rt::defineClass(QString::fromLatin1(row.hostClass));
    rt::addMethod(cls, "none", Named::none, "@@:");
    rt::addMethod(cls, "one:", Named::one, "@@:@");
    rt::addMethod(cls, row.hostSelector, Named::one, row.signature);
    if (!installHook(row))
        qFatal("the hook is not installed");
    auto *object = new Named(cls);
    const rt::Selector none("none");
    const rt::Selector one("one:");
    const rt::Selector hooked(row.hostSelector);
    return {u"ours"_s, repeating([=] { keep(rt::send(object, none)); }),
            repeating([=] { keep(rt::send(object, one, 1)); }),
            repeating([=] { keep(rt::send(object, hooked, 1)); })};
}

Contender qtCalls() {
    auto *object = new Invokable;
    return {u"Qt's invoke-by-name"_s, repeating([=] {
                QVariant result;
                QMetaObject::invokeMethod(object, "none", Qt::DirectConnection,
                                          Q_RETURN_ARG(QVariant, result));
                keep(result);
            }),
            repeating([=] {
                QVariant result;
                QMetaObject::invokeMethod(object, "one", Qt::DirectConnection, Q_RETURN_ARG(QVariant, result),
                                          Q_ARG(QVariant, QVariant(1)));
                keep(result);
            }),
            nullptr};
}

#if PARLO_BENCH_OBJC
using ObjcNone = Value (*)(id, SEL);
using ObjcOne = Value (*)(id, SEL, const Value &);
// The one type that any function may be cast to and from.
using AnyFunction = void (*)();
SEL objcHooked;
SEL objcReplacement;

template<typename Function>
Function lookedUp(id object, SEL selector) {
    return reinterpret_cast<Function>(reinterpret_cast<AnyFunction>(objc_msg_lookup(object, selector)));
}

Value objcNone(id, SEL) {
    static const Value value = 7;
    return value;
}
Value objcOne(id, SEL, const Value &argument) {
    return argument;
}
Value objcSend(id object, SEL selector, const Value &argument) {
    return lookedUp<ObjcOne>(object, selector)(object, selector, argument);
}
Value objcPassing(id self, SEL, const Value &argument) {
    return objcSend(self, objcReplacement, argument);
}

template<typename Function>
void addObjc(Class cls, SEL selector, Function *function) {
    class_addMethod(cls, selector, reinterpret_cast<IMP>(reinterpret_cast<AnyFunction>(function)), "@@:@");
}

Contender objcCalls() {
    Class cls = objc_allocateClassPair(Nil, "ParloBench", 0);
    const SEL none = sel_registerName("none");
    const SEL one = sel_registerName("one:");
    objcHooked = sel_registerName("hooked:");
    objcReplacement = sel_registerName("vl_hooked:");
    addObjc(cls, none, objcNone);
    addObjc(cls, one, objcOne);
    addObjc(cls, objcHooked, objcOne);
    addObjc(cls, objcReplacement, objcPassing);
    objc_registerClassPair(cls);
    method_exchangeImplementations(class_getInstanceMethod(cls, objcHooked),
                                   class_getInstanceMethod(cls, objcReplacement));
    const id object = class_createInstance(cls, 0);
    return {u"GNU Objective-C"_s, repeating([=] { keep(lookedUp<ObjcNone>(object, none)(object, none)); }),
            repeating([=] { keep(objcSend(object, one, Value(1))); }),
            repeating([=] { keep(objcSend(object, objcHooked, Value(1))); })};
}
#endif

void compare(const QString &what, const QList<Contender> &all, Work Contender::*work) {
    std::vector<Work> works;
    QStringList names;
    for (const Contender &contender : all)
        if (contender.*work) {
            works.push_back(contender.*work);
            names.append(contender.name);
        }
    const Comparison times = sideBySide(works, {.seconds = 2});
    for (qsizetype i = 1; i < names.size(); ++i) {
        constexpr double ofVirtual = 1.3;
        const auto at = std::size_t(i);
        addRatio(what, times.seconds[0], names[i], times.seconds[at], times.ratios[at],
                 i == 1 ? ofVirtual : 1.0);
    }
}

} // namespace

void calls() {
    QList<Contender> all{ourCalls(), plainCalls()};
#if PARLO_BENCH_OBJC
    all.append(objcCalls());
#else
    addNote(u"The GNU Objective-C runtime is not installed and is left out."_s);
#endif
    all.append(qtCalls());
    compare(u"a call by name, no argument"_s, all, &Contender::none);
    compare(u"a call by name, one argument"_s, all, &Contender::one);
    compare(u"through an exchanged method"_s, all, &Contender::passing);
}

} // namespace bench

#include "calls.moc"
