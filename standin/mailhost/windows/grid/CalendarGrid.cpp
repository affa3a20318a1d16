#include "standin/mailhost/windows/grid/CalendarGrid.h"

#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/AllDayRow.h"
#include "standin/mailhost/windows/grid/DayColumns.h"
#include "standin/mailhost/windows/grid/GridHeader.h"
#include "standin/mailhost/windows/grid/TileRename.h"

#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int mostBarLines = 5; // of the all-day row before it scrolls
constexpr int leastRenameWidth = 150;
constexpr int aboveWorkingHours = 20; // minutes visible above them at first
constexpr int newOnesMinute = 9 * minutesPerHour;
constexpr int slotMinutes = 30;

bool isSameOne(const std::optional<Occurrence> &a, const std::optional<Occurrence> &b) {
    return a && b && a->uid == b->uid && a->instanceId == b->instanceId;
}

// Passes keys that a tile does not use to the grid.
class Area : public QScrollArea {
    void keyPressEvent(QKeyEvent *event) override { event->ignore(); }
};

QScrollArea *makeArea(QWidget *content) {
    auto *area = new Area;
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setBackgroundRole(QPalette::Base);
    area->setWidget(content);
    return area;
}

QAccessibleInterface *makeAccessible(const QString &, QObject *object) {
    auto *grid = qobject_cast<CalendarGrid *>(object);
    return grid ? new QAccessibleWidget(grid, QAccessible::Grouping) : nullptr;
}

} // namespace

CalendarGrid::CalendarGrid(QWidget *parent)
    : QWidget(parent)
    , m_contents(std::make_shared<GridContents>())
    , m_header(new GridHeader(this))
    , m_rule(new QWidget(this))
    , m_allDay(new AllDayRow)
    , m_columns(new DayColumns)
    , m_now([] { return QDateTime::currentDateTime(); }) {
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeAccessible), true);
    setObjectName(controls::calendarGrid);
    setAccessibleName(tr("Calendar"));
    setFocusPolicy(Qt::StrongFocus);
    m_allDayArea = makeArea(m_allDay);
    m_scroll = makeArea(m_columns);
    m_scroll->setWidgetResizable(true);
    m_rule->setFixedHeight(1);
    m_rule->setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_header);
    layout->addWidget(m_allDayArea);
    layout->addWidget(m_rule);
    layout->addWidget(m_scroll, 1);
    takeStyle();
    connect(m_columns, &GridSurface::resized, this, &CalendarGrid::arrange);
    for (GridSurface *surface : surfaces())
        connectInput(surface);
}

CalendarGrid::~CalendarGrid() {
    abandon();
    if (m_rename)
        m_rename->abandon();
}

std::array<GridSurface *, 2> CalendarGrid::surfaces() const {
    return {m_allDay, m_columns};
}

void CalendarGrid::setController(rt::Object *controller) {
    for (GridSurface *surface : surfaces())
        surface->setController(controller);
}

void CalendarGrid::setClock(std::function<QDateTime()> now) {
    m_now = std::move(now);
    moveLine();
}

void CalendarGrid::takeStyle() {
    abandon();
    m_style = std::make_shared<GridStyle>(this);
    m_allDay->setStyle(m_style);
    m_columns->setStyle(m_style);
    m_columns->setFixedHeight(24 * m_style->hourHeight + 1);
    QPalette rule;
    rule.setColor(QPalette::Window, m_style->hourLine);
    m_rule->setPalette(rule);
    arrange();
}

// Aligns the header and the all-day row with the columns, whose scroll bar takes some of the width.
void CalendarGrid::arrange() {
    const DayEdges edges{m_style->gutter, m_scroll->viewport()->width(), m_contents->days};
    m_header->show(m_contents->first, m_contents->today, edges, m_style);
    m_columns->setEdges(edges);
    m_allDay->setEdges(edges);
    const int lines = m_contents->layout.lines;
    m_allDay->resize(edges.width, m_allDay->heightFor(lines));
    m_allDayArea->setFixedHeight(lines <= mostBarLines
                                     ? m_allDay->heightFor(lines)
                                     : m_allDay->heightFor(mostBarLines) + m_style->barHeight / 2);
    if (m_rename)
        placeRename();
}

void CalendarGrid::show(const QList<Occurrence> &occurrences, const QDate &first, Extent extent,
                        const QDate &today) {
    abandon();
    const std::optional<Occurrence> before = selected();
    const std::optional<GridPosition> formerPlace = m_place;
    const QDate formerFirst = m_contents->first;
    setFocusTile(nullptr); // the tile may be deleted
    auto contents = std::make_shared<GridContents>();
    contents->occurrences = occurrences;
    contents->first = first;
    contents->days = int(extent);
    contents->today = today;
    contents->layout = layOut(occurrences, first, contents->days);
    m_contents = contents;
    m_walk = GridNavigator(contents->layout, contents->days);
    m_place = placeAfterChange(before, formerFirst);
    const bool arrived = m_arrival && m_place;
    m_arrival.reset();
    for (GridSurface *surface : surfaces())
        surface->setContents(m_contents);
    arrange();
    moveLine();
    showPlace();
    keepRename(before);
    const std::optional<Occurrence> after = selected();
    if (arrived || (isSameOne(before, after) && before->start != after->start))
        reveal();
    if (m_place != formerPlace || formerFirst != first || before.has_value() != after.has_value())
        Q_EMIT selectionMoved();
}

// Keeps the selection. If the selected appointment is gone, keeps its place on the clock, which moves with
// the pages.
std::optional<GridPosition> CalendarGrid::placeAfterChange(const std::optional<Occurrence> &before,
                                                           const QDate &formerFirst) const {
    const int days = m_contents->days;
    const auto isShown = [days](qint64 day) { return day >= 0 && day < days; };
    if (m_arrival && isShown(m_contents->first.daysTo(m_arrival->date)))
        return m_walk.arriveAt(int(m_contents->first.daysTo(m_arrival->date)), m_arrival->minute,
                               m_arrivesAllDay);
    if (before) {
        if (const std::optional<GridPosition> place = placeOf(indexOf(*before)))
            return place;
    }
    if (!m_place)
        return std::nullopt;
    GridPosition place = *m_place;
    const qint64 sameDate = m_contents->first.daysTo(formerFirst.addDays(place.day));
    place.day = isShown(sameDate) ? int(sameDate) : std::min(place.day, days - 1);
    place.occurrence = -1;
    return place;
}

QDate CalendarGrid::firstDay() const {
    return m_contents->first;
}

CalendarGrid::Extent CalendarGrid::extent() const {
    return m_contents->days == int(Extent::Day) ? Extent::Day : Extent::Week;
}

int CalendarGrid::indexOf(const Occurrence &occurrence) const {
    for (int i = 0; i < m_contents->occurrences.size(); ++i)
        if (isSameOne(m_contents->occurrences[i], occurrence))
            return i;
    return -1;
}

std::optional<GridPosition> CalendarGrid::placeOf(int occurrence) const {
    for (const DayBar &bar : m_contents->layout.bars)
        if (bar.occurrence == occurrence)
            return GridPosition{bar.firstDay, m_place ? m_place->minute : firstPlace().minute, occurrence,
                                true};
    for (const TimedPiece &piece : m_contents->layout.pieces)
        if (piece.occurrence == occurrence)
            return GridPosition{piece.day, piece.begin, occurrence, false};
    return std::nullopt;
}

std::optional<Occurrence> CalendarGrid::selected() const {
    if (!m_place || m_place->occurrence < 0)
        return std::nullopt;
    return m_contents->occurrences[m_place->occurrence];
}

bool CalendarGrid::select(const QString &uid, const QString &instanceId) {
    const QPointer<CalendarGrid> self(this);
    if (m_rename)
        m_rename->commit(); // may change the shown appointments
    if (!self)
        return false;
    for (const int index : m_walk.readingOrder()) {
        const Occurrence &occurrence = m_contents->occurrences[index];
        if (occurrence.uid != uid || (!instanceId.isEmpty() && occurrence.instanceId != instanceId))
            continue;
        setPlace(placeOf(index), true);
        return true;
    }
    return false;
}

QDateTime CalendarGrid::momentOf(const GridPosition &place) const {
    const QDate date = m_contents->first.addDays(place.day);
    if (place.allDay)
        return date.startOfDay();
    if (place.occurrence < 0)
        return momentAt({date, place.minute});
    const QDateTime start = m_contents->occurrences[place.occurrence].start.toLocalTime();
    return start.date() == date ? start : date.startOfDay();
}

QDateTime CalendarGrid::selectedMoment() const {
    return m_place ? momentOf(*m_place) : QDateTime();
}

GridSurface *CalendarGrid::surfaceOf(int occurrence) const {
    return m_contents->occurrences[occurrence].allDay ? static_cast<GridSurface *>(m_allDay) : m_columns;
}

EventTileView *CalendarGrid::selectedTile() const {
    if (!m_place || m_place->occurrence < 0)
        return nullptr;
    const QList<EventTileView *> tiles = surfaceOf(m_place->occurrence)->tilesOf(m_place->occurrence);
    return tiles.isEmpty() ? nullptr : tiles.first();
}

QList<EventTileView *> CalendarGrid::tiles() const {
    QList<EventTileView *> tiles;
    for (const int occurrence : m_walk.readingOrder())
        tiles += surfaceOf(occurrence)->tilesOf(occurrence);
    return tiles;
}

void CalendarGrid::setPlace(const std::optional<GridPosition> &place, bool toReveal) {
    if (m_place == place)
        return;
    m_place = place;
    m_arrival.reset();
    showPlace();
    if (toReveal)
        reveal();
    Q_EMIT selectionMoved();
}

void CalendarGrid::showPlace() {
    const int occurrence = m_place ? m_place->occurrence : -1;
    ClockPlace cursor;
    if (m_place && occurrence < 0)
        cursor = {m_contents->first.addDays(m_place->day), m_place->minute};
    for (GridSurface *surface : surfaces()) {
        const bool here = m_place && surface->isAllDay() == m_place->allDay;
        surface->setSelected(here ? occurrence : -1);
        surface->setCursorPlace(here ? cursor : ClockPlace());
    }
    setFocusTile(selectedTile());
    const QDateTime moment = selectedMoment();
    setAccessibleDescription(moment.isValid() ? spokenDay(moment.date()) + u", "_s +
                                                    QLocale().toString(moment.time(), QLocale::ShortFormat)
                                              : QString());
}

// Makes the tile the grid's focus proxy, so that both are one stop for Tab. nullptr: the grid itself gets the
// focus.
void CalendarGrid::setFocusTile(EventTileView *tile) {
    QWidget *former = focusProxy();
    if (former == tile)
        return;
    const QWidget *keyboard = window()->focusWidget(); // also while another window is active
    const bool focused = keyboard == this || (former && keyboard == former);
    setFocusProxy(nullptr);
    if (former)
        former->setFocusPolicy(Qt::ClickFocus);
    if (tile) {
        tile->setFocusPolicy(Qt::StrongFocus);
        setTabOrder(this, tile); // otherwise the grid would move to the tile's place in the order
        setFocusProxy(tile);
    }
    if (focused)
        setFocus(Qt::OtherFocusReason);
}

void CalendarGrid::reveal() {
    if (!m_place)
        return;
    const EventTileView *tile = selectedTile();
    QScrollArea *area = m_place->allDay ? m_allDayArea : m_scroll;
    const int top = tile ? tile->y() : m_columns->yOf(m_place->minute);
    const int height = tile ? std::min(tile->height(), area->viewport()->height()) : m_style->hourHeight / 2;
    if (!tile && m_place->allDay)
        return;
    constexpr int margin = 4;
    // An area higher than the view shows its beginning.
    area->ensureVisible(0, top + height, 0, margin);
    area->ensureVisible(0, top, 0, margin);
}

void CalendarGrid::beginRename() {
    EventTileView *tile = selectedTile();
    if (!tile || (m_rename && !m_rename->isOver()))
        return;
    abandon();
    reveal();
    m_rename = new TileRename(surfaceOf(m_place->occurrence), this, tile->occurrence().summary);
    connect(m_rename, &TileRename::committed, this, &CalendarGrid::finishRename);
    placeRename();
    m_rename->show();
    m_rename->setFocus(Qt::OtherFocusReason);
}

void CalendarGrid::placeRename() {
    const EventTileView *tile = selectedTile();
    if (!tile)
        return;
    const int width = std::max(leastRenameWidth, tile->width());
    const int left = std::clamp(tile->x(), 0, std::max(0, tile->parentWidget()->width() - width));
    const int height = m_rename->sizeHint().height();
    const int top = std::clamp(tile->y(), 0, std::max(0, tile->parentWidget()->height() - height));
    m_rename->setGeometry(left, top, width, height);
    m_rename->raise();
}

// Continues an open subject editor at the appointment's new place. If the appointment is hidden or its
// subject has changed, the editor ends.
void CalendarGrid::keepRename(const std::optional<Occurrence> &before) {
    if (!m_rename)
        return;
    const std::optional<Occurrence> now = selected();
    const bool same = isSameOne(before, now) && before->summary == now->summary &&
                      m_rename->parentWidget() == surfaceOf(m_place->occurrence);
    if (same)
        return placeRename();
    m_rename->abandon();
    m_rename.clear();
}

void CalendarGrid::finishRename(const QString &subject) {
    m_rename.clear();
    const std::optional<Occurrence> occurrence = selected();
    const bool bothEmpty = occurrence && subject.isEmpty() && occurrence->summary.isEmpty();
    if (occurrence && subject != occurrence->summary && !bothEmpty)
        Q_EMIT renamed(subject);
}

void CalendarGrid::moveLine() {
    constexpr int secondsPerMinute = 60;
    constexpr int milliseconds = 1000;
    const QTime now = m_now().toLocalTime().time();
    m_columns->setNow(now);
    if (isVisible())
        m_minute.start((secondsPerMinute - now.second()) * milliseconds, this);
}

void CalendarGrid::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    moveLine();
    if (m_scrolled)
        return;
    m_scrolled = true;
    const int top = GridStyle::firstWorkingHour * minutesPerHour - aboveWorkingHours;
    m_scroll->verticalScrollBar()->setValue(m_columns->yOf(top));
}

void CalendarGrid::abandon() {
    for (GridSurface *surface : surfaces())
        surface->abandon();
}

bool CalendarGrid::isDragging() const {
    return m_allDay->isDragging() || m_columns->isDragging();
}

void CalendarGrid::connectInput(GridSurface *surface) {
    using S = GridSurface;
    connect(surface, &S::touched, this, [this] { setFocus(Qt::MouseFocusReason); });
    connect(surface, &S::pointedAt, this,
            [this, surface](EventTileView *tile, const ClockPlace &place) { pointAt(surface, tile, place); });
    connect(surface, &S::opened, this, &CalendarGrid::opened);
    connect(surface, &S::newRequested, this, [this, surface](const ClockPlace &place) {
        Q_EMIT newRequested(surface->isAllDay() ? place.date.startOfDay() : momentAt(place),
                            surface->isAllDay());
    });
    connect(surface, &S::menuAsked, this, &CalendarGrid::menuRequested);
    connect(surface, &S::dragged, this, &CalendarGrid::finishDrag);
    connect(surface, &S::reached, this, [this, surface](EventTileView *tile, bool pressed) {
        const int occurrence = surface->occurrenceOf(tile);
        if (!m_place || m_place->occurrence != occurrence)
            setPlace(placeOf(occurrence), false);
        if (pressed)
            Q_EMIT opened();
    });
}

void CalendarGrid::pointAt(GridSurface *surface, EventTileView *tile, const ClockPlace &place) {
    GridPosition pointed{int(m_contents->first.daysTo(place.date)), place.minute, surface->occurrenceOf(tile),
                         surface->isAllDay()};
    if (surface->isAllDay())
        pointed.minute = m_place ? m_place->minute : newOnesMinute;
    setPlace(pointed, false);
}

void CalendarGrid::finishDrag(const Occurrence &occurrence, Grip grip, const TimeSpan &span) {
    if (!isSameOne(selected(), occurrence))
        return;
    if (grip == Grip::Body)
        Q_EMIT moved(span.start);
    else
        Q_EMIT resized(span.start, span.seconds());
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

// `to` may be outside of the shown days.
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
    if (event->key() == Qt::Key_Escape && isDragging())
        return abandon();
    if (event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier))
        return QWidget::keyPressEvent(event);
    static const QHash<int, WalkStep> steps{{Qt::Key_Up, WalkStep::Up},      {Qt::Key_Down, WalkStep::Down},
                                            {Qt::Key_Left, WalkStep::Left},  {Qt::Key_Right, WalkStep::Right},
                                            {Qt::Key_Home, WalkStep::First}, {Qt::Key_End, WalkStep::Last}};
    const int key = event->key();
    if (steps.contains(key))
        walk(steps[key]);
    else if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
        scrollPage(key == Qt::Key_PageUp ? -1 : 1);
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        activate();
    else
        QWidget::keyPressEvent(event);
}

void CalendarGrid::contextMenuEvent(QContextMenuEvent *event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse)
        return; // the key press has already opened it
    m_menuByContext = true;
    askForMenuByKey();
}

bool CalendarGrid::event(QEvent *event) {
    // Escape only ends the drag, without its effect on the window.
    if (event->type() == QEvent::ShortcutOverride && isDragging() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::WindowDeactivate)
        abandon();
    return QWidget::event(event);
}

void CalendarGrid::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    static const QSet<QEvent::Type> looks{QEvent::PaletteChange, QEvent::FontChange, QEvent::StyleChange,
                                          QEvent::LocaleChange};
    if (looks.contains(event->type()))
        takeStyle();
}

void CalendarGrid::focusInEvent(QFocusEvent *event) {
    QWidget::focusInEvent(event);
    const bool byTab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byTab && !m_place && m_contents->first.isValid())
        walk(WalkStep::Down);
}

void CalendarGrid::hideEvent(QHideEvent *event) {
    QWidget::hideEvent(event);
    abandon();
    m_minute.stop();
}

void CalendarGrid::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    abandon();
}

void CalendarGrid::timerEvent(QTimerEvent *event) {
    if (event->timerId() == m_minute.timerId())
        moveLine();
    else
        QWidget::timerEvent(event);
}

} // namespace mailhost
