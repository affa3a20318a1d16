#include "standin/mailhost/windows/grid/CalendarGrid.h"

#include "platform/Literals.h"
#include "standin/mailhost/windows/grid/GridAreas.h"
#include "standin/mailhost/windows/grid/GridHeader.h"

#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
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
    , m_scene(std::make_shared<GridScene>(this))
    , m_header(new GridHeader(m_scene))
    , m_allDay(new AllDayRow(m_scene, this))
    , m_columns(new DayColumns(m_scene, this)) {
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeAccessible), true);
    setAccessibleName(tr("Calendar"));
    setFocusPolicy(Qt::StrongFocus);
    m_allDayArea = makeArea(m_allDay);
    m_scroll = makeArea(m_columns);
    m_scroll->setWidgetResizable(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1); // shows the grid itself, as a line
    layout->addWidget(m_header);
    layout->addWidget(m_allDayArea);
    layout->addWidget(m_scroll, 1);
    takeStyle();
    connect(m_columns, &GridSurface::resized, this, &CalendarGrid::arrange);
    for (GridSurface *surface : surfaces())
        connectInput(surface);
}

CalendarGrid::~CalendarGrid() {
    abandon();
    endRename();
}

std::array<GridSurface *, 2> CalendarGrid::surfaces() const {
    return {m_allDay, m_columns};
}

void CalendarGrid::takeStyle() {
    abandon();
    m_scene->style = GridStyle(this);
    m_columns->setFixedHeight(24 * m_scene->style.hourHeight + 1);
    arrange();
}

// Aligns the header and the all-day row with the columns, whose scroll bar takes some of the width.
void CalendarGrid::arrange() {
    m_scene->width = m_scroll->viewport()->width();
    const int lines = m_scene->layout.lines;
    m_allDay->resize(m_scene->width, m_allDay->heightFor(lines));
    m_allDayArea->setFixedHeight(lines <= mostBarLines
                                     ? m_allDay->heightFor(lines)
                                     : m_allDay->heightFor(mostBarLines) + m_scene->style.barHeight / 2);
    m_header->showScene();
    for (GridSurface *surface : surfaces())
        surface->showScene();
    if (m_rename)
        placeRename();
}

void CalendarGrid::paintEvent(QPaintEvent *event) {
    QPainter(this).fillRect(event->rect(), m_scene->style.hourLine);
}

void CalendarGrid::show(const QList<Occurrence> &occurrences, const QDate &first, Extent extent,
                        const QDate &today) {
    abandon();
    const std::optional<Occurrence> before = selected();
    const std::optional<GridPosition> formerPlace = m_scene->place;
    const QDate formerFirst = m_scene->first;
    setFocusTile(nullptr); // the tile may be deleted
    m_scene->occurrences = occurrences;
    m_scene->first = first;
    m_scene->days = int(extent);
    m_scene->today = today;
    m_scene->layout = layOut(occurrences, first, m_scene->days);
    m_scene->place = placeAfterChange(before, formerFirst);
    arrange();
    moveLine();
    showPlace();
    keepRename(before);
    const std::optional<Occurrence> after = selected();
    if (m_arrival || (isSameOne(before, after) && before->start != after->start))
        reveal();
    if (m_scene->place != formerPlace || formerFirst != first || before.has_value() != after.has_value())
        Q_EMIT selectionMoved();
}

// Keeps the selection. If the selected appointment is gone, keeps its place on the clock, which moves with
// the pages.
std::optional<GridPosition> CalendarGrid::placeAfterChange(const std::optional<Occurrence> &before,
                                                           const QDate &formerFirst) const {
    std::optional<GridPosition> place = m_arrival ? m_arrival : m_scene->place;
    if (!place)
        return std::nullopt;
    const int sameDate = m_scene->dayOf(formerFirst.addDays(place->day));
    if (m_arrival && sameDate >= 0)
        return arrivedAt(m_scene->layout, {sameDate, place->minute, -1, place->allDay});
    if (before) {
        if (const auto found = find(before->uid, before->instanceId))
            return found;
    }
    place->day = sameDate >= 0 ? sameDate : std::min(place->day, m_scene->days - 1);
    place->occurrence = -1;
    return place;
}

GridPosition CalendarGrid::placeOf(const GridPiece &piece) const {
    const int kept = m_scene->place ? m_scene->place->minute : firstPlace().minute;
    return {piece.firstDay, piece.allDay ? kept : piece.begin, piece.occurrence, piece.allDay};
}

std::optional<GridPosition> CalendarGrid::find(const QString &uid, const QString &instanceId) const {
    for (const GridPiece &piece : m_scene->layout.pieces) {
        const Occurrence &occurrence = m_scene->occurrences[piece.occurrence];
        if (occurrence.uid == uid && (instanceId.isEmpty() || occurrence.instanceId == instanceId))
            return placeOf(piece);
    }
    return std::nullopt;
}

std::optional<Occurrence> CalendarGrid::selected() const {
    if (!m_scene->place || m_scene->place->occurrence < 0)
        return std::nullopt;
    return m_scene->occurrences[m_scene->place->occurrence];
}

bool CalendarGrid::select(const QString &uid, const QString &instanceId) {
    const QPointer<CalendarGrid> self(this);
    commitRename(); // may change the shown appointments
    const std::optional<GridPosition> place = self ? find(uid, instanceId) : std::nullopt;
    if (place)
        setPlace(place, true);
    return place.has_value();
}

QDateTime CalendarGrid::selectedMoment() const {
    const std::optional<GridPosition> &place = m_scene->place;
    if (!place)
        return {};
    const QDate date = m_scene->first.addDays(place->day);
    if (place->allDay)
        return date.startOfDay();
    if (place->occurrence < 0)
        return momentAt({date, place->minute});
    const QDateTime start = m_scene->occurrences[place->occurrence].start.toLocalTime();
    return start.date() == date ? start : date.startOfDay();
}

EventTileView *CalendarGrid::selectedTile() const {
    if (!m_scene->place || m_scene->place->occurrence < 0)
        return nullptr;
    for (const GridSurface *surface : surfaces())
        for (EventTileView *tile : surface->tilesOf(m_scene->place->occurrence))
            return tile;
    return nullptr;
}

void CalendarGrid::setPlace(const std::optional<GridPosition> &place, bool toReveal) {
    if (m_scene->place == place)
        return;
    m_scene->place = place;
    showPlace();
    if (toReveal)
        reveal();
    Q_EMIT selectionMoved();
}

void CalendarGrid::showPlace() {
    for (GridSurface *surface : surfaces())
        surface->showPlace();
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
    const std::optional<GridPosition> &place = m_scene->place;
    const EventTileView *tile = selectedTile();
    if (!place || (!tile && place->allDay))
        return;
    QScrollArea *area = place->allDay ? m_allDayArea : m_scroll;
    const int top = tile ? tile->y() : m_columns->yOf(place->minute);
    const int height =
        tile ? std::min(tile->height(), area->viewport()->height()) : m_columns->yOf(slotMinutes);
    constexpr int margin = 4;
    // An area higher than the view shows its beginning.
    area->ensureVisible(0, top + height, 0, margin);
    area->ensureVisible(0, top, 0, margin);
}

void CalendarGrid::beginRename() {
    EventTileView *tile = selectedTile();
    if (!tile || m_rename)
        return;
    abandon();
    reveal();
    m_rename = new QLineEdit(tile->occurrence().summary, tile->parentWidget());
    m_rename->setAccessibleName(tr("Subject"));
    m_rename->selectAll();
    m_rename->installEventFilter(this);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        new QShortcut(key, m_rename, this, &CalendarGrid::commitRename, Qt::WidgetShortcut);
    new QShortcut(Qt::Key_Escape, m_rename, this, &CalendarGrid::endRename, Qt::WidgetShortcut);
    placeRename();
    m_rename->show();
    m_rename->setFocus(Qt::OtherFocusReason);
}

void CalendarGrid::placeRename() {
    const EventTileView *tile = selectedTile();
    if (!tile)
        return;
    const QWidget *surface = tile->parentWidget();
    const QSize size(std::max(leastRenameWidth, tile->width()), m_rename->sizeHint().height());
    m_rename->setGeometry(std::clamp(tile->x(), 0, std::max(0, surface->width() - size.width())),
                          std::clamp(tile->y(), 0, std::max(0, surface->height() - size.height())),
                          size.width(), size.height());
    m_rename->raise();
}

// Continues an open subject editor at the appointment's new place. If the appointment is hidden or its
// subject has changed, the editor ends.
void CalendarGrid::keepRename(const std::optional<Occurrence> &before) {
    if (!m_rename)
        return;
    const std::optional<Occurrence> now = selected();
    if (isSameOne(before, now) && before->summary == now->summary && before->allDay == now->allDay)
        placeRename();
    else
        endRename();
}

void CalendarGrid::commitRename() {
    if (!m_rename)
        return;
    const QString subject = m_rename->text();
    endRename();
    if (const std::optional<Occurrence> occurrence = selected(); occurrence && subject != occurrence->summary)
        Q_EMIT renamed(subject);
}

void CalendarGrid::endRename() {
    QLineEdit *rename = m_rename;
    m_rename.clear(); // what follows would commit
    if (!rename)
        return;
    // Done before hiding; otherwise the focus would move to the next control in the window.
    if (rename->hasFocus())
        setFocus(Qt::OtherFocusReason);
    rename->hide();
    rename->deleteLater();
}

void CalendarGrid::moveLine() {
    constexpr int secondsPerMinute = 60;
    constexpr int milliseconds = 1000;
    const QTime now = QTime::currentTime();
    m_columns->setNow(now);
    if (isVisible())
        m_minute.start((secondsPerMinute - now.second()) * milliseconds, this);
}

void CalendarGrid::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    moveLine();
    if (!std::exchange(m_scrolled, true))
        m_scroll->verticalScrollBar()->setValue(m_columns->yOf(firstWorkingMinute - aboveWorkingHours));
}

void CalendarGrid::abandon() {
    for (GridSurface *surface : surfaces())
        surface->abandon();
}

bool CalendarGrid::isDragging() const {
    return m_allDay->isDragging() || m_columns->isDragging();
}

void CalendarGrid::connectInput(GridSurface *surface) {
    connect(surface, &GridSurface::pointedAt, this, [this, surface](int occurrence, const ClockPlace &place) {
        pointAt(occurrence, surface->isAllDay(), place);
    });
    connect(surface, &GridSurface::activated, this, &CalendarGrid::activate);
    connect(surface, &GridSurface::dragged, this, &CalendarGrid::finishDrag);
    connect(surface, &GridSurface::reached, this, [this](int occurrence) {
        if (m_scene->place && m_scene->place->occurrence == occurrence)
            return;
        for (const GridPiece &piece : m_scene->layout.pieces)
            if (piece.occurrence == occurrence)
                return setPlace(placeOf(piece), false);
    });
}

void CalendarGrid::pointAt(int occurrence, bool allDay, const ClockPlace &place) {
    const int kept = m_scene->place ? m_scene->place->minute : newOnesMinute;
    setPlace(GridPosition{m_scene->dayOf(place.date), allDay ? kept : place.minute, occurrence, allDay},
             false);
}

void CalendarGrid::finishDrag(const Occurrence &occurrence, Grip grip, const TimeSpan &span) {
    if (!isSameOne(selected(), occurrence))
        return;
    if (grip == Grip::Body)
        Q_EMIT moved(span.start);
    else
        Q_EMIT resized(span.start, span.seconds());
}

// The present time, if it is shown.
GridPosition CalendarGrid::firstPlace() const {
    const int today = m_scene->dayOf(m_scene->today);
    if (today < 0)
        return {0, newOnesMinute, -1, false};
    return {today, clockPlaceOf(QDateTime::currentDateTime()).minute / slotMinutes * slotMinutes, -1, false};
}

void CalendarGrid::walk(int key) {
    static const QHash<int, GridStep> steps{{Qt::Key_Up, GridStep::Up},
                                            {Qt::Key_Down, GridStep::Down},
                                            {Qt::Key_Home, GridStep::First},
                                            {Qt::Key_End, GridStep::Last}};
    if (!m_scene->place)
        return setPlace(arrivedAt(m_scene->layout, firstPlace()), true);
    if (steps.contains(key))
        return setPlace(stepped(m_scene->layout, steps[key], *m_scene->place), true);
    const int direction = key == Qt::Key_Left ? -1 : 1;
    GridPosition beside = *m_scene->place;
    beside.day += direction;
    if (beside.day < 0 || beside.day >= m_scene->days)
        turnPage(beside, direction * m_scene->days);
    else
        setPlace(arrivedAt(m_scene->layout, beside), true);
}

// `to` may be outside of the shown days.
void CalendarGrid::turnPage(const GridPosition &to, int days) {
    const QPointer<CalendarGrid> self(this);
    m_arrival = to;
    Q_EMIT pageRequested(days);
    if (self)
        m_arrival.reset();
}

void CalendarGrid::scrollPage(int direction) {
    QScrollBar *bar = m_scroll->verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before + direction * (bar->pageStep() - m_scene->style.hourHeight));
    if (bar->value() != before)
        return;
    GridPosition place = m_scene->place.value_or(firstPlace());
    place.day += direction * m_scene->days;
    turnPage(place, direction * m_scene->days);
}

void CalendarGrid::activate() {
    if (!m_scene->place)
        return;
    if (m_scene->place->occurrence >= 0)
        Q_EMIT opened();
    else
        Q_EMIT newRequested(selectedMoment(), m_scene->place->allDay);
}

void CalendarGrid::askForMenuByKey() {
    reveal();
    const EventTileView *tile = selectedTile();
    const std::optional<GridPosition> &place = m_scene->place;
    const GridStyle &style = m_scene->style;
    if (tile)
        Q_EMIT menuRequested(
            tile->mapToGlobal(QPoint(tile->width() / 2, std::min(tile->height(), style.lineHeight))));
    else if (place && !place->allDay)
        Q_EMIT menuRequested(m_columns->mapToGlobal(
            QPoint(m_scene->left(place->day) + style.lineHeight, m_columns->yOf(place->minute))));
    else
        Q_EMIT menuRequested(mapToGlobal(rect().center()));
}

void CalendarGrid::keyPressEvent(QKeyEvent *event) {
    if (m_rename)
        return; // it does not use the key
    const int key = event->key();
    if (key == Qt::Key_Menu || (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        // Some desktops send both the key and the request; the request comes first.
        if (!std::exchange(m_menuByContext, false))
            askForMenuByKey();
        return;
    }
    if (key == Qt::Key_Escape && isDragging())
        return abandon();
    if (event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier) || !m_scene->first.isValid())
        return QWidget::keyPressEvent(event);
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        return walk(key);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return scrollPage(key == Qt::Key_PageUp ? -1 : 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return activate();
    default:
        QWidget::keyPressEvent(event);
    }
}

void CalendarGrid::contextMenuEvent(QContextMenuEvent *event) {
    if (event->reason() == QContextMenuEvent::Mouse) {
        Q_EMIT menuRequested(event->globalPos());
        return;
    }
    m_menuByContext = true;
    askForMenuByKey();
}

bool CalendarGrid::event(QEvent *event) {
    if (event->type() == QEvent::WindowDeactivate)
        abandon();
    return QWidget::event(event);
}

// The line edit itself reports the end only of editing in which something was typed.
bool CalendarGrid::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_rename && event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
        commitRename();
    return QWidget::eventFilter(watched, event);
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
    if (byTab && !m_scene->place && m_scene->first.isValid())
        setPlace(arrivedAt(m_scene->layout, firstPlace()), true);
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
