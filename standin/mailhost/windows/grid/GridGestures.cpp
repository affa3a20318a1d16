#include "standin/mailhost/windows/grid/GridGestures.h"

#include <QApplication>
#include <QMouseEvent>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int slotMinutes = 30; // what a click on an empty place points at

Qt::CursorShape shapeFor(const GridSurface::Hit &hit) {
    if (!hit.tile || hit.grip == Grip::Body)
        return Qt::ArrowCursor;
    return hit.tile->ends().allDay ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

ClockPlace slotAt(const GridSurface *surface, const QPoint &point) {
    ClockPlace place = surface->placeAt(point);
    place.minute = std::min(place.minute / slotMinutes * slotMinutes, minutesPerDay - slotMinutes);
    return place;
}

} // namespace

GridGestures::GridGestures(QObject *parent)
    : QObject(parent) {}

void GridGestures::abandon() {
    const std::optional<Hold> hold = std::exchange(m_hold, std::nullopt);
    if (!hold || !hold->surface)
        return;
    hold->surface->hideGhost();
    hold->surface->setCursor(Qt::ArrowCursor);
}

bool GridGestures::eventFilter(QObject *watched, QEvent *event) {
    auto *surface = qobject_cast<GridSurface *>(watched);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(surface, mouse);
        return true;
    case QEvent::MouseButtonDblClick:
        doubleClick(surface, mouse);
        return true;
    case QEvent::MouseMove:
        move(surface, mouse);
        return true;
    case QEvent::MouseButtonRelease:
        if (mouse->button() == Qt::LeftButton)
            release();
        return true;
    case QEvent::Leave:
        if (!m_hold)
            surface->setHovered(nullptr);
        return false;
    case QEvent::Hide:
        if (m_hold && surface == m_hold->surface)
            abandon();
        return false;
    default:
        return false;
    }
}

void GridGestures::press(GridSurface *surface, const QMouseEvent *event) {
    const bool wasDragging = isDragging();
    abandon();
    if (wasDragging) // another button: that is no drag any more
        return;
    const QPoint point = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    const Qt::MouseButton button = event->button();
    const QPointer<GridSurface> alive(surface);
    const QPointer<GridGestures> self(this);
    // An open subject editor closes and may change everything that is shown.
    Q_EMIT touched();
    if (!self || !alive || (button != Qt::LeftButton && button != Qt::RightButton))
        return;
    const GridSurface::Hit hit = surface->hitAt(point);
    if (button == Qt::LeftButton && hit.tile)
        m_hold =
            Hold{surface, hit.tile,
                 point,   {hit.tile->occurrence(), hit.grip, surface->placeAt(point), hit.tile->ends().start},
                 false,   {}};
    Q_EMIT pointedAt(surface, hit.tile, slotAt(surface, point));
    if (self && button == Qt::RightButton)
        Q_EMIT menuAsked(global);
}

void GridGestures::move(GridSurface *surface, const QMouseEvent *event) {
    if (m_hold && !event->buttons().testFlag(Qt::LeftButton))
        abandon(); // the release went somewhere else
    if (!m_hold && event->buttons() == Qt::NoButton)
        return hover(surface, event->position().toPoint());
    if (!m_hold || !m_hold->surface || !m_hold->tile)
        return;
    // Between the surfaces the events keep coming to the one that was pressed.
    const QPoint point = m_hold->surface->mapFromGlobal(event->globalPosition().toPoint());
    if (!m_hold->dragging && (point - m_hold->point).manhattanLength() >= QApplication::startDragDistance()) {
        m_hold->dragging = true;
        m_hold->surface->setHovered(nullptr);
        if (m_hold->start.grip == Grip::Body)
            m_hold->surface->setCursor(Qt::ClosedHandCursor);
    }
    if (m_hold->dragging)
        follow(point);
}

void GridGestures::hover(GridSurface *surface, const QPoint &point) {
    const GridSurface::Hit hit = surface->hitAt(point);
    surface->setHovered(hit.tile);
    const Qt::CursorShape shape = shapeFor(hit);
    if (surface->cursor().shape() != shape)
        surface->setCursor(shape);
}

void GridGestures::follow(const QPoint &point) {
    const TimeSpan span = draggedSpan(m_hold->start, m_hold->surface->placeAt(point));
    if (span == m_hold->span)
        return;
    m_hold->span = span;
    Occurrence ghost = m_hold->start.occurrence;
    ghost.start = span.start;
    ghost.end = span.end;
    m_hold->surface->showGhost(m_hold->surface->occurrenceOf(m_hold->tile), ghost);
}

void GridGestures::release() {
    const std::optional<Hold> hold = m_hold;
    abandon();
    if (!hold || !hold->dragging || !hold->tile || !hold->span.start.isValid())
        return;
    const Occurrence &occurrence = hold->start.occurrence;
    if (hold->span != TimeSpan{occurrence.start, occurrence.end})
        Q_EMIT dragged(occurrence, hold->start.grip, hold->span);
}

void GridGestures::doubleClick(GridSurface *surface, const QMouseEvent *event) {
    abandon();
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint point = event->position().toPoint();
    const GridSurface::Hit hit = surface->hitAt(point);
    const ClockPlace place = slotAt(surface, point);
    const QPointer<GridGestures> self(this);
    const QPointer<GridSurface> alive(surface);
    // The first click may have been on another tile.
    Q_EMIT pointedAt(surface, hit.tile, place);
    if (!self || !alive)
        return;
    if (hit.tile)
        Q_EMIT opened();
    else
        Q_EMIT newRequested(surface, place);
}

} // namespace mailhost
