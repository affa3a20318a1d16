#include "standin/mailhost/windows/grid/GridSurface.h"

#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int widestGrip = 6; // at a tile's edge; a quarter of a small one
constexpr int leastGrip = 2;
constexpr int slotMinutes = 30; // the unit that a click on an empty place selects

Grip gripAt(int position, int length, const TileEnds &ends) {
    const int grip = std::clamp(length / 4, leastGrip, widestGrip);
    if (ends.end && position >= length - grip)
        return Grip::End;
    return ends.start && position < grip ? Grip::Begin : Grip::Body;
}

// The caller may still be running in the tile.
void discard(EventTileView *tile) {
    if (!tile)
        return;
    tile->hide();
    tile->deleteLater();
}

} // namespace

int DayEdges::dayAt(int x) const {
    for (int day = 1; day < days; ++day)
        if (x < left(day))
            return day - 1;
    return days - 1;
}

GridSurface::GridSurface(QWidget *parent)
    : QWidget(parent)
    , m_contents(std::make_shared<GridContents>()) {
    setMouseTracking(true);
}

void GridSurface::setStyle(std::shared_ptr<const GridStyle> style) {
    m_style = std::move(style);
    place();
    update();
}

void GridSurface::setContents(std::shared_ptr<const GridContents> contents) {
    m_contents = std::move(contents);
    m_selected = -1;
    m_cursor = {};
    m_hovered.clear();
    abandon();
    place();
    update();
}

void GridSurface::setEdges(const DayEdges &edges) {
    if (m_edges == edges)
        return;
    m_edges = edges;
    place();
    update();
}

QString GridSurface::keyOf(const Occurrence &occurrence, int piece) {
    return occurrence.uid + u'\n' + occurrence.instanceId + u'\n' + QString::number(piece);
}

EventTileView *GridSurface::newTile(bool ghost) {
    EventTileView *tile = EventTileView::make(this, QRectF(), m_controller.get(), m_style->accent, ghost);
    connect(tile, &EventTileView::focused, this, [this, tile] { Q_EMIT reached(tile, false); });
    connect(tile, &EventTileView::pressed, this, [this, tile] { Q_EMIT reached(tile, true); });
    return tile;
}

void GridSurface::place() {
    if (!m_style)
        return;
    QMultiHash<QString, Tile> former;
    former.swap(m_tiles);
    m_placed.clear();
    for (const TilePlan &plan : plan(m_contents->layout, m_contents->occurrences, false)) {
        Tile tile = former.take(plan.key);
        if (!tile)
            tile = newTile(false);
        m_tiles.insert(plan.key, tile);
        m_placed.append({tile, plan.occurrence});
        tile->setStyle(m_style);
        tile->setOccurrence(m_contents->occurrences[plan.occurrence], plan.ends);
        tile->setGeometry(plan.frame);
        tile->show();
    }
    for (const Tile &left : std::as_const(former))
        discard(left);
    showStates();
    placed();
}

void GridSurface::showStates() {
    for (const auto &[tile, occurrence] : std::as_const(m_placed))
        if (tile)
            tile->setState({occurrence == m_selected, tile == m_hovered, occurrence == m_dimmed});
}

GridSurface::Hit GridSurface::hitAt(const QPoint &point) const {
    for (const auto &[tile, occurrence] : m_placed) {
        if (!tile || !tile->geometry().contains(point))
            continue;
        const QPoint inside = point - tile->pos();
        const bool across = tile->ends().allDay;
        return {tile, across ? gripAt(inside.x(), tile->width(), tile->ends())
                             : gripAt(inside.y(), tile->height(), tile->ends())};
    }
    return {};
}

void GridSurface::setCursorPlace(const ClockPlace &place) {
    if (m_cursor == place)
        return;
    m_cursor = place;
    update();
}

QList<EventTileView *> GridSurface::tilesOf(int occurrence) const {
    QList<EventTileView *> tiles;
    for (const Placed &placed : m_placed)
        if (placed.tile && placed.occurrence == occurrence)
            tiles.append(placed.tile);
    return tiles;
}

int GridSurface::occurrenceOf(const EventTileView *tile) const {
    for (const Placed &placed : m_placed)
        if (tile && placed.tile == tile)
            return placed.occurrence;
    return -1;
}

void GridSurface::setSelected(int occurrence) {
    m_selected = occurrence;
    showStates();
}

void GridSurface::setHovered(EventTileView *tile) {
    if (m_hovered == tile)
        return;
    m_hovered = tile;
    showStates();
}

void GridSurface::showGhost(const Occurrence &dragged) {
    hideGhost();
    const QList<Occurrence> one{dragged};
    for (const TilePlan &plan : plan(layOut(one, m_contents->first, m_contents->days), one, true)) {
        EventTileView *tile = newTile(true);
        tile->setStyle(m_style);
        tile->setOccurrence(dragged, plan.ends);
        tile->setGeometry(plan.frame);
        tile->show();
        m_ghosts.append(tile);
    }
    m_dimmed = occurrenceOf(m_hold->tile);
    showStates();
}

void GridSurface::hideGhost() {
    for (const Tile &ghost : std::as_const(m_ghosts))
        discard(ghost);
    m_ghosts.clear();
    m_dimmed = -1;
    showStates();
}

void GridSurface::abandon() {
    if (!m_hold)
        return;
    m_hold.reset();
    hideGhost();
    setCursor(Qt::ArrowCursor);
}

ClockPlace GridSurface::slotAt(const QPoint &point) const {
    ClockPlace place = placeAt(point);
    place.minute = std::min(place.minute / slotMinutes * slotMinutes, minutesPerDay - slotMinutes);
    return place;
}

void GridSurface::mousePressEvent(QMouseEvent *event) {
    const bool wasDragging = isDragging();
    abandon();
    if (wasDragging) // another button ends the drag
        return;
    const QPoint point = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    const Qt::MouseButton button = event->button();
    const QPointer<GridSurface> self(this);
    // An open subject editor closes and may change everything that is shown.
    Q_EMIT touched();
    if (!self || (button != Qt::LeftButton && button != Qt::RightButton))
        return;
    const Hit hit = hitAt(point);
    if (button == Qt::LeftButton && hit.tile)
        m_hold = Hold{hit.tile,
                      point,
                      {hit.tile->occurrence(), hit.grip, placeAt(point), hit.tile->ends().start},
                      false,
                      {}};
    Q_EMIT pointedAt(hit.tile, slotAt(point));
    if (self && button == Qt::RightButton)
        Q_EMIT menuAsked(global);
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
        if (m_hold->start.grip == Grip::Body)
            setCursor(Qt::ClosedHandCursor);
    }
    if (m_hold->dragging)
        follow(point);
}

void GridSurface::hover(const QPoint &point) {
    const Hit hit = hitAt(point);
    setHovered(hit.tile);
    const Qt::CursorShape shape = !hit.tile || hit.grip == Grip::Body ? Qt::ArrowCursor
                                  : hit.tile->ends().allDay           ? Qt::SizeHorCursor
                                                                      : Qt::SizeVerCursor;
    if (cursor().shape() != shape)
        setCursor(shape);
}

void GridSurface::follow(const QPoint &point) {
    const TimeSpan span = draggedSpan(m_hold->start, placeAt(point));
    if (span == m_hold->span)
        return;
    m_hold->span = span;
    Occurrence ghost = m_hold->start.occurrence;
    ghost.start = span.start;
    ghost.end = span.end;
    showGhost(ghost);
}

void GridSurface::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    const std::optional<Hold> hold = m_hold;
    abandon();
    if (!hold || !hold->dragging || !hold->tile || !hold->span.start.isValid())
        return;
    const Occurrence &occurrence = hold->start.occurrence;
    if (hold->span != TimeSpan{occurrence.start, occurrence.end})
        Q_EMIT dragged(occurrence, hold->start.grip, hold->span);
}

void GridSurface::mouseDoubleClickEvent(QMouseEvent *event) {
    abandon();
    if (event->button() != Qt::LeftButton)
        return;
    const Hit hit = hitAt(event->position().toPoint());
    const ClockPlace place = slotAt(event->position().toPoint());
    const QPointer<GridSurface> self(this);
    // The first click may have hit another tile.
    Q_EMIT pointedAt(hit.tile, place);
    if (self && hit.tile)
        Q_EMIT opened();
    else if (self)
        Q_EMIT newRequested(place);
}

bool GridSurface::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const EventTileView *tile = hitAt(help->pos()).tile;
    if (!tile || !tile->isShortened()) {
        QToolTip::hideText();
        return true;
    }
    const Occurrence &occurrence = tile->occurrence();
    QStringList lines{TileTexts::subjectOf(occurrence), occurrence.location.simplified()};
    if (!occurrence.allDay)
        lines.insert(1, m_style->times(occurrence.start, occurrence.end));
    lines.removeAll(QString());
    // Escaped, because tool tips may interpret rich text.
    QToolTip::showText(help->globalPos(), lines.join(u'\n').toHtmlEscaped().replace(u'\n', u"<br>"_s), this);
    return true;
}

} // namespace mailhost
