#include "standin/mailhost/windows/grid/AllDayRow.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int margin = 3;
constexpr int gap = 2;
constexpr int labelPadding = 8;

} // namespace

AllDayRow::AllDayRow(QWidget *parent)
    : GridSurface(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

ClockPlace AllDayRow::placeAt(const QPoint &point) const {
    return {contents().first.addDays(edges().dayAt(point.x())), 0};
}

int AllDayRow::heightFor(int lines) const {
    return 2 * margin + std::max(1, lines) * (style().barHeight + gap) - gap;
}

QList<GridSurface::TilePlan> AllDayRow::plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                                             bool ghost) const {
    QList<TilePlan> plans;
    for (const DayBar &bar : layout.bars) {
        const Occurrence &occurrence = occurrences[bar.occurrence];
        int line = bar.line;
        if (ghost) // beside the bar that is being dragged
            for (const DayBar &original : contents().layout.bars)
                if (contents().occurrences[original.occurrence].uid == occurrence.uid &&
                    contents().occurrences[original.occurrence].instanceId == occurrence.instanceId)
                    line = original.line;
        const int left = edges().left(bar.firstDay) + (bar.startsHere ? gap : 1);
        const int right = edges().left(bar.lastDay + 1) - (bar.endsHere ? gap : 0);
        const QRect frame(left, margin + line * (style().barHeight + gap), right - left, style().barHeight);
        plans.append(
            {keyOf(occurrence, 0), bar.occurrence, frame, TileEnds{bar.startsHere, bar.endsHere, true}});
    }
    return plans;
}

void AllDayRow::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), style().base);
    painter.setFont(style().detail);
    painter.setPen(style().faint);
    painter.drawText(QRect(0, margin, edges().gutter - labelPadding, style().barHeight),
                     Qt::AlignRight | Qt::AlignVCenter, tr("all day"));
    const qint64 cursor = contents().first.daysTo(cursorPlace().date);
    for (int day = 0; day < contents().days; ++day) {
        const int left = edges().left(day);
        const QRect column(left, 0, edges().left(day + 1) - left, height());
        if (contents().first.addDays(day) == contents().today)
            painter.fillRect(column, style().today);
        if (cursorPlace().date.isValid() && day == cursor)
            painter.fillRect(column.adjusted(gap, 1, -1, -1), style().cursor);
        painter.fillRect(left, 0, 1, height(), style().hourLine);
    }
}

} // namespace mailhost
