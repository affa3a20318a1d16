#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"

#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/link/sharedObject.h"

namespace {

// Nothing never matches nothing.
bool same(const QString &identifier, const QString &other) {
    return !identifier.isEmpty() && identifier == other;
}

rt::Object *contentOf(rt::Object *editor) {
    return rt::objectValue(rt::send(editor, rt::Selector(olItem_content)));
}

QString windowIdentifier(const vlActionAdditionView &strip) {
    return strip.parentWidget() ? rt::identifier(strip.window()) : QString();
}

} // namespace

vlActionAdditionViewMonitor &vlActionAdditionViewMonitor::sharedInstance() {
    return SharedObject<vlActionAdditionViewMonitor>::get();
}

void vlActionAdditionViewMonitor::addVlActionAdditionViewInstance(QWidget *strip) {
    auto *added = qobject_cast<vlActionAdditionView *>(strip);
    if (added && !m_strips.contains(added))
        m_strips.append(added);
}

void vlActionAdditionViewMonitor::removeVlActionAdditionViewInstance(QWidget *strip) {
    m_strips.removeIf([strip](const QPointer<vlActionAdditionView> &entry) {
        return entry.isNull() || static_cast<QWidget *>(entry) == strip;
    });
}

// Over a copy: asking a host object may close a window.
template<typename Matches>
vlActionAdditionView *vlActionAdditionViewMonitor::first(Matches matches) const {
    const QList<QPointer<vlActionAdditionView>> strips = m_strips;
    for (const QPointer<vlActionAdditionView> &strip : strips)
        if (strip && matches(*strip) && strip)
            return strip;
    return nullptr;
}

vlActionAdditionView *
vlActionAdditionViewMonitor::getVlActionAdditionViewByEditorWinCtrl(const rt::Object *controller) const {
    const QString wanted = rt::identifier(controller);
    return first([&wanted](const vlActionAdditionView &strip) {
        return same(wanted, rt::identifier(strip.editorWindowController()));
    });
}

vlActionAdditionView *
vlActionAdditionViewMonitor::getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const {
    return getVlActionAdditionViewByECCalendarEvent(contentOf(editor));
}

vlActionAdditionView *
vlActionAdditionViewMonitor::getVlActionAdditionViewByECCalendarEvent(const rt::Object *event) const {
    const QString wanted = rt::identifier(event);
    return first([&wanted](const vlActionAdditionView &strip) {
        return same(wanted, rt::identifier(contentOf(strip.editorViewController())));
    });
}

vlActionAdditionView *
vlActionAdditionViewMonitor::getVlActionAdditionViewByWindowIdentify(const QString &identifier) const {
    return first([&identifier](const vlActionAdditionView &strip) {
        return same(identifier, windowIdentifier(strip));
    });
}

vlActionAdditionView *
vlActionAdditionViewMonitor::getVlActionAdditionViewByWindow(const QWidget *window) const {
    return getVlActionAdditionViewByWindowIdentify(rt::identifier(window));
}

vlActionAdditionView *
vlActionAdditionViewMonitor::getVlActionAdditionViewByApptWindowID(const QString &identifier) const {
    return first([&identifier](const vlActionAdditionView &strip) {
        return same(identifier, strip.getAppointmentWindowID());
    });
}

void vlActionAdditionViewMonitor::createStrip(QWidget *headerView, const QRectF &frame) {
    if (headerView)
        (new vlActionAdditionView(frame, headerView))->show();
}
