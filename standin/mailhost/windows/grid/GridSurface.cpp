#include "standin/mailhost/windows/grid/GridSurface.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTextDocument>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int widestGrip = 6; // at a tile's edge; a quarter of a small one
constexpr int leastGrip = 2;
constexpr int slotMinutes = 30; // the unit that a click on an empty place selects

Grip gripAt(int position, int length, const GridPiece &piece) {
    const int grip = std::clamp(length / 4, leastGrip, widestGrip);
    if (piece.endsHere && position >= length - grip)
        return Grip::End;
    return piece.startsHere && position < grip ? Grip::Begin : Grip::Body;
}

// Names the same piece before and after a change.
QString keyOf(const Occurrence &occurrence, const GridPiece &piece) {
    const int part = piece.startsHere ? 0 : piece.firstDay + 1;
    return occurrence.uid + u'\n' + occurrence.instanceId + u'\n' + QString::number(part);
}

// The caller may still be running in the tile.
void discard(EventTileView *tile) {
    tile->hide();
    tile->deleteLater();
}

} // namespace

GridSurface::GridSurface(std::shared_ptr<const GridScene> scene, QWidget *grid)
    : m_scene(std::move(scene)) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
    setFocusProxy(grid);
}

EventTileView *GridSurface::newTile(bool ghost) {
    EventTileView *tile = EventTileView::make(this, m_scene, ghost);
    if (ghost)
        return tile;
    connect(tile, &EventTileView::focused, this, [this, tile] { Q_EMIT reached(tile->piece().occurrence); });
    connect(tile, &EventTileView::pressed, this, [this, tile] {
        Q_EMIT reached(tile->piece().occurrence);
        Q_EMIT activated();
    });
    return tile;
}

void GridSurface::showScene() {
    setHovered(nullptr); // its tile may move or go
    QMultiHash<QString, EventTileView *> former;
    for (EventTileView *tile : std::as_const(m_tiles))
        former.insert(keyOf(tile->occurrence(), tile->piece()), tile);
    m_tiles.clear();
    for (const GridPiece &piece : m_scene->layout.pieces) {
        if (piece.allDay != isAllDay())
            continue;
        const Occurrence &occurrence = m_scene->occurrences[piece.occurrence];
        EventTileView *tile = former.take(keyOf(occurrence, piece));
        m_tiles.append(tile ? tile : newTile(false));
        m_tiles.last()->show(occurrence, piece, frameOf(piece));
    }
    for (EventTileView *tile : std::as_const(former))
        discard(tile);
    showPlace();
}

void GridSurface::showPlace() {
    const int selected = m_scene->place ? m_scene->place->occurrence : -1;
    const int dragged = isDragging() && m_hold->tile ? m_hold->tile->piece().occurrence : -1;
    for (EventTileView *tile : std::as_const(m_tiles)) {
        const int occurrence = tile->piece().occurrence;
        tile->setState({occurrence == selected, tile == m_hovered, occurrence == dragged});
    }
    update(); // the cursor
}

int GridSurface::cursorDay() const {
    const std::optional<GridPosition> &place = m_scene->place;
    return place && place->occurrence < 0 && place->allDay == isAllDay() ? place->day : -1;
}

GridSurface::Hit GridSurface::hitAt(const QPoint &point) const {
    for (EventTileView *tile : m_tiles) {
        if (!tile->geometry().contains(point))
            continue;
        const QPoint inside = point - tile->pos();
        return {tile, isAllDay() ? gripAt(inside.x(), tile->width(), tile->piece())
                                 : gripAt(inside.y(), tile->height(), tile->piece())};
    }
    return {};
}

QList<EventTileView *> GridSurface::tilesOf(int occurrence) const {
    QList<EventTileView *> tiles = m_tiles;
    tiles.removeIf(
        [occurrence](const EventTileView *tile) { return tile->piece().occurrence != occurrence; });
    return tiles;
}

void GridSurface::setHovered(EventTileView *tile) {
    if (m_hovered == tile)
        return;
    m_hovered = tile;
    setToolTip(tile ? Qt::convertFromPlainText(tile->accessibleName()) : QString());
    showPlace();
}

void GridSurface::follow(const QPoint &point) {
    const TimeSpan span = draggedSpan(m_hold->start, placeAt(point));
    if (span == m_hold->span)
        return;
    m_hold->span = span;
    Occurrence dragged = m_hold->start.occurrence;
    dragged.start = span.start;
    dragged.end = span.end;
    hideGhost();
    for (GridPiece piece : layOut({dragged}, m_scene->first, m_scene->days).pieces) {
        if (piece.allDay) // in the line of the bar that is being dragged
            piece.column = m_hold->tile->piece().column;
        m_ghosts.append(newTile(true));
        m_ghosts.last()->show(dragged, piece, frameOf(piece));
    }
}

void GridSurface::hideGhost() {
    for (EventTileView *ghost : std::as_const(m_ghosts))
        discard(ghost);
    m_ghosts.clear();
}

void GridSurface::abandon() {
    if (!m_hold)
        return;
    m_hold.reset();
    hideGhost();
    showPlace();
    setCursor(Qt::ArrowCursor);
}

ClockPlace GridSurface::placeAt(const QPoint &point) const {
    return {m_scene->first.addDays(m_scene->dayAt(point.x())), minuteAt(point.y())};
}

ClockPlace GridSurface::slotAt(const QPoint &point) const {
    ClockPlace place = placeAt(point);
    place.minute = std::min(place.minute / slotMinutes * slotMinutes, minutesPerDay - slotMinutes);
    return place;
}

void GridSurface::mousePressEvent(QMouseEvent *event) {
    const bool wasDragging = isDragging();
    m_endedDrag = wasDragging;
    abandon();
    const QPoint point = event->position().toPoint();
    const bool left = event->button() == Qt::LeftButton;
    if (wasDragging || (!left && event->button() != Qt::RightButton)) // another button ends the drag
        return;
    const Hit hit = hitAt(point);
    if (left && hit.tile)
        m_hold = Hold{hit.tile,
                      point,
                      {hit.tile->occurrence(), hit.grip, placeAt(point), hit.tile->piece().startsHere},
                      false,
                      {}};
    Q_EMIT pointedAt(hit.tile ? hit.tile->piece().occurrence : -1, slotAt(point));
}

void GridSurface::mouseMoveEvent(QMouseEvent *event) {
    const QPoint point = event->position().toPoint();
    if (!event->buttons().testFlag(Qt::LeftButton))
        abandon(); // another window got the release
    if (event->buttons() == Qt::NoButton)
        return hover(point);
    if (!m_hold || !m_hold->tile)
        return;
    if (!m_hold->dragging && (point - m_hold->point).manhattanLength() >= QApplication::startDragDistance()) {
        m_hold->dragging = true;
        setHovered(nullptr);
        showPlace();
        if (m_hold->start.grip == Grip::Body)
            setCursor(Qt::ClosedHandCursor);
    }
    if (m_hold->dragging)
        follow(point);
}

void GridSurface::hover(const QPoint &point) {
    const Hit hit = hitAt(point);
    setHovered(hit.tile);
    setCursor(hit.grip == Grip::Body ? Qt::ArrowCursor : isAllDay() ? Qt::SizeHorCursor : Qt::SizeVerCursor);
}

void GridSurface::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    const std::optional<Hold> hold = m_hold;
    abandon();
    if (!hold || !hold->span.start.isValid())
        return;
    const Occurrence &occurrence = hold->start.occurrence;
    if (hold->span != TimeSpan{occurrence.start, occurrence.end})
        Q_EMIT dragged(occurrence, hold->start.grip, hold->span);
}

void GridSurface::mouseDoubleClickEvent(QMouseEvent *event) {
    abandon();
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint point = event->position().toPoint();
    const Hit hit = hitAt(point);
    const QPointer<GridSurface> self(this);
    // The first click may have hit another tile.
    Q_EMIT pointedAt(hit.tile ? hit.tile->piece().occurrence : -1, slotAt(point));
    if (self)
        Q_EMIT activated();
}

// The grid opens the menu, also for a key that a tile got.
void GridSurface::contextMenuEvent(QContextMenuEvent *event) {
    event->setAccepted(m_endedDrag && event->reason() == QContextMenuEvent::Mouse);
}

} // namespace mailhost
