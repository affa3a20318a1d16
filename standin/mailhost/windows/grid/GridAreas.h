// The two areas of the calendar grid.
#pragma once

#include "standin/mailhost/windows/grid/GridSurface.h"

namespace mailhost {

// The time scale: hours from top to bottom, days from left to right, timed appointments on it.
class DayColumns : public GridSurface {
    Q_OBJECT
public:
    DayColumns(std::shared_ptr<const GridScene> scene, QWidget *grid);

    [[nodiscard]] bool isAllDay() const override { return false; }
    void showScene() override;
    [[nodiscard]] int yOf(int minute) const { return minute * scene().style.hourHeight / minutesPerHour; }
    // Moves the line of the current time, which is in today's column, above the tiles.
    void setNow(const QTime &now);

protected:
    [[nodiscard]] int minuteAt(int y) const override;
    [[nodiscard]] QRect frameOf(const GridPiece &piece) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    void paintDays(QPainter &painter) const;
    void paintScale(QPainter &painter) const;
    void paintCursor(QPainter &painter) const;

    QWidget *m_nowLine;
    QTime m_now;
};

// The row of the all-day appointments: bars over the days that they take.
class AllDayRow : public GridSurface {
    Q_OBJECT
public:
    using GridSurface::GridSurface;

    [[nodiscard]] bool isAllDay() const override { return true; }
    // The height for that number of lines of bars.
    [[nodiscard]] int heightFor(int lines) const;

protected:
    [[nodiscard]] int minuteAt(int) const override { return 0; }
    [[nodiscard]] QRect frameOf(const GridPiece &piece) const override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace mailhost
