// The host's double with every method of the hook table. Each call of a method is recorded.
#pragma once

#include "plugin/hooks/hookTable.h"
#include "tests/support/FakeHost.h"

#include <optional>

namespace hookedhost {

// The calls of the host's own implementations, as "<class> <selector>".
inline QStringList &calls() {
    static QStringList list;
    return list;
}

// The results of the host's own implementations by "<class> <selector>"; no value unless set.
inline QHash<QString, rt::Value> &answers() {
    static QHash<QString, rt::Value> map;
    return map;
}

// After the exchange, the host's implementation is called under the replacement's selector.
inline rt::Value record(rt::Object *self, rt::Selector selector, rt::Args) {
    const auto *cls = dynamic_cast<rt::Class *>(self);
    const QString name = (cls ? cls->name() : self->isa()->name()) + u' ' + selector.name();
    calls().append(name);
    const rt::Value answer =
        selector.name().contains(u"initWithFrame:"_s) && !cls ? rt::fromObject(self) : answers().value(name);
    if (const auto work = fakehost::during())
        work();
    return answer;
}

inline rt::Value managedSubviews(rt::Object *self, rt::Selector, rt::Args) {
    QVariantList list;
    for (QObject *child : dynamic_cast<QWidget *>(self)->children())
        if (auto *view = qobject_cast<QWidget *>(child))
            list.append(QVariantMap{{u"subview"_s, rt::fromWidget(view)}});
    return list;
}

// Defines all classes with the methods of the table, except `without`. Call it once per process.
inline void define(std::optional<HookRowName> without = {}) {
    fakehost::define(false);
    rt::Class *header =
        rt::defineClass(u"OLCalendarHeaderContainerView"_s, rt::defineClass(u"OLAttachmentsAcceptingView"_s));
    rt::addMethod(header, "managedSubviewsData", managedSubviews, "@@:");
    for (const HookRow &row : hookTable()) {
        const QString name = QString::fromLatin1(row.hostClass);
        rt::Class *cls = rt::classNamed(name) ? rt::classNamed(name) : rt::defineClass(name);
        if (row.name != without)
            rt::addMethod(row.kind == HookKind::Class ? cls->metaclass() : cls, row.hostSelector, record,
                          row.signature);
    }
}

} // namespace hookedhost
