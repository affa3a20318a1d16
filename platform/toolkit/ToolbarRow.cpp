#include "platform/toolkit/ToolbarRow.h"

#include "platform/toolkit/ToolbarControls.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int gap = 2;         // points between two cells
constexpr int fixedSpace = 24; // points
constexpr int separatorWidth = 9;
constexpr int separatorInset = 6; // points above and below its line
constexpr int overflowWidth = 26;

// Softer than a frame of the style, which glares on a dark desktop.
class SeparatorLine : public QWidget {
protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        QColor color = palette().color(QPalette::WindowText);
        color.setAlphaF(0.22F);
        painter.fillRect(QRect(width() / 2, separatorInset, 1, height() - 2 * separatorInset), color);
    }
};

} // namespace

ToolbarRow::ToolbarRow(QWidget *parent)
    : QWidget(parent)
    , m_overflow(new QToolButton(this))
    , m_overflowMenu(new QMenu(m_overflow)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_overflow->setObjectName(toolbarOverflowButtonName);
    m_overflow->setText(u"»"_s);
    m_overflow->setToolTip(tr("More items"));
    m_overflow->setAccessibleName(tr("More items"));
    m_overflow->setAutoRaise(true);
    m_overflow->setFocusPolicy(Qt::TabFocus);
    m_overflow->setPopupMode(QToolButton::InstantPopup);
    m_overflow->setStyleSheet(u"QToolButton::menu-indicator { image: none; }"_s);
    m_overflow->setMenu(m_overflowMenu);
    m_overflow->hide();
    connect(m_overflowMenu, &QMenu::aboutToShow, this, &ToolbarRow::fillOverflowMenu);
}

QWidget *ToolbarRow::makeCell(ToolbarItem *item) const {
    if (item->itemIdentifier() == toolbarSeparatorIdentifier)
        return new SeparatorLine;
    if (isStandardToolbarIdentifier(item->itemIdentifier()))
        return new QWidget;
    if (m_mode != ToolbarDisplayMode::TextOnly)
        if (QWidget *view = item->makeView())
            return new ToolbarViewCell(item, view, m_mode);
    return new ToolbarButton(item, m_mode);
}

// Out of sight and out of every search at once; deleted later, for it may be what was just clicked.
void ToolbarRow::retire(QWidget *cell) {
    cell->hide();
    cell->disconnect();
    cell->setObjectName(QString());
    for (QWidget *child : cell->findChildren<QWidget *>())
        child->setObjectName(QString());
    cell->deleteLater();
}

void ToolbarRow::show(const QList<QPointer<ToolbarItem>> &items, ToolbarDisplayMode mode) {
    QList<Cell> former = std::exchange(m_cells, {});
    const bool sameMode = std::exchange(m_mode, mode) == mode;
    for (const QPointer<ToolbarItem> &item : items) {
        if (!item)
            continue;
        const auto kept = std::find_if(former.cbegin(), former.cend(),
                                       [&item](const Cell &cell) { return cell.item == item; });
        if (sameMode && kept != former.cend()) {
            m_cells.append(*kept);
            former.erase(kept);
            continue;
        }
        QWidget *cell = makeCell(item);
        cell->setParent(this);
        m_cells.append({item, item->itemIdentifier(), cell});
    }
    for (const Cell &cell : std::as_const(former))
        retire(cell.cell);
    orderFocus();
    updateGeometry();
    arrange();
}

QWidget *ToolbarRow::controlFor(const QString &identifier) const {
    for (const Cell &cell : m_cells) {
        if (cell.identifier != identifier)
            continue;
        auto *viewCell = qobject_cast<ToolbarViewCell *>(cell.cell);
        return viewCell ? viewCell->view() : cell.cell;
    }
    return nullptr;
}

void ToolbarRow::orderFocus() {
    QWidget *last = nullptr;
    for (const Cell &cell : std::as_const(m_cells)) {
        QWidget *control = controlFor(cell.identifier);
        if (isStandardToolbarIdentifier(cell.identifier) || !control)
            continue;
        if (last)
            setTabOrder(last, control);
        last = control;
    }
    if (last)
        setTabOrder(last, m_overflow);
}

int ToolbarRow::widthOf(const Cell &cell) const {
    if (cell.identifier == toolbarFlexibleSpaceIdentifier)
        return 0;
    if (cell.identifier == toolbarFixedSpaceIdentifier)
        return fixedSpace;
    if (cell.identifier == toolbarSeparatorIdentifier)
        return separatorWidth;
    return cell.cell->sizeHint().width();
}

QSize ToolbarRow::sizeHint() const {
    QSize size = minimumSizeHint();
    int width = 0;
    for (const Cell &cell : m_cells)
        width += widthOf(cell) + gap;
    size.setWidth(std::max(size.width(), width));
    return size;
}

QSize ToolbarRow::minimumSizeHint() const {
    int height = fontMetrics().height() + 2 * gap;
    for (const Cell &cell : m_cells)
        if (!isStandardToolbarIdentifier(cell.identifier))
            height = std::max(height, cell.cell->sizeHint().height());
    return {overflowWidth, height};
}

void ToolbarRow::arrange() {
    int total = 0;
    int flexible = 0;
    for (const Cell &cell : std::as_const(m_cells)) {
        total += widthOf(cell) + gap;
        flexible += cell.identifier == toolbarFlexibleSpaceIdentifier;
    }
    const bool fits = total <= width();
    const int room = fits ? width() : width() - overflowWidth;
    int spare = fits ? room - total : 0;
    int x = 0;
    bool full = false;
    m_shown = 0;
    for (const Cell &cell : std::as_const(m_cells)) {
        int cellWidth = widthOf(cell);
        if (cell.identifier == toolbarFlexibleSpaceIdentifier) {
            cellWidth = spare / flexible;
            spare -= cellWidth;
            --flexible;
        }
        full = full || x + cellWidth > room;
        cell.cell->setGeometry(x, 0, cellWidth, height());
        cell.cell->setVisible(!full);
        x += cellWidth + gap;
        m_shown += !full;
    }
    m_overflow->setVisible(!fits);
    m_overflow->setGeometry(width() - overflowWidth, 0, overflowWidth, height());
}

void ToolbarRow::fillOverflowMenu() {
    m_overflowMenu->clear();
    qDeleteAll(m_overflowMenu->findChildren<QMenu *>(Qt::FindDirectChildrenOnly));
    for (qsizetype i = m_shown; i < m_cells.size(); ++i) {
        const QPointer<ToolbarItem> item = m_cells[i].item;
        if (!item || isStandardToolbarIdentifier(item->itemIdentifier()))
            continue;
        QAction *action = nullptr;
        if (item->menu()) {
            // Not the menu's own action: that one belongs to whatever else opens the menu.
            QMenu *submenu = m_overflowMenu->addMenu(item->image(), item->label());
            submenu->addActions(item->menu()->actions());
            action = submenu->menuAction();
        } else {
            action = m_overflowMenu->addAction(item->image(), item->label(), this, [this, item] {
                if (item)
                    item->perform(m_overflow);
            });
        }
        action->setObjectName(item->controlName());
        action->setEnabled(item->isEnabled());
        action->setToolTip(item->toolTip());
    }
}

void ToolbarRow::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    arrange();
}

// A label that changed makes its cell wider or narrower.
bool ToolbarRow::event(QEvent *event) {
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

} // namespace platform
