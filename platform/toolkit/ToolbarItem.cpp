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

QString ToolbarItem::paletteLabel() const {
    return m_paletteLabel.isEmpty() ? withoutMnemonic(m_label) : m_paletteLabel;
}

void ToolbarItem::setImage(const QIcon &image) {
    m_image = image;
    Q_EMIT changed();
}

void ToolbarItem::perform(QWidget *sender) {
    if (!m_enabled || !m_action)
        return;
    const Action action = m_action; // the action may delete the item
    action(*this, sender);
}

void ToolbarItem::setView(ViewMaker make, ViewFiller fill) {
    m_makeView = std::move(make);
    m_fillView = std::move(fill);
}

void ToolbarItem::setMenu(QMenu *menu) {
    m_menu = menu;
    Q_EMIT changed();
}

} // namespace platform
