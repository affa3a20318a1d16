#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"

#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/hostNames.h"

namespace {

// Empty identifiers never match each other.
bool same(const QString &identifier, const QString &other) {
    return !identifier.isEmpty() && identifier == other;
}

rt::Object *contentOf(rt::Object *editor) {
    return rt::objectValue(rt::send(editor, rt::Selector(olItem_content)));
}

QString windowIdentifier(const QWidget &strip) {
    return strip.parentWidget() ? rt::identifier(strip.window()) : QString();
}

EditorStrip *asStrip(QWidget *widget) {
    return dynamic_cast<EditorStrip *>(widget);
}

} // namespace

void vlActionAdditionViewMonitor::addVlActionAdditionViewInstance(QWidget *strip) {
    if (asStrip(strip))
        m_strips.append(strip);
}

void vlActionAdditionViewMonitor::removeVlActionAdditionViewInstance(QWidget *strip) {
    m_strips.removeAll(strip);
}

// Iterates over a copy, because a call to a host object may close a window.
template<typename Matches>
EditorStrip *vlActionAdditionViewMonitor::first(Matches matches) const {
    const QList<QPointer<QWidget>> strips = m_strips;
    for (const QPointer<QWidget> &strip : strips)
        if (strip && matches(*strip) && strip)
            return asStrip(strip);
    return nullptr;
}

EditorStrip *
vlActionAdditionViewMonitor::getVlActionAdditionViewByEditorWinCtrl(const rt::Object *controller) const {
    const QString wanted = rt::identifier(controller);
    return first([&wanted](QWidget &strip) {
        return same(wanted, rt::identifier(asStrip(&strip)->editorWindowController()));
    });
}

EditorStrip *vlActionAdditionViewMonitor::getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const {
    return getVlActionAdditionViewByECCalendarEvent(contentOf(editor));
}

EditorStrip *
vlActionAdditionViewMonitor::getVlActionAdditionViewByECCalendarEvent(const rt::Object *event) const {
    const QString wanted = rt::identifier(event);
    return first([&wanted](QWidget &strip) {
        return same(wanted, rt::identifier(contentOf(asStrip(&strip)->editorViewController())));
    });
}

EditorStrip *
vlActionAdditionViewMonitor::getVlActionAdditionViewByWindowIdentify(const QString &identifier) const {
    return first([&identifier](QWidget &strip) { return same(identifier, windowIdentifier(strip)); });
}

EditorStrip *vlActionAdditionViewMonitor::getVlActionAdditionViewByWindow(const QWidget *window) const {
    return getVlActionAdditionViewByWindowIdentify(rt::identifier(window));
}

EditorStrip *
vlActionAdditionViewMonitor::getVlActionAdditionViewByApptWindowID(const QString &identifier) const {
    return first([&identifier](QWidget &strip) {
        return same(identifier, asStrip(&strip)->getAppointmentWindowID());
    });
}
