#include "standin/mailhost/windows/grid/DayColumns.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int gap = 2;             // between tiles, and to the day's right
constexpr int freeStrip = 6;       // at the right of each day, for a double click beside a tile
constexpr int leastTileWidth = 40; // narrower ones are folded away
constexpr int foldWidth = 26;
constexpr int cursorMinutes = 30;
constexpr int nowLineHeight = 9;
constexpr int labelPadding = 8;

// Lies over the tiles.
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

int DayColumns::yOf(int minute) const {
    return minute * style().hourHeight / minutesPerHour;
}

ClockPlace DayColumns::placeAt(const QPoint &point) const {
    const int minute = point.y() * minutesPerHour / style().hourHeight;
    return {contents().first.addDays(edges().dayAt(point.x())), std::clamp(minute, 0, minutesPerDay)};
}

void DayColumns::setNow(const QTime &now) {
    m_now = now;
    placed();
}

int DayColumns::columnsThatFit(const TimedPiece &piece) const {
    const int width = edges().left(piece.day + 1) - edges().left(piece.day) - freeStrip;
    if (piece.columns * leastTileWidth <= width)
        return piece.columns;
    return std::max(1, (width - foldWidth) / leastTileWidth);
}

QRect DayColumns::frameOf(const TimedPiece &piece, int columns) const {
    const int left = edges().left(piece.day) + gap;
    int width = edges().left(piece.day + 1) - left - freeStrip;
    if (columns < piece.columns)
        width -= foldWidth;
    const int column = std::min(piece.column, columns - 1);
    const int behind = std::min(columns, column + piece.span);
    const int x = left + width * column / columns;
    // Folded ones take the place of the mark too.
    const int right = piece.column >= columns ? left + width + foldWidth : left + width * behind / columns;
    const int top = yOf(piece.begin) + 1;
    return QRect(QPoint(x, top), QPoint(std::max(x + 1, right - gap - 1), yOf(piece.end) - 1));
}

void DayColumns::fold(const TimedPiece &piece) {
    const int right = edges().left(piece.day + 1) - freeStrip - gap;
    const QRect rect(right - foldWidth + gap, yOf(piece.begin) + 1, foldWidth - gap, style().lineHeight);
    const bool joins =
        !m_folds.isEmpty() && m_folds.last().rect.left() == rect.left() && m_folds.last().until > piece.begin;
    if (!joins)
        m_folds.append({rect, piece.end, {}});
    m_folds.last().until = std::max(m_folds.last().until, piece.end);
    m_folds.last().occurrences.append(piece.occurrence);
}

QList<GridSurface::TilePlan> DayColumns::plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                                              bool ghost) {
    QList<TilePlan> plans;
    plans.reserve(layout.pieces.size());
    if (!ghost)
        m_folds.clear();
    for (const TimedPiece &piece : layout.pieces) {
        const int columns = columnsThatFit(piece);
        const bool folded = piece.column >= columns;
        const Occurrence &occurrence = occurrences[piece.occurrence];
        plans.append({keyOf(occurrence, piece.startsHere ? 0 : piece.day + 1), piece.occurrence,
                      frameOf(piece, columns), TileEnds{piece.startsHere, piece.endsHere, false}, folded});
        if (folded)
            fold(piece);
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

QList<int> DayColumns::foldedAt(const QPoint &point) const {
    for (const Fold &fold : m_folds)
        if (fold.rect.contains(point))
            return fold.occurrences;
    return {};
}

void DayColumns::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.setClipRect(event->rect());
    painter.fillRect(event->rect(), style().base);
    paintDays(painter);
    paintScale(painter);
    paintCursor(painter);
    paintFolds(painter);
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

void DayColumns::paintFolds(QPainter &painter) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(style().detail);
    for (const Fold &fold : m_folds) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(GridStyle::mixed(style().text, style().base, 0.14));
        painter.drawRoundedRect(fold.rect, 4, 4);
        painter.setPen(style().text);
        const qsizetype count = fold.occurrences.size();
        painter.drawText(fold.rect, Qt::AlignCenter, count > 99 ? tr("…") : tr("+%1").arg(count));
    }
    painter.restore();
}

} // namespace mailhost
