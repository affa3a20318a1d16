#include "platform/toolkit/ToolbarControls.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionToolButton>

namespace platform {

namespace {

constexpr int margin = 4;      // points around a cell's content
constexpr int labelGap = 2;    // points between view and label
constexpr int labelDrop = 1;   // points lower, so that labels stand in line with those of buttons
constexpr int arrowSide = 7;   // points, of the mark of a menu
constexpr int arrowSpace = 12; // points kept free for it on either side of the view

Qt::ToolButtonStyle styleOf(ToolbarDisplayMode mode) {
    switch (mode) {
    case ToolbarDisplayMode::IconOnly:
        return Qt::ToolButtonIconOnly;
    case ToolbarDisplayMode::TextOnly:
        return Qt::ToolButtonTextOnly;
    case ToolbarDisplayMode::IconAndText:
        break;
    }
    return Qt::ToolButtonTextUnderIcon;
}

} // namespace

ToolbarButton::ToolbarButton(ToolbarItem *item, ToolbarDisplayMode mode)
    : m_item(item)
    , m_mode(mode) {
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setIconSize(QSize(toolbarImageSide, toolbarImageSide));
    setToolButtonStyle(styleOf(mode));
    connect(item, &ToolbarItem::changed, this, &ToolbarButton::fill);
    connect(this, &QToolButton::clicked, this, [this] {
        if (m_item)
            m_item->perform(this);
    });
    fill();
}

void ToolbarButton::fill() {
    setObjectName(m_item->controlName());
    setText(m_item->label());
    setIcon(m_item->image());
    setToolTip(m_item->toolTip());
    setAccessibleName(withoutMnemonic(m_item->label()));
    setAccessibleDescription(m_item->toolTip());
    setEnabled(m_item->isEnabled());
}

ToolbarViewCell::ToolbarViewCell(ToolbarItem *item, QWidget *view, ToolbarDisplayMode mode)
    : m_item(item)
    , m_view(view)
    , m_mode(mode) {
    view->setParent(this);
    view->show();
    connect(item, &ToolbarItem::changed, this, &ToolbarViewCell::fill);
    fill();
}

void ToolbarViewCell::fill() {
    if (!m_view)
        return;
    m_view->setObjectName(m_item->controlName());
    m_item->fillView(m_view);
    if (auto *button = qobject_cast<QAbstractButton *>(m_view.data()))
        button->setShortcut(QKeySequence::mnemonic(m_item->label()));
    setToolTip(m_item->toolTip());
    setEnabled(m_item->isEnabled());
    updateGeometry();
    update();
}

QSize ToolbarViewCell::viewSize() const {
    return m_view ? m_view->sizeHint().expandedTo(m_view->minimumSize()) : QSize();
}

QSize ToolbarViewCell::sizeHint() const {
    QSize size = viewSize();
    if (m_item && m_item->menu())
        size.rwidth() += 2 * arrowSpace;
    if (m_item && m_mode == ToolbarDisplayMode::IconAndText) {
        const QFontMetrics metrics(font());
        size.setWidth(std::max(size.width(), metrics.horizontalAdvance(withoutMnemonic(m_item->label()))));
        size.rheight() += labelGap + metrics.height();
    }
    return size + QSize(2 * margin, 2 * margin);
}

void ToolbarViewCell::resizeEvent(QResizeEvent *) {
    if (!m_view)
        return;
    const QSize size = viewSize();
    int top = margin;
    if (m_mode == ToolbarDisplayMode::IconOnly)
        top = (height() - size.height()) / 2;
    m_view->setGeometry(QRect(QPoint((width() - size.width()) / 2, top), size));
}

// As a button of the same tool-bar looks: raised under the pointer, its text below.
void ToolbarViewCell::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    if (isEnabled() && underMouse()) {
        QStyleOptionToolButton option;
        option.initFrom(this);
        option.state |= QStyle::State_AutoRaise | QStyle::State_Raised | QStyle::State_MouseOver;
        style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
    }
    if (!m_item || !m_view)
        return;
    const QRect view = m_view->geometry();
    if (m_item->menu()) {
        QStyleOption option;
        option.initFrom(this);
        option.rect = QRect(view.right() + 3, view.center().y() - arrowSide / 2, arrowSide, arrowSide);
        style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &option, &painter, this);
    }
    if (m_mode != ToolbarDisplayMode::IconAndText)
        return;
    const int top = view.bottom() + 1 + labelGap + labelDrop;
    const QRect text(0, top, width(), height() - top);
    const bool underlines = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this);
    const int mnemonic = underlines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    style()->drawItemText(&painter, text, Qt::AlignHCenter | Qt::AlignTop | mnemonic, palette(), isEnabled(),
                          m_item->label(), foregroundRole());
}

void ToolbarViewCell::mousePressEvent(QMouseEvent *event) {
    event->accept();
    if (event->button() == Qt::LeftButton && m_item && m_view)
        m_item->perform(m_view);
}

void ToolbarViewCell::enterEvent(QEnterEvent *event) {
    QWidget::enterEvent(event);
    update();
}

void ToolbarViewCell::leaveEvent(QEvent *event) {
    QWidget::leaveEvent(event);
    update();
}

} // namespace platform
