// The time scale: hours from top to bottom, days from left to right, timed appointments on it.
#pragma once

#include "standin/mailhost/windows/grid/GridSurface.h"

namespace mailhost {

class DayColumns : public GridSurface {
    Q_OBJECT
public:
    explicit DayColumns(QWidget *parent = nullptr);

    [[nodiscard]] bool isAllDay() const override { return false; }
    [[nodiscard]] ClockPlace placeAt(const QPoint &point) const override;
    [[nodiscard]] int yOf(int minute) const { return minute * style().hourHeight / minutesPerHour; }
    // Sets the position of the current-time line in today's column; hides it for an invalid time.
    void setNow(const QTime &now);

protected:
    QList<TilePlan> plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                         bool ghost) const override;
    void placed() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void paintScale(QPainter &painter) const;
    void paintDays(QPainter &painter) const;
    void paintCursor(QPainter &painter) const;

    QWidget *m_nowLine;
    QTime m_now;
};

} // namespace mailhost
