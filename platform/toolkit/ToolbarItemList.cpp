#include "platform/toolkit/ToolbarCustomization.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

namespace platform {

namespace {

constexpr int imageSide = 24; // points

// Of an item that has no image because it has no look: a thin line or a stretch.
QIcon standardIcon(const QString &identifier, const QPalette &palette) {
    QPixmap pixmap(QSize(imageSide, imageSide) * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::Disabled, QPalette::Text), 1.5));
    if (identifier == toolbarSeparatorIdentifier) {
        painter.drawLine(QPointF(12, 3), QPointF(12, 21));
    } else {
        painter.drawRoundedRect(QRectF(2, 5, 20, 14), 2, 2);
        if (identifier == toolbarFlexibleSpaceIdentifier) {
            painter.drawLine(QPointF(5, 12), QPointF(19, 12));
            painter.drawPolyline(QPolygonF({{8, 9}, {5, 12}, {8, 15}}));
            painter.drawPolyline(QPolygonF({{16, 9}, {19, 12}, {16, 15}}));
        }
    }
    return pixmap;
}

// Two items of a plug-in may have one palette label: the label proper then tells them apart.
QString titleOf(const ToolbarItem &item) {
    const QString label = withoutMnemonic(item.label());
    const QString palette = item.paletteLabel();
    return label.isEmpty() || palette == label ? palette : palette + u" – "_s + label;
}

} // namespace

ToolbarItemList::ToolbarItemList(QWidget *parent)
    : QListWidget(parent) {
    setIconSize(QSize(imageSide, imageSide));
    setSpacing(1);
    setUniformItemSizes(true);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::MoveAction);
}

void ToolbarItemList::fill(const QList<ToolbarItem *> &items) {
    clear();
    for (const ToolbarItem *item : items) {
        const bool standard = isStandardToolbarIdentifier(item->itemIdentifier());
        auto *row = new QListWidgetItem(
            standard ? standardIcon(item->itemIdentifier(), palette()) : item->image(), titleOf(*item));
        row->setData(Qt::UserRole, item->itemIdentifier());
        row->setToolTip(item->toolTip());
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
        addItem(row);
    }
}

QStringList ToolbarItemList::mimeTypes() const {
    return {toolbarItemMimeType};
}

// The list and the row that the drag began at; of use within this process only.
QMimeData *ToolbarItemList::mimeData(const QList<QListWidgetItem *> &items) const {
    if (items.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    data->setData(toolbarItemMimeType, objectName().toUtf8() + ':' + QByteArray::number(row(items.first())));
    return data;
}

// The rows change by what the drop means for the tool-bar; the view must not remove any itself.
void ToolbarItemList::startDrag(Qt::DropActions) {
    QListWidgetItem *item = currentItem();
    if (!item)
        return;
    auto *drag = new QDrag(this);
    drag->setMimeData(mimeData({item}));
    drag->setPixmap(item->icon().pixmap(iconSize()));
    drag->exec(Qt::MoveAction);
}

void ToolbarItemList::dragMoveEvent(QDragMoveEvent *event) {
    QListWidget::dragMoveEvent(event); // scrolls, and shows where it would go
    event->setAccepted(event->mimeData()->hasFormat(toolbarItemMimeType));
}

int ToolbarItemList::rowBefore(const QPoint &position) const {
    const QListWidgetItem *item = itemAt(position);
    if (!item)
        return count();
    return row(item) + (position.y() > visualItemRect(item).center().y());
}

void ToolbarItemList::dropEvent(QDropEvent *event) {
    const QList<QByteArray> parts = event->mimeData()->data(toolbarItemMimeType).split(':');
    auto *source = window()->findChild<ToolbarItemList *>(QString::fromUtf8(parts.value(0)),
                                                          Qt::FindChildrenRecursively);
    setState(QAbstractItemView::NoState);
    viewport()->update();
    if (parts.size() != 2 || !source)
        return;
    event->setDropAction(Qt::MoveAction);
    event->accept();
    Q_EMIT rowDropped(source, parts[1].toInt(), rowBefore(event->position().toPoint()));
}

} // namespace platform
