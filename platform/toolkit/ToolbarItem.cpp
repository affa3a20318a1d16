#include "platform/toolkit/ToolbarItem.h"

#include "platform/runtime/Runtime.h"

#include <QWidget>
#include <utility>

namespace platform {

bool isStandardToolbarIdentifier(const QString &identifier) {
    return identifier == toolbarFlexibleSpaceIdentifier || identifier == toolbarFixedSpaceIdentifier ||
           identifier == toolbarSeparatorIdentifier;
}

QString withoutMnemonic(const QString &text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && ++i == text.size())
            break;
        plain += text[i];
    }
    return plain;
}

ToolbarItem::ToolbarItem(const QString &identifier, rt::Class *isa)
    : rt::Object(isa ? isa : rt::defineClass(u"ToolbarItem"_s))
    , m_identifier(identifier) {}

ToolbarItem::~ToolbarItem() = default;

template<typename T>
void ToolbarItem::set(T &field, const T &value) {
    if (field == value)
        return;
    field = value;
    Q_EMIT changed();
}

void ToolbarItem::setLabel(const QString &label) {
    set(m_label, label);
}

QString ToolbarItem::paletteLabel() const {
    return m_paletteLabel.isEmpty() ? withoutMnemonic(m_label) : m_paletteLabel;
}

void ToolbarItem::setPaletteLabel(const QString &label) {
    set(m_paletteLabel, label);
}

void ToolbarItem::setToolTip(const QString &toolTip) {
    set(m_toolTip, toolTip);
}

void ToolbarItem::setImage(const QIcon &image) {
    m_image = image;
    Q_EMIT changed();
}

void ToolbarItem::setEnabled(bool enabled) {
    set(m_enabled, enabled);
}

QString ToolbarItem::controlName() const {
    return m_controlName.isEmpty() ? m_identifier : m_controlName;
}

void ToolbarItem::setControlName(const QString &name) {
    set(m_controlName, name);
}

void ToolbarItem::setAction(Action action) {
    m_action = std::move(action);
}

void ToolbarItem::perform(QWidget *sender) {
    if (!m_enabled || !m_action)
        return;
    const Action action = m_action; // the item may go away in it
    action(*this, sender);
}

void ToolbarItem::setView(ViewMaker make, ViewFiller fill) {
    m_makeView = std::move(make);
    m_fillView = std::move(fill);
}

QWidget *ToolbarItem::makeView() const {
    return m_makeView ? m_makeView() : nullptr;
}

void ToolbarItem::fillView(QWidget *view) const {
    if (view && m_fillView)
        m_fillView(view, *this);
}

void ToolbarItem::setMenu(QMenu *menu) {
    m_menu = menu;
    Q_EMIT changed();
}

} // namespace platform
