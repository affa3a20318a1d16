#include "standin/mailhost/windows/grid/GridGestures.h"

#include "standin/mailhost/windows/grid/DayColumns.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int scrollEdge = 24;     // this near to the edge a drag scrolls
constexpr int scrollInterval = 20; // milliseconds
constexpr int longestStep = 14;    // pixels
constexpr int slotMinutes = 30;    // what a click on an empty place points at

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

void GridGestures::watch(GridSurface *surface, QScrollArea *area) {
    m_areas.append({surface, area});
    surface->installEventFilter(this);
}

void GridGestures::abandon() {
    m_phase = Phase::Idle;
    m_tile.clear();
    m_mayRename = false;
    m_scrolling.stop();
    m_renaming.stop();
    if (!m_surface)
        return;
    m_surface->hideGhost();
    m_surface->setCursor(Qt::ArrowCursor);
    m_surface.clear();
}

bool GridGestures::eventFilter(QObject *watched, QEvent *event) {
    auto *surface = qobject_cast<GridSurface *>(watched);
    if (!surface)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(surface, static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::MouseButtonDblClick:
        doubleClick(surface, static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::MouseMove:
        move(surface, static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::MouseButtonRelease:
        release(static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::Leave:
        if (m_phase == Phase::Idle)
            surface->setHovered(nullptr);
        return false;
    case QEvent::Hide:
        if (surface == m_surface)
            abandon();
        return false;
    default:
        return false;
    }
}

void GridGestures::press(GridSurface *surface, QMouseEvent *event) {
    if (m_phase == Phase::Dragging) { // another button: that is no drag any more
        abandon();
        return;
    }
    abandon();
    const QPoint point = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    const Qt::MouseButton button = event->button();
    const QPointer<GridSurface> alive(surface);
    const QPointer<GridGestures> self(this);
    // An open subject editor closes and may change everything that is shown.
    Q_EMIT touched();
    if (!self || !alive)
        return;
    const auto *columns = qobject_cast<DayColumns *>(surface);
    const GridSurface::Hit hit = surface->hitAt(point);
    const QList<int> folded = columns && !hit.tile ? columns->foldedAt(point) : QList<int>();
    if (!folded.isEmpty()) {
        Q_EMIT foldAsked(folded, global);
        return;
    }
    if (button == Qt::LeftButton) {
        pressLeft(surface, point, hit);
    } else if (button == Qt::RightButton) {
        Q_EMIT pointedAt(surface, hit.tile, slotAt(surface, point));
        if (self)
            Q_EMIT menuAsked(global);
    }
}

void GridGestures::pressLeft(GridSurface *surface, const QPoint &point, const GridSurface::Hit &hit) {
    m_phase = Phase::Pressed;
    m_surface = surface;
    m_tile = hit.tile;
    m_grip = hit.grip;
    m_pressedAt = point;
    m_from = surface->placeAt(point);
    if (hit.tile) {
        m_occurrence = hit.tile->occurrence();
        m_holdsStart = hit.tile->ends().start;
        m_mayRename = hit.tile->state().focused && hit.onSubject && hit.grip == Grip::Body;
    }
    Q_EMIT pointedAt(surface, hit.tile, slotAt(surface, point));
}

void GridGestures::move(GridSurface *surface, QMouseEvent *event) {
    const QPoint point = event->position().toPoint();
    m_pointer = event->globalPosition().toPoint();
    if (m_phase != Phase::Idle && !event->buttons().testFlag(Qt::LeftButton))
        abandon(); // the release went somewhere else
    if (m_phase == Phase::Idle) {
        if (event->buttons() == Qt::NoButton)
            hover(surface, point);
        return;
    }
    if (!m_surface || !m_tile)
        return;
    // Between the surfaces the events keep coming to the one that was pressed.
    const QPoint inSurface = m_surface->mapFromGlobal(m_pointer);
    if (m_phase == Phase::Pressed &&
        (inSurface - m_pressedAt).manhattanLength() >= QApplication::startDragDistance())
        startDrag();
    if (m_phase == Phase::Dragging)
        follow(inSurface);
}

void GridGestures::hover(GridSurface *surface, const QPoint &point) {
    const GridSurface::Hit hit = surface->hitAt(point);
    surface->setHovered(hit.tile);
    const Qt::CursorShape shape = shapeFor(hit);
    if (surface->cursor().shape() != shape)
        surface->setCursor(shape);
}

void GridGestures::startDrag() {
    m_phase = Phase::Dragging;
    m_mayRename = false;
    m_span = {};
    m_surface->setHovered(nullptr);
    if (m_grip == Grip::Body)
        m_surface->setCursor(Qt::ClosedHandCursor);
    m_scrolling.start(scrollInterval, this);
}

void GridGestures::follow(const QPoint &point) {
    const TimeSpan span = draggedSpan(m_occurrence, m_grip, m_from, m_surface->placeAt(point), m_holdsStart);
    if (span == m_span)
        return;
    m_span = span;
    Occurrence ghost = m_occurrence;
    ghost.start = span.start;
    ghost.end = span.end;
    m_surface->showGhost(m_surface->occurrenceOf(m_tile), ghost);
}

void GridGestures::release(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || m_phase == Phase::Idle)
        return;
    if (m_phase == Phase::Pressed) {
        m_phase = Phase::Idle;
        if (m_mayRename && m_tile)
            m_renaming.start(QApplication::doubleClickInterval(), this);
        return;
    }
    const Occurrence occurrence = m_occurrence;
    const TimeSpan span = m_span;
    const Grip grip = m_grip;
    const bool whole = m_tile; // what was dragged is still there
    abandon();
    const bool changed = span.start != occurrence.start || span.end != occurrence.end;
    if (whole && span.start.isValid() && changed)
        Q_EMIT dragged(occurrence, grip, span);
}

void GridGestures::doubleClick(GridSurface *surface, QMouseEvent *event) {
    const bool left = event->button() == Qt::LeftButton;
    const QPoint point = event->position().toPoint();
    abandon();
    if (!left)
        return;
    const GridSurface::Hit hit = surface->hitAt(point);
    const auto *columns = qobject_cast<DayColumns *>(surface);
    if (!hit.tile && columns && !columns->foldedAt(point).isEmpty())
        return;
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

void GridGestures::timerEvent(QTimerEvent *event) {
    if (event->timerId() == m_scrolling.timerId()) {
        scrollNearEdge();
    } else if (event->timerId() == m_renaming.timerId()) {
        m_renaming.stop();
        const bool still = m_tile && m_tile->state().focused;
        abandon();
        if (still)
            Q_EMIT renameAsked();
    }
}

void GridGestures::scrollNearEdge() {
    for (const auto &[surface, area] : std::as_const(m_areas)) {
        if (!surface || !area || surface != m_surface || m_phase != Phase::Dragging)
            continue;
        const int y = area->viewport()->mapFromGlobal(m_pointer).y();
        const int above = scrollEdge - y;
        const int below = y - (area->viewport()->height() - scrollEdge);
        const int step = below > 0   ? std::min(longestStep, below / 2 + 1)
                         : above > 0 ? -std::min(longestStep, above / 2 + 1)
                                     : 0;
        QScrollBar *bar = area->verticalScrollBar();
        const int before = bar->value();
        bar->setValue(before + step);
        if (bar->value() != before && m_surface)
            follow(m_surface->mapFromGlobal(m_pointer));
    }
}

} // namespace mailhost
