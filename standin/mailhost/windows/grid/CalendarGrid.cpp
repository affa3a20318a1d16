#include "standin/mailhost/windows/grid/CalendarGrid.h"

#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/grid/AllDayRow.h"
#include "standin/mailhost/windows/grid/DayColumns.h"
#include "standin/mailhost/windows/grid/GridAccessibility.h"
#include "standin/mailhost/windows/grid/GridGestures.h"
#include "standin/mailhost/windows/grid/GridHeader.h"
#include "standin/mailhost/windows/grid/TileRename.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int mostBarLines = 5; // of the all-day row before it scrolls
constexpr int leastRenameWidth = 150;
constexpr int aboveWorkingHours = 20; // minutes that are seen above them at first

QScrollArea *makeArea(QWidget *content) {
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setBackgroundRole(QPalette::Base);
    area->setWidget(content);
    return area;
}

} // namespace

CalendarGrid::CalendarGrid(QWidget *parent)
    : QWidget(parent)
    , m_contents(std::make_shared<GridContents>())
    , m_header(new GridHeader(this))
    , m_rule(new QWidget(this))
    , m_allDay(new AllDayRow)
    , m_columns(new DayColumns)
    , m_gestures(new GridGestures(this))
    , m_now([] { return QDateTime::currentDateTime(); }) {
    installGridAccessibility();
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
    connectGestures();
}

CalendarGrid::~CalendarGrid() {
    m_gestures->abandon();
    if (m_rename)
        m_rename->abandon();
}

void CalendarGrid::setController(rt::Object *controller) {
    m_allDay->setController(controller);
    m_columns->setController(controller);
}

void CalendarGrid::setClock(std::function<QDateTime()> now) {
    m_now = std::move(now);
    moveLine();
}

void CalendarGrid::takeStyle() {
    m_gestures->abandon();
    m_style = std::make_shared<GridStyle>(this);
    m_header->setStyle(m_style);
    m_allDay->setStyle(m_style);
    m_columns->setStyle(m_style);
    m_columns->setFixedHeight(24 * m_style->hourHeight + 1);
    QPalette rule;
    rule.setColor(QPalette::Window, m_style->hourLine);
    m_rule->setPalette(rule);
    arrange();
}

// The header and the all-day row stand over the columns, whose scroll bar takes some of the width.
void CalendarGrid::arrange() {
    const DayEdges edges{m_style->gutter, m_scroll->viewport()->width(), m_contents->days};
    m_header->setEdges(edges);
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
    m_gestures->abandon();
    const std::optional<Occurrence> before = selected();
    const std::optional<GridPosition> formerPlace = m_place;
    const QDate formerFirst = m_contents->first;
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
    m_header->setDays(first, today);
    m_allDay->setContents(m_contents);
    m_columns->setContents(m_contents);
    arrange();
    moveLine();
    showPlace();
    keepRename(before);
    const std::optional<Occurrence> after = selected();
    const bool sameOne =
        before && after && before->uid == after->uid && before->instanceId == after->instanceId;
    if (arrived || (sameOne && before->start != after->start))
        reveal();
    if (arrived || before.has_value() != after.has_value() || (before && !sameOne))
        announce(this, selectedTile());
    if (m_place != formerPlace || formerFirst != first || before.has_value() != after.has_value())
        Q_EMIT selectionMoved();
}

// What was selected stays so. Where it is gone, the place on the clock stays, and turns with the pages.
std::optional<GridPosition> CalendarGrid::placeAfterChange(const std::optional<Occurrence> &before,
                                                           const QDate &formerFirst) const {
    const int days = m_contents->days;
    const auto isShown = [days](qint64 day) { return day >= 0 && day < days; };
    if (m_arrival && isShown(m_contents->first.daysTo(m_arrival->date)))
        return m_walk.arriveAt(int(m_contents->first.daysTo(m_arrival->date)), m_arrival->minute,
                               m_arrivesAllDay);
    if (before) {
        std::optional<GridPosition> place = placeOf(indexOf(before->uid, before->instanceId));
        if (place)
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

int CalendarGrid::indexOf(const QString &uid, const QString &instanceId) const {
    for (int i = 0; i < m_contents->occurrences.size(); ++i)
        if (m_contents->occurrences[i].uid == uid && m_contents->occurrences[i].instanceId == instanceId)
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

std::optional<Occurrence> CalendarGrid::occurrenceAt(const std::optional<GridPosition> &place) const {
    if (!place || place->occurrence < 0)
        return std::nullopt;
    return m_contents->occurrences[place->occurrence];
}

std::optional<Occurrence> CalendarGrid::selected() const {
    return occurrenceAt(m_place);
}

bool CalendarGrid::select(const QString &uid, const QString &instanceId) {
    const QPointer<CalendarGrid> self(this);
    if (m_rename)
        m_rename->commit(); // may change what is shown
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
    const std::optional<Occurrence> occurrence = occurrenceAt(place);
    if (place.allDay || (occurrence && occurrence->start.toLocalTime().date() != date))
        return date.startOfDay();
    return occurrence ? occurrence->start.toLocalTime() : momentAt({date, place.minute});
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
    announce(this, selectedTile());
    Q_EMIT selectionMoved();
}

void CalendarGrid::showPlace() {
    const int occurrence = m_place ? m_place->occurrence : -1;
    const bool focused = hasFocus();
    ClockPlace cursor;
    if (m_place && occurrence < 0)
        cursor = {m_contents->first.addDays(m_place->day), m_place->minute};
    for (GridSurface *surface :
         {static_cast<GridSurface *>(m_allDay), static_cast<GridSurface *>(m_columns)}) {
        const bool here = m_place && surface->isAllDay() == m_place->allDay;
        surface->setSelected(here ? occurrence : -1, focused);
        surface->setCursorPlace(here ? cursor : ClockPlace());
    }
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
    // What is higher than the view shows its begin.
    area->ensureVisible(0, top + height, 0, margin);
    area->ensureVisible(0, top, 0, margin);
}

void CalendarGrid::beginRename() {
    EventTileView *tile = selectedTile();
    if (!tile || (m_rename && !m_rename->isOver()))
        return;
    m_gestures->abandon();
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

// Whoever types a subject goes on where the appointment stands now; where another subject or none is shown
// there is nothing to go on with.
void CalendarGrid::keepRename(const std::optional<Occurrence> &before) {
    if (!m_rename)
        return;
    const std::optional<Occurrence> now = selected();
    const bool same = before && now && before->uid == now->uid && before->instanceId == now->instanceId &&
                      before->summary == now->summary &&
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

} // namespace mailhost
