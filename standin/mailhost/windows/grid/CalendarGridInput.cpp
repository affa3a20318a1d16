// What the keyboard and the pointer do to the grid.
#include "standin/mailhost/windows/grid/AllDayRow.h"
#include "standin/mailhost/windows/grid/CalendarGrid.h"
#include "standin/mailhost/windows/grid/DayColumns.h"
#include "standin/mailhost/windows/grid/GridAccessibility.h"
#include "standin/mailhost/windows/grid/GridGestures.h"
#include "standin/mailhost/windows/grid/TileRename.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

namespace mailhost {

namespace {

constexpr int newOnesMinute = 9 * minutesPerHour;
constexpr int slotMinutes = 30;

} // namespace

void CalendarGrid::connectGestures() {
    using G = GridGestures;
    m_gestures->watch(m_allDay, m_allDayArea);
    m_gestures->watch(m_columns, m_scroll);
    connect(m_gestures, &G::touched, this, [this] { setFocus(Qt::MouseFocusReason); });
    connect(m_gestures, &G::pointedAt, this, &CalendarGrid::pointAt);
    connect(m_gestures, &G::opened, this, &CalendarGrid::opened);
    connect(m_gestures, &G::newRequested, this, [this](GridSurface *surface, const ClockPlace &place) {
        Q_EMIT newRequested(surface->isAllDay() ? place.date.startOfDay() : momentAt(place),
                            surface->isAllDay());
    });
    connect(m_gestures, &G::renameAsked, this, &CalendarGrid::beginRename);
    connect(m_gestures, &G::menuAsked, this, &CalendarGrid::menuRequested);
    connect(m_gestures, &G::foldAsked, this, &CalendarGrid::showFolded);
    connect(m_gestures, &G::dragged, this, &CalendarGrid::finishDrag);
}

void CalendarGrid::pointAt(GridSurface *surface, EventTileView *tile, const ClockPlace &place) {
    GridPosition pointed{int(m_contents->first.daysTo(place.date)), place.minute, surface->occurrenceOf(tile),
                         surface->isAllDay()};
    if (surface->isAllDay())
        pointed.minute = m_place ? m_place->minute : newOnesMinute;
    setPlace(pointed, false);
}

void CalendarGrid::finishDrag(const Occurrence &occurrence, Grip grip, const TimeSpan &span) {
    const std::optional<Occurrence> now = selected();
    if (!now || now->uid != occurrence.uid || now->instanceId != occurrence.instanceId)
        return;
    if (grip == Grip::Body)
        Q_EMIT moved(span.start);
    else
        Q_EMIT resized(span.start, span.seconds());
}

void CalendarGrid::showFolded(const QList<int> &occurrences, const QPoint &globalPosition) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const int index : occurrences) {
        const Occurrence &occurrence = m_contents->occurrences[index];
        QString text =
            m_style->times(occurrence.start, occurrence.end) + u"  "_s + TileTexts::subjectOf(occurrence);
        connect(menu->addAction(text.replace(u'&', u"&&"_s)), &QAction::triggered, this,
                [this, uid = occurrence.uid, instanceId = occurrence.instanceId] {
                    // Not select(): without an instance that takes the first one of the appointment.
                    if (const auto place = placeOf(indexOf(uid, instanceId)))
                        setPlace(place, true);
                });
    }
    menu->popup(globalPosition);
}

GridPosition CalendarGrid::firstPlace() const {
    const qint64 today = m_contents->first.daysTo(m_contents->today);
    if (today < 0 || today >= m_contents->days)
        return {0, newOnesMinute, -1, false};
    const ClockPlace now = clockPlaceOf(m_now());
    return {int(today), now.minute / slotMinutes * slotMinutes, -1, false};
}

void CalendarGrid::walk(WalkStep step) {
    if (!m_contents->first.isValid())
        return;
    if (!m_place) {
        const GridPosition first = firstPlace();
        return setPlace(m_walk.arriveAt(first.day, first.minute, false), true);
    }
    if (const std::optional<GridPosition> next = m_walk.step(step, *m_place))
        return setPlace(next, true);
    const int direction = step == WalkStep::Left ? -1 : 1;
    GridPosition behind = *m_place;
    behind.day += direction;
    turnPage(behind, direction * m_contents->days);
}

// `to` may lie outside the days that are shown.
void CalendarGrid::turnPage(const GridPosition &to, int days) {
    m_arrival = ClockPlace{m_contents->first.addDays(to.day), to.minute};
    m_arrivesAllDay = to.allDay;
    Q_EMIT pageRequested(days);
}

void CalendarGrid::scrollPage(int direction) {
    QScrollBar *bar = m_scroll->verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before + direction * (bar->pageStep() - m_style->hourHeight));
    if (bar->value() != before || !m_contents->first.isValid())
        return;
    GridPosition place = m_place.value_or(firstPlace());
    place.day += direction * m_contents->days;
    turnPage(place, direction * m_contents->days);
}

void CalendarGrid::activate() {
    if (!m_place)
        return;
    if (m_place->occurrence >= 0)
        Q_EMIT opened();
    else
        Q_EMIT newRequested(momentOf(*m_place), m_place->allDay);
}

void CalendarGrid::askForMenuByKey() {
    reveal();
    const EventTileView *tile = selectedTile();
    const QPoint point =
        tile ? tile->mapToGlobal(QPoint(tile->width() / 2, std::min(tile->height(), m_style->lineHeight)))
        : m_place && !m_place->allDay ? m_columns->mapToGlobal(QPoint(m_style->gutter + m_style->lineHeight,
                                                                      m_columns->yOf(m_place->minute)))
                                      : mapToGlobal(rect().center());
    Q_EMIT menuRequested(point);
}

void CalendarGrid::keyPressEvent(QKeyEvent *event) {
    const bool menuKey = event->key() == Qt::Key_Menu ||
                         (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (menuKey) {
        // Some desktops send both the key and the request; the request comes first.
        const bool had = std::exchange(m_menuByContext, false);
        return had ? void() : askForMenuByKey();
    }
    if (event->key() == Qt::Key_Escape && m_gestures->isDragging())
        return m_gestures->abandon();
    if (event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier))
        return QWidget::keyPressEvent(event);
    m_gestures->abandon(); // a click that may still become a rename
    switch (event->key()) {
    case Qt::Key_Up:
        return walk(WalkStep::Up);
    case Qt::Key_Down:
        return walk(WalkStep::Down);
    case Qt::Key_Left:
        return walk(WalkStep::Left);
    case Qt::Key_Right:
        return walk(WalkStep::Right);
    case Qt::Key_Home:
        return walk(WalkStep::First);
    case Qt::Key_End:
        return walk(WalkStep::Last);
    case Qt::Key_PageUp:
        return scrollPage(-1);
    case Qt::Key_PageDown:
        return scrollPage(1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return activate();
    default:
        QWidget::keyPressEvent(event);
    }
}

void CalendarGrid::contextMenuEvent(QContextMenuEvent *event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        return; // the press has asked for it
    m_menuByContext = true;
    askForMenuByKey();
}

bool CalendarGrid::event(QEvent *event) {
    // Escape ends the drag, and nothing else that the window would do with it.
    if (event->type() == QEvent::ShortcutOverride && m_gestures->isDragging() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::WindowDeactivate)
        m_gestures->abandon();
    return QWidget::event(event);
}

void CalendarGrid::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::LocaleChange:
        takeStyle();
        break;
    default:
        break;
    }
}

void CalendarGrid::focusInEvent(QFocusEvent *event) {
    QWidget::focusInEvent(event);
    const bool byTab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byTab && !m_place && m_contents->first.isValid())
        return walk(WalkStep::Down);
    showPlace();
    announce(this, selectedTile());
}

void CalendarGrid::focusOutEvent(QFocusEvent *event) {
    QWidget::focusOutEvent(event);
    showPlace();
}

void CalendarGrid::hideEvent(QHideEvent *event) {
    QWidget::hideEvent(event);
    m_gestures->abandon();
    m_minute.stop();
}

void CalendarGrid::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    m_gestures->abandon();
}

void CalendarGrid::timerEvent(QTimerEvent *event) {
    if (event->timerId() == m_minute.timerId())
        moveLine();
    else
        QWidget::timerEvent(event);
}

} // namespace mailhost
