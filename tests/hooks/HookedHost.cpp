#include "tests/hooks/HookedHost.h"

#include "plugin/hooks/hookTable.h"

namespace hookedhost {

QStringList &calls() {
    static QStringList list;
    return list;
}

QHash<QString, rt::Value> &answers() {
    static QHash<QString, rt::Value> map;
    return map;
}

std::function<void()> &during() {
    static std::function<void()> work;
    return work;
}

namespace {

rt::Value note(rt::Object *self, rt::Selector selector, rt::Args arguments) {
    const auto *cls = dynamic_cast<rt::Class *>(self);
    // The class that the method was defined on is what the test speaks of; a replacement keeps it reachable
    // under another selector, which is what is noted then.
    const QString name = (cls ? cls->name() : self->isa()->name()) + u' ' + selector.name();
    calls().append(u"%1(%2)"_s.arg(name).arg(arguments.count()));
    const rt::Value answer =
        selector.name().contains(u"initWithFrame:"_s) && !cls ? rt::fromObject(self) : answers().value(name);
    if (during())
        during()();
    return answer;
}

// A member that is only read.
rt::Value member(rt::Object *self, rt::Selector selector, rt::Args) {
    const rt::Value answer = answers().value(self->isa()->name() + u' ' + selector.name());
    if (during())
        during()();
    return answer;
}

rt::Value capabilities(rt::Object *self, rt::Selector, rt::Args) {
    return static_cast<Thing *>(self)->capabilities;
}

rt::Value managedSubviews(rt::Object *self, rt::Selector, rt::Args) {
    QVariantList list;
    for (QObject *child : dynamic_cast<QWidget *>(self)->children())
        if (auto *view = qobject_cast<QWidget *>(child))
            list.append(QVariantMap{{u"subview"_s, rt::fromWidget(view)}});
    return list;
}

} // namespace

void define(std::optional<HookRowName> without) {
    rt::Class *accepting = rt::defineClass(u"OLAttachmentsAcceptingView"_s);
    rt::defineClass(u"OLCalendarHeaderContainerView"_s, accepting);
    for (const HookRow &row : hookTable()) {
        const QString name = QString::fromLatin1(row.hostClass);
        rt::Class *cls = rt::classNamed(name) ? rt::classNamed(name) : rt::defineClass(name);
        if (row.name != without)
            rt::addMethod(row.kind == HookKind::Class ? cls->metaclass() : cls, row.hostSelector, note,
                          row.signature);
    }
    for (const char *name : {"ECCalendarEvent", "ECMutableCalendarEvent"})
        rt::addMethod(rt::classNamed(QString::fromLatin1(name)), "olmUCCapabilities", capabilities, "@@:");
    rt::addMethod(rt::classNamed(u"ECMutableCalendarEvent"_s), "setLocation:", note, "v@:@");
    rt::addMethod(rt::classNamed(u"ECCalendarEvent"_s), "isOwner", member, "B@:");
    rt::addMethod(rt::classNamed(u"OLCalendarGridViewWrapper"_s), "gridViewController", member, "@@:");
    rt::addMethod(rt::defineClass(u"CCGridViewController"_s), "selectedEvent", member, "@@:");
    rt::addMethod(rt::classNamed(u"ERCalendarEventEditorWindowController"_s), "editorViewController", member,
                  "@@:");
    rt::defineClass(u"OLWordMailEditor"_s);
    rt::addMethod(rt::classNamed(u"OLCalendarHeaderContainerView"_s), "managedSubviewsData", managedSubviews,
                  "@@:");
}

} // namespace hookedhost
