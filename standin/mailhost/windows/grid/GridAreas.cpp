#include "standin/mailhost/windows/grid/GridAreas.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int gap = 2;       // between tiles, and to the day's right
constexpr int freeStrip = 6; // at the right of each day, for a double click beside a tile
constexpr int cursorMinutes = 30;
constexpr int nowLineHeight = 2;
constexpr int labelPadding = 8;
constexpr int barMargin = 3; // above and below the bars

} // namespace

DayColumns::DayColumns(std::shared_ptr<const GridScene> scene, QWidget *grid)
    : GridSurface(std::move(scene), grid)
    , m_nowLine(new QWidget(this)) {
    m_nowLine->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_nowLine->setAutoFillBackground(true);
}

int DayColumns::minuteAt(int y) const {
    return std::clamp(y * minutesPerHour / scene().style.hourHeight, 0, minutesPerDay);
}

QRect DayColumns::frameOf(const GridPiece &piece) const {
    const int left = scene().left(piece.firstDay) + gap;
    const int width = scene().left(piece.firstDay + 1) - left - freeStrip;
    const int x = left + width * piece.column / piece.columns;
    const int right = left + width * (piece.column + piece.span) / piece.columns - gap - 1;
    return {QPoint(x, yOf(piece.begin) + 1), QPoint(std::max(x + 1, right), yOf(piece.end) - 1)};
}

void DayColumns::showScene() {
    GridSurface::showScene();
    setNow(m_now);
}

void DayColumns::setNow(const QTime &now) {
    m_now = now;
    const int day = scene().dayOf(scene().today);
    m_nowLine->setVisible(day >= 0);
    const int left = scene().left(day);
    m_nowLine->setGeometry(left, yOf(now.hour() * minutesPerHour + now.minute()) - nowLineHeight / 2,
                           scene().left(day + 1) - left, nowLineHeight);
    m_nowLine->setPalette(scene().style.now);
    m_nowLine->raise();
}

void DayColumns::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), scene().style.base);
    paintDays(painter);
    paintScale(painter);
    paintCursor(painter);
}

void DayColumns::paintDays(QPainter &painter) const {
    const QList<Qt::DayOfWeek> working = QLocale().weekdays();
    for (int day = 0; day < scene().days; ++day) {
        const QRect column(QPoint(scene().left(day), 0), QPoint(scene().left(day + 1) - 1, height()));
        const QDate date = scene().first.addDays(day);
        const bool today = date == scene().today;
        painter.fillRect(column, today ? scene().style.todayOffHours : scene().style.offHours);
        if (!working.contains(Qt::DayOfWeek(date.dayOfWeek())))
            continue;
        const int from = yOf(firstWorkingMinute);
        const int to = yOf(lastWorkingMinute);
        painter.fillRect(column.left(), from, column.width(), to - from,
                         today ? scene().style.today : scene().style.base);
    }
}

void DayColumns::paintScale(QPainter &painter) const {
    const GridStyle &style = scene().style;
    painter.setFont(style.detail);
    painter.setPen(style.faint);
    for (int hour = 0; hour < 24; ++hour) {
        const int y = yOf(hour * minutesPerHour);
        painter.fillRect(style.gutter, y + style.hourHeight / 2, width(), 1, style.halfHourLine);
        if (hour == 0)
            continue;
        painter.fillRect(style.gutter - 6, y, width(), 1, style.hourLine);
        painter.drawText(QRect(0, y - style.lineHeight, style.gutter - labelPadding, 2 * style.lineHeight),
                         Qt::AlignRight | Qt::AlignVCenter, style.hourLabel(hour));
    }
    for (int day = 0; day < scene().days; ++day)
        painter.fillRect(scene().left(day), 0, 1, height(), style.hourLine);
}

void DayColumns::paintCursor(QPainter &painter) const {
    const int day = cursorDay();
    if (day < 0)
        return;
    const int left = scene().left(day) + gap;
    const QRectF slot(left, yOf(scene().place->minute) + 1, scene().left(day + 1) - left - gap,
                      yOf(cursorMinutes) - 1);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(scene().style.cursor);
    painter.setPen(scene().style.accent);
    painter.drawRoundedRect(slot.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

int AllDayRow::heightFor(int lines) const {
    return 2 * barMargin + std::max(1, lines) * (scene().style.barHeight + gap) - gap;
}

QRect AllDayRow::frameOf(const GridPiece &piece) const {
    const int height = scene().style.barHeight;
    const int left = scene().left(piece.firstDay) + (piece.startsHere ? gap : 1);
    const int right = scene().left(piece.lastDay + 1) - (piece.endsHere ? gap : 0);
    return {left, barMargin + piece.column * (height + gap), right - left, height};
}

void AllDayRow::paintEvent(QPaintEvent *event) {
    const GridStyle &style = scene().style;
    QPainter painter(this);
    painter.fillRect(event->rect(), style.base);
    painter.setFont(style.detail);
    painter.setPen(style.faint);
    painter.drawText(QRect(0, barMargin, style.gutter - labelPadding, style.barHeight),
                     Qt::AlignRight | Qt::AlignVCenter, tr("all day"));
    for (int day = 0; day < scene().days; ++day) {
        const int left = scene().left(day);
        const QRect column(left, 0, scene().left(day + 1) - left, height());
        if (day == scene().dayOf(scene().today))
            painter.fillRect(column, style.today);
        if (day == cursorDay())
            painter.fillRect(column.adjusted(gap, 1, -1, -1), style.cursor);
        painter.fillRect(left, 0, 1, height(), style.hourLine);
    }
}

} // namespace mailhost
