#include "standin/mailhost/windows/grid/GridSurface.h"

#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int mostSpareTiles = 64;
constexpr int widestGrip = 6; // at a tile's edge; a quarter of a small one
constexpr int leastGrip = 2;

Grip gripAt(int position, int length, bool begin, bool end) {
    const int grip = std::clamp(length / 4, leastGrip, widestGrip);
    if (end && position >= length - grip)
        return Grip::End;
    return begin && position < grip ? Grip::Begin : Grip::Body;
}

} // namespace

int DayEdges::dayAt(int x) const {
    for (int day = 1; day < days; ++day)
        if (x < left(day))
            return day - 1;
    return days - 1;
}

QList<EventTileView *> TilePool::assign(const QStringList &keys,
                                        const std::shared_ptr<const GridStyle> &style) {
    QHash<QString, QPointer<EventTileView>> former;
    former.swap(m_used);
    QList<EventTileView *> tiles;
    tiles.reserve(keys.size());
    for (const QString &key : keys)
        tiles.append(former.take(key));
    for (const QPointer<EventTileView> &left : std::as_const(former))
        m_spare.append(left);
    for (int i = 0; i < keys.size(); ++i) {
        while (!tiles[i] && !m_spare.isEmpty())
            tiles[i] = m_spare.takeLast();
        if (!tiles[i])
            tiles[i] = EventTileView::make(m_surface, QRectF(), m_controller.get(), style->accent, m_ghosts);
        tiles[i]->setStyle(style);
        // A damaged file may have two of one name.
        m_used.insert(m_used.contains(keys[i]) ? keys[i] + u'\n' + QString::number(i) : keys[i], tiles[i]);
    }
    while (m_spare.size() > mostSpareTiles)
        delete m_spare.takeLast().data();
    for (const QPointer<EventTileView> &spare : std::as_const(m_spare))
        if (spare)
            spare->hide();
    return tiles;
}

GridSurface::GridSurface(QWidget *parent)
    : QWidget(parent)
    , m_contents(std::make_shared<GridContents>())
    , m_tiles(this, false)
    , m_ghostTiles(this, true) {
    setMouseTracking(true);
}

void GridSurface::setStyle(std::shared_ptr<const GridStyle> style) {
    m_style = std::move(style);
    place();
    update();
}

void GridSurface::setController(rt::Object *controller) {
    m_tiles.setController(controller);
    m_ghostTiles.setController(controller);
}

void GridSurface::setContents(std::shared_ptr<const GridContents> contents) {
    m_contents = std::move(contents);
    m_selected = -1;
    m_cursor = {};
    setHovered(nullptr);
    hideGhost();
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

void GridSurface::place() {
    if (!m_style)
        return;
    const QList<TilePlan> plans = plan(m_contents->layout, m_contents->occurrences, false);
    QStringList keys;
    keys.reserve(plans.size());
    for (const TilePlan &plan : plans)
        keys.append(plan.key);
    const QList<EventTileView *> tiles = m_tiles.assign(keys, m_style);
    m_placed.clear();
    m_placed.reserve(plans.size());
    for (int i = 0; i < plans.size(); ++i) {
        tiles[i]->setOccurrence(m_contents->occurrences[plans[i].occurrence], plans[i].ends);
        tiles[i]->setGeometry(plans[i].frame);
        m_placed.append({tiles[i], plans[i].occurrence, plans[i].folded});
        showState(m_placed.last());
    }
    placed();
}

void GridSurface::showState(const Placed &placed) {
    if (!placed.tile)
        return;
    const bool selected = placed.occurrence == m_selected;
    placed.tile->setState(
        {selected, selected && m_focused, placed.tile == m_hovered, placed.occurrence == m_dimmed});
    const bool shown = !placed.folded || selected;
    if (placed.tile->isHidden() == shown)
        placed.tile->setVisible(shown);
    if (placed.folded && selected)
        placed.tile->raise();
}

GridSurface::Hit GridSurface::hitAt(const QPoint &point) const {
    // What is folded away lies on top while it is selected.
    Hit hit;
    bool found = false;
    for (const Placed &placed : m_placed) {
        if (!placed.tile || placed.tile->isHidden() || !placed.tile->geometry().contains(point))
            continue;
        if (found && !placed.folded)
            continue;
        hit.tile = placed.tile;
        found = true;
    }
    if (!hit.tile)
        return hit;
    const QPoint inside = point - hit.tile->pos();
    const TileEnds &ends = hit.tile->ends();
    hit.grip = ends.allDay ? gripAt(inside.x(), hit.tile->width(), ends.start, ends.end)
                           : gripAt(inside.y(), hit.tile->height(), ends.start, ends.end);
    hit.onSubject = hit.tile->subjectRect().contains(inside);
    return hit;
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

void GridSurface::setSelected(int occurrence, bool focused) {
    if (m_selected == occurrence && m_focused == focused)
        return;
    m_selected = occurrence;
    m_focused = focused;
    for (const Placed &placed : std::as_const(m_placed))
        showState(placed);
    placed();
}

void GridSurface::setHovered(EventTileView *tile) {
    if (m_hovered == tile)
        return;
    for (EventTileView *changed : {m_hovered.data(), tile}) {
        if (!changed)
            continue;
        TileState state = changed->state();
        state.hovered = changed == tile;
        changed->setState(state);
    }
    m_hovered = tile;
}

void GridSurface::showGhost(int original, const Occurrence &dragged) {
    const QList<Occurrence> one{dragged};
    const QList<TilePlan> plans = plan(layOut(one, m_contents->first, m_contents->days), one, true);
    QStringList keys;
    for (const TilePlan &plan : plans)
        keys.append(plan.key);
    const QList<EventTileView *> tiles = m_ghostTiles.assign(keys, m_style);
    m_ghosts.clear();
    for (int i = 0; i < plans.size(); ++i) {
        tiles[i]->setOccurrence(dragged, plans[i].ends);
        tiles[i]->setGeometry(plans[i].frame);
        tiles[i]->show();
        tiles[i]->raise();
        m_ghosts.append(tiles[i]);
    }
    if (m_dimmed == original)
        return;
    m_dimmed = original;
    for (const Placed &placed : std::as_const(m_placed))
        showState(placed);
}

void GridSurface::hideGhost() {
    for (const QPointer<EventTileView> &ghost : std::as_const(m_ghosts))
        if (ghost)
            ghost->hide();
    m_ghosts.clear();
    if (m_dimmed < 0)
        return;
    m_dimmed = -1;
    for (const Placed &placed : std::as_const(m_placed))
        showState(placed);
}

QList<EventTileView *> GridSurface::ghosts() const {
    QList<EventTileView *> tiles;
    for (const QPointer<EventTileView> &ghost : m_ghosts)
        if (ghost)
            tiles.append(ghost);
    return tiles;
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
    // As rich text it would be taken for markup.
    QToolTip::showText(help->globalPos(), lines.join(u'\n').toHtmlEscaped().replace(u'\n', u"<br>"_s), this);
    return true;
}

void GridSurface::resizeEvent(QResizeEvent *) {
    Q_EMIT resized();
}

} // namespace mailhost
