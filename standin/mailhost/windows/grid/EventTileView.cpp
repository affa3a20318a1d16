#include "standin/mailhost/windows/grid/EventTileView.h"

#include "standin/mailhost/model/Bind.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace mailhost {

namespace {

constexpr qreal radius = 4;
constexpr qreal stripWidth = 4;
constexpr double softLight = 0.17; // share of the accent in a tile's ground
constexpr double softDark = 0.34;
constexpr double hoverMore = 0.09;
constexpr double dimmedOpacity = 0.38;
constexpr double ghostOpacity = 0.92;

// Rounded at the appointment's ends; where the tile is cut off, the rounding is outside of it.
QRectF outline(QRectF rect, const TileEnds &ends) {
    if (!ends.start)
        ends.allDay ? rect.setLeft(-radius) : rect.setTop(-radius);
    if (!ends.end)
        ends.allDay ? rect.setRight(rect.right() + radius) : rect.setBottom(rect.bottom() + radius);
    return rect;
}

// An item of a list, which can be selected and pressed. Everything else is Qt's own.
class AccessibleTile : public QAccessibleWidget {
public:
    explicit AccessibleTile(EventTileView *tile)
        : QAccessibleWidget(tile, QAccessible::ListItem) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = tile()->state().selected;
        return state;
    }
    QStringList actionNames() const override { return QAccessibleWidget::actionNames() << pressAction(); }
    void doAction(const QString &name) override {
        if (name == pressAction())
            Q_EMIT tile()->pressed();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] EventTileView *tile() const { return static_cast<EventTileView *>(object()); }
};

QAccessibleInterface *makeAccessible(const QString &, QObject *object) {
    auto *tile = qobject_cast<EventTileView *>(object);
    return tile ? new AccessibleTile(tile) : nullptr;
}

} // namespace

EventTileView::EventTileView(QWidget *surface)
    : QWidget(surface)
    , rt::Object(rt::classNamed(u"CCEventTileView"_s)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::ClickFocus);
}

EventTileView *EventTileView::make(QWidget *surface, const QRectF &frame, rt::Object *controller,
                                   const QColor &fill, bool ghost) {
    auto *tile = new EventTileView(surface);
    rt::send(tile, "initWithFrame:andController:andFillColor:isGhost:", frame, rt::fromObject(controller),
             rt::Value::fromValue(fill), ghost);
    return tile;
}

rt::Object *EventTileView::initWithFrame(const QRectF &frame, rt::Object *, const rt::Value &fillColor,
                                         bool isGhost) {
    setGeometry(frame.toAlignedRect());
    m_fill = fillColor.value<QColor>();
    m_ghost = isGhost;
    return this;
}

void EventTileView::setStyle(std::shared_ptr<const GridStyle> style) {
    if (m_style == style)
        return;
    m_style = std::move(style);
    m_fill = m_style->accent;
    m_texts.reset();
    update();
}

void EventTileView::setOccurrence(const Occurrence &occurrence, const TileEnds &ends) {
    m_occurrence = occurrence;
    m_ends = ends;
    if (const QString name = spokenName(occurrence); name != accessibleName())
        setAccessibleName(name);
    m_texts.reset();
    update();
}

void EventTileView::setState(const TileState &state) {
    if (m_state == state)
        return;
    m_state = state;
    update();
}

const TileTexts &EventTileView::texts() const {
    if (!m_texts)
        m_texts.emplace(m_occurrence, m_ends, size(), *m_style, m_ghost);
    return *m_texts;
}

void EventTileView::focusInEvent(QFocusEvent *event) {
    QWidget::focusInEvent(event);
    Q_EMIT focused();
}

void EventTileView::drawBody(QPainter &painter) const {
    const bool full = isFull();
    const double share = (m_style->dark ? softDark : softLight) + (m_state.hovered ? hoverMore : 0);
    const QColor fill = full ? m_fill : GridStyle::mixed(m_fill, m_style->base, share);
    const QRectF shape = outline(rect(), m_ends);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(shape, radius, radius);
    if (!full && (m_ends.start || !m_ends.allDay)) {
        painter.save();
        painter.setClipRect(QRectF(0, 0, stripWidth, height()));
        painter.setBrush(m_fill);
        painter.drawRoundedRect(shape, radius, radius);
        painter.restore();
    }
    if (hasFocus() && full) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(m_style->accentText, 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), radius - 1, radius - 1);
    }
}

void EventTileView::paintEvent(QPaintEvent *) {
    if (!m_style)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_state.dimmed ? dimmedOpacity : m_ghost ? ghostOpacity : 1.0);
    drawBody(painter);
    const bool full = isFull();
    const QColor text = full ? m_style->accentText : m_style->text;
    const QColor faint = full ? GridStyle::mixed(m_style->accentText, m_fill, 0.9)
                              : GridStyle::mixed(m_style->text, m_fill, m_style->dark ? 0.78 : 0.72);
    texts().draw(painter, *m_style, text, faint);
}

void defineTileClass() {
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeAccessible), true);
    addMethods(rt::defineClass(u"CCEventTileView"_s, rt::defineClass(u"NSView"_s)),
               {{"initWithFrame:andController:andFillColor:isGhost:", bind<&EventTileView::initWithFrame>,
                 "@@:ffff@@B"}});
}

} // namespace mailhost
