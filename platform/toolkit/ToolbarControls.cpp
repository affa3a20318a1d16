#include "platform/toolkit/ToolbarControls.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QToolButton>

namespace platform {

namespace {

constexpr int margin = 4;      // points around a cell's content
constexpr int labelGap = 2;    // points between view and label
constexpr int labelDrop = 1;   // points lower, to align labels with those of buttons
constexpr int arrowSide = 7;   // points, of the mark of a menu
constexpr int arrowSpace = 12; // points reserved for it on each side of the view

constexpr int fixedSpace = 24; // points

QWidget *makeSpace(bool isFlexible, QWidget *parent) {
    auto *space = new QWidget(parent);
    if (isFlexible)
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    else
        space->setFixedWidth(fixedSpace);
    return space;
}

} // namespace

ToolbarAction::ToolbarAction(ToolbarItem *item, QToolBar *toolbar)
    : QWidgetAction(toolbar)
    , m_item(item)
    , m_toolbar(toolbar) {
    connect(item, &ToolbarItem::changed, this, &ToolbarAction::fill);
    connect(this, &QAction::triggered, this, [this] {
        if (m_item)
            m_item->perform(control());
    });
}

QWidget *ToolbarAction::control() {
    QWidget *widget = m_toolbar->widgetForAction(this);
    auto *cell = qobject_cast<ToolbarViewCell *>(widget);
    return cell ? cell->view() : widget;
}

QWidget *ToolbarAction::createWidget(QWidget *parent) {
    const QString &identifier = m_item->itemIdentifier();
    if (isStandardToolbarIdentifier(identifier))
        return makeSpace(identifier == toolbarFlexibleSpaceIdentifier, parent);
    const bool showsText = m_toolbar->toolButtonStyle() == Qt::ToolButtonTextOnly;
    QWidget *view = showsText ? nullptr : m_item->makeView();
    return view ? new ToolbarViewCell(m_item, view, m_toolbar) : nullptr;
}

void ToolbarAction::fill() {
    setText(withoutMnemonic(m_item->label()));
    setIconText(m_item->label()); // with its mnemonic, on the button
    setIcon(m_item->image());
    setToolTip(m_item->toolTip());
    setEnabled(m_item->isEnabled());
    if (auto *button = qobject_cast<QToolButton *>(m_toolbar->widgetForAction(this))) {
        button->setObjectName(m_item->itemIdentifier());
        button->setAccessibleName(withoutMnemonic(m_item->label()));
        button->setAccessibleDescription(m_item->toolTip());
        button->setFocusPolicy(Qt::TabFocus);
    }
}

ToolbarViewCell::ToolbarViewCell(ToolbarItem *item, QWidget *view, QToolBar *toolbar)
    : QWidget(toolbar)
    , m_item(item)
    , m_view(view)
    , m_showsLabel(toolbar->toolButtonStyle() == Qt::ToolButtonTextUnderIcon) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred); // moves to the other row before it gets narrow
    view->setParent(this);
    view->show();
    connect(item, &ToolbarItem::changed, this, &ToolbarViewCell::fill);
    fill();
}

void ToolbarViewCell::fill() {
    if (!m_view)
        return;
    m_view->setObjectName(m_item->itemIdentifier());
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
    if (m_item && m_showsLabel) {
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
    if (!m_showsLabel)
        top = (height() - size.height()) / 2;
    m_view->setGeometry(QRect(QPoint((width() - size.width()) / 2, top), size));
}

// Looks like a button of the same tool-bar: raised under the pointer, with the text below.
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
    if (!m_showsLabel)
        return;
    const int top = view.bottom() + 1 + labelGap + labelDrop;
    const QRect text(0, top, width(), height() - top);
    const bool underlines = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this);
    const int mnemonic = underlines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    style()->drawItemText(&painter, text, int(Qt::AlignHCenter) | int(Qt::AlignTop) | mnemonic, palette(),
                          isEnabled(), m_item->label(), foregroundRole());
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
