#include "standin/mailhost/windows/grid/DayColumns.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int gap = 2;       // between tiles, and to the day's right
constexpr int freeStrip = 6; // at the right of each day, for a double click beside a tile
constexpr int cursorMinutes = 30;
constexpr int nowLineHeight = 9;
constexpr int labelPadding = 8;

// Drawn above the tiles.
class NowLine : public QWidget {
public:
    NowLine(QWidget *parent)
        : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        hide();
    }
    void setColour(const QColor &colour) { m_colour = colour; }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.fillRect(QRect(nowLineHeight / 2, nowLineHeight / 2 - 1, width(), 2), m_colour);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_colour);
        painter.drawEllipse(QRectF(0, 0, nowLineHeight, nowLineHeight).adjusted(0.5, 0.5, -0.5, -0.5));
    }

private:
    QColor m_colour;
};

} // namespace

DayColumns::DayColumns(QWidget *parent)
    : GridSurface(parent)
    , m_nowLine(new NowLine(this)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

ClockPlace DayColumns::placeAt(const QPoint &point) const {
    const int minute = point.y() * minutesPerHour / style().hourHeight;
    return {contents().first.addDays(edges().dayAt(point.x())), std::clamp(minute, 0, minutesPerDay)};
}

void DayColumns::setNow(const QTime &now) {
    m_now = now;
    placed();
}

QList<GridSurface::TilePlan> DayColumns::plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                                              bool) const {
    QList<TilePlan> plans;
    for (const TimedPiece &piece : layout.pieces) {
        const int left = edges().left(piece.day) + gap;
        const int width = edges().left(piece.day + 1) - left - freeStrip;
        const int x = left + width * piece.column / piece.columns;
        const int right = left + width * (piece.column + piece.span) / piece.columns - gap - 1;
        const QRect frame(QPoint(x, yOf(piece.begin) + 1),
                          QPoint(std::max(x + 1, right), yOf(piece.end) - 1));
        plans.append({keyOf(occurrences[piece.occurrence], piece.startsHere ? 0 : piece.day + 1),
                      piece.occurrence, frame, TileEnds{piece.startsHere, piece.endsHere, false}});
    }
    return plans;
}

void DayColumns::placed() {
    const qint64 day = contents().first.daysTo(contents().today);
    const bool shown = m_now.isValid() && contents().today.isValid() && day >= 0 && day < contents().days;
    if (shown) {
        const int left = edges().left(int(day));
        const int minute = m_now.hour() * minutesPerHour + m_now.minute();
        static_cast<NowLine *>(m_nowLine)->setColour(style().now);
        m_nowLine->setGeometry(left - nowLineHeight / 2, yOf(minute) - nowLineHeight / 2,
                               edges().left(int(day) + 1) - left + nowLineHeight / 2, nowLineHeight);
        m_nowLine->raise();
    }
    m_nowLine->setVisible(shown);
}

void DayColumns::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.setClipRect(event->rect());
    painter.fillRect(event->rect(), style().base);
    paintDays(painter);
    paintScale(painter);
    paintCursor(painter);
}

void DayColumns::paintDays(QPainter &painter) const {
    const QList<Qt::DayOfWeek> working = QLocale().weekdays();
    const int bottom = yOf(minutesPerDay);
    for (int day = 0; day < contents().days; ++day) {
        const int left = edges().left(day);
        const int width = edges().left(day + 1) - left;
        const QDate date = contents().first.addDays(day);
        const bool isWorking = working.contains(Qt::DayOfWeek(date.dayOfWeek()));
        const int from = isWorking ? yOf(GridStyle::firstWorkingHour * minutesPerHour) : bottom;
        const int to = isWorking ? yOf(GridStyle::lastWorkingHour * minutesPerHour) : bottom;
        const bool today = date == contents().today;
        const QColor &off = today ? style().todayOffHours : style().offHours;
        painter.fillRect(left, 0, width, from, off);
        painter.fillRect(left, to, width, bottom - to, off);
        if (today)
            painter.fillRect(left, from, width, to - from, style().today);
    }
}

void DayColumns::paintScale(QPainter &painter) const {
    painter.setFont(style().detail);
    const int right = edges().width;
    for (int hour = 0; hour < 24; ++hour) {
        const int y = yOf(hour * minutesPerHour);
        if (hour > 0)
            painter.fillRect(edges().gutter - 6, y, right, 1, style().hourLine);
        painter.fillRect(edges().gutter, y + style().hourHeight / 2, right, 1, style().halfHourLine);
        if (hour == 0)
            continue;
        painter.setPen(style().faint);
        painter.drawText(
            QRect(0, y - style().lineHeight, edges().gutter - labelPadding, 2 * style().lineHeight),
            Qt::AlignRight | Qt::AlignVCenter, style().hourLabel(hour));
    }
    for (int day = 0; day < contents().days; ++day)
        painter.fillRect(edges().left(day), 0, 1, height(), style().hourLine);
}

void DayColumns::paintCursor(QPainter &painter) const {
    const qint64 day = contents().first.daysTo(cursorPlace().date);
    if (!cursorPlace().date.isValid() || day < 0 || day >= contents().days)
        return;
    const int left = edges().left(int(day)) + gap;
    const QRect slot(left, yOf(cursorPlace().minute) + 1, edges().left(int(day) + 1) - left - gap,
                     yOf(cursorMinutes) - 1);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(style().cursor);
    painter.setPen(QPen(style().accent, 1));
    painter.drawRoundedRect(QRectF(slot).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.restore();
}

} // namespace mailhost
