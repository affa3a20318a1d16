#include "standin/mailhost/windows/grid/EventTileView.h"

#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/LineDrawing.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QTextLayout>

namespace mailhost {

namespace {

constexpr qreal radius = 4;
constexpr int stripWidth = 4;
constexpr double softLight = 0.17; // share of the accent in a tile's ground
constexpr double softDark = 0.34;
constexpr double hoverMore = 0.09;
constexpr double dimmedOpacity = 0.38;
constexpr double ghostOpacity = 0.92;
constexpr int padding = 3; // around the texts
constexpr int markSize = 11;
constexpr int markGap = 3;
constexpr int leastText = 34; // a narrower text has no marks beside it, and is left out on a shared line
constexpr int between = 8;    // texts on one line

// Rounded at the appointment's ends; where the tile is cut off, the rounding is outside of it.
QRectF outline(QRectF rect, const GridPiece &piece) {
    if (!piece.startsHere)
        piece.allDay ? rect.setLeft(-radius) : rect.setTop(-radius);
    if (!piece.endsHere)
        piece.allDay ? rect.setRight(rect.right() + radius) : rect.setBottom(rect.bottom() + radius);
    return rect;
}

QString subjectOf(const Occurrence &occurrence) {
    const QString subject = occurrence.summary.simplified();
    return subject.isEmpty() ? QObject::tr("Untitled") : subject;
}

bool repeats(const Occurrence &occurrence) {
    return occurrence.isOccurrence || occurrence.isException;
}

QString spokenTimes(const Occurrence &occurrence) {
    const QDateTime start = occurrence.start.toLocalTime();
    const QDateTime end = occurrence.end.toLocalTime();
    const auto clock = [](const QDateTime &time) {
        return QLocale().toString(time.time(), QLocale::ShortFormat);
    };
    if (occurrence.allDay) {
        const QDate last = std::max(start.date(), end.date().addDays(-1));
        return last == start.date()
                   ? QObject::tr("%1, all day").arg(spokenDay(last))
                   : QObject::tr("%1 to %2, all day").arg(spokenDay(start.date()), spokenDay(last));
    }
    const QString to = end.date() == start.date() ? clock(end) : spokenDay(end.date()) + u' ' + clock(end);
    return QObject::tr("%1, %2 to %3").arg(spokenDay(start.date()), clock(start), to);
}

// "Subject, Tuesday 24 November, 10:00 to 10:30, location, repeats, online meeting".
QString spokenName(const Occurrence &occurrence) {
    QStringList parts{subjectOf(occurrence), spokenTimes(occurrence), occurrence.location.simplified()};
    if (repeats(occurrence))
        parts.append(QObject::tr("repeats"));
    if (occurrence.hasMeetingRecord)
        parts.append(QObject::tr("online meeting"));
    parts.removeAll(QString());
    return parts.join(u", "_s);
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

QString spokenDay(const QDate &date) {
    return QLocale().toString(date, u"dddd d MMMM"_s);
}

EventTileView::EventTileView(QWidget *surface, std::shared_ptr<const GridScene> scene)
    : QWidget(surface)
    , rt::Object(rt::classNamed(u"CCEventTileView"_s))
    , m_scene(std::move(scene)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::ClickFocus);
}

EventTileView *EventTileView::make(QWidget *surface, std::shared_ptr<const GridScene> scene, bool ghost) {
    auto *tile = new EventTileView(surface, std::move(scene));
    rt::send(tile, "initWithFrame:andController:andFillColor:isGhost:", QRectF(),
             rt::fromObject(tile->m_scene->controller.get()),
             rt::Value::fromValue(tile->m_scene->style.accent), ghost);
    return tile;
}

rt::Object *EventTileView::initWithFrame(const QRectF &frame, rt::Object *, const rt::Value &, bool isGhost) {
    setGeometry(frame.toAlignedRect());
    m_ghost = isGhost;
    return this;
}

void EventTileView::show(const Occurrence &occurrence, const GridPiece &piece, const QRect &frame) {
    m_occurrence = occurrence;
    m_piece = piece;
    if (const QString name = spokenName(occurrence); name != accessibleName())
        setAccessibleName(name);
    setGeometry(frame);
    QWidget::show();
    update();
}

void EventTileView::setState(const TileState &state) {
    if (m_state == state)
        return;
    m_state = state;
    update();
}

void EventTileView::focusInEvent(QFocusEvent *event) {
    QWidget::focusInEvent(event);
    Q_EMIT focused();
}

void EventTileView::drawBody(QPainter &painter) const {
    const GridStyle &style = m_scene->style;
    const double share = (style.dark ? softDark : softLight) + (m_state.hovered ? hoverMore : 0);
    const QRectF shape = outline(rect(), m_piece);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isFull() ? style.accent : GridStyle::mixed(style.accent, style.base, share));
    painter.drawRoundedRect(shape, radius, radius);
    if (!isFull() && (m_piece.startsHere || !m_piece.allDay)) {
        painter.setClipRect(QRectF(0, 0, stripWidth, height()));
        painter.setBrush(style.accent);
        painter.drawRoundedRect(shape, radius, radius);
        painter.setClipping(false);
    }
    if (hasFocus() && isFull()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(style.accentText, 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), radius - 1, radius - 1);
    }
}

// Start and end if they fit, else the start alone, else nothing, because a shortened time would be wrong.
QString EventTileView::timesWithin(int width) const {
    const GridStyle &style = m_scene->style;
    const QFontMetrics metrics(style.detail);
    if (m_piece.allDay)
        return {};
    for (const QString &times : {style.times(m_occurrence.start, m_occurrence.end),
                                 style.time(m_occurrence.start.toLocalTime().time())})
        if (metrics.horizontalAdvance(times) <= width)
            return times;
    return {};
}

// Draws the marks at the right of that area; returns the rest, in which there is room for a text.
QRect EventTileView::drawMarks(QPainter &painter, QRect area, const QColor &colour) const {
    const std::pair<QString, bool> marks[]{{u"online"_s, m_occurrence.hasMeetingRecord},
                                           {u"repeats"_s, repeats(m_occurrence)}};
    for (const auto &[name, isSet] : marks) {
        if (!isSet || area.width() - markSize - markGap < leastText)
            continue;
        const int top = area.top() + (m_scene->style.lineHeight - markSize) / 2;
        const QRect mark(area.right() + 1 - markSize, top, markSize, markSize);
        paintLineDrawing(painter, name, mark, colour);
        area.setRight(mark.left() - markGap - 1);
    }
    return area;
}

// Wraps the text over at most that number of lines and elides the last one. Returns their height.
int EventTileView::drawHead(QPainter &painter, const QRect &area, int lines, const QString &text) const {
    const int lineHeight = m_scene->style.lineHeight;
    QTextLayout layout(text, painter.font());
    QTextOption wrapped;
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapped);
    layout.beginLayout();
    int used = 0;
    for (QTextLine line; used < lines && (line = layout.createLine()).isValid(); ++used) {
        line.setLineWidth(area.width());
        const QString part = text.mid(line.textStart(), used + 1 == lines ? -1 : line.textLength());
        painter.drawText(QRect(area.left(), area.top() + used * lineHeight, area.width(), lineHeight),
                         Qt::AlignVCenter | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(part.trimmed(), Qt::ElideRight, area.width()));
    }
    layout.endLayout();
    return used * lineHeight;
}

void EventTileView::drawTexts(QPainter &painter) const {
    const GridStyle &style = m_scene->style;
    const QColor strong = isFull() ? style.accentText : style.text;
    const QColor faint = GridStyle::mixed(strong, style.accent, isFull() ? 0.9 : style.dark ? 0.78 : 0.72);
    const int lines = m_piece.allDay ? 1 : std::max(1, (height() - 1) / style.lineHeight);
    const int top = (height() - lines * style.lineHeight) / 2;
    QRect area = drawMarks(painter,
                           {stripWidth + padding, lines == 1 ? top : std::min(top, padding),
                            width() - stripWidth - 2 * padding, lines * style.lineHeight},
                           faint);
    QString head = subjectOf(m_occurrence);
    QStringList details{m_occurrence.location.simplified(), timesWithin(area.width())};
    if (m_ghost && !details.last().isEmpty()) // says where it goes
        details = {std::exchange(head, details.last())};
    details.removeAll(QString());
    if (lines > 1)
        details = details.mid(0, lines - 1);
    painter.setFont(style.subject);
    painter.setPen(strong);
    const auto advance = [lines, &area](int width, int height) { // to the next text
        lines == 1 ? area.setLeft(area.left() + width + between) : area.translate(0, height);
    };
    const int width = painter.fontMetrics().horizontalAdvance(head);
    advance(width, drawHead(painter, area, std::max(1, lines - int(details.size())), head));
    painter.setFont(style.detail);
    painter.setPen(faint);
    for (const QString &detail : details) {
        if (lines == 1 && area.width() < leastText)
            return;
        const QString shown = painter.fontMetrics().elidedText(detail, Qt::ElideRight, area.width());
        painter.drawText(area, Qt::AlignTop, shown);
        advance(painter.fontMetrics().horizontalAdvance(shown), style.lineHeight);
    }
}

void EventTileView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_state.dimmed ? dimmedOpacity : m_ghost ? ghostOpacity : 1.0);
    drawBody(painter);
    drawTexts(painter);
}

void defineTileClass() {
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeAccessible), true);
    addMethods(rt::defineClass(u"CCEventTileView"_s, rt::defineClass(u"NSView"_s)),
               {{"initWithFrame:andController:andFillColor:isGhost:", bind<&EventTileView::initWithFrame>,
                 "@@:ffff@@B"}});
}

} // namespace mailhost
