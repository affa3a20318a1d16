// The row of the all-day appointments: bars over the days that they take.
#pragma once

#include "standin/mailhost/windows/grid/GridSurface.h"

namespace mailhost {

class AllDayRow : public GridSurface {
    Q_OBJECT
public:
    explicit AllDayRow(QWidget *parent = nullptr);

    [[nodiscard]] bool isAllDay() const override { return true; }
    [[nodiscard]] ClockPlace placeAt(const QPoint &point) const override;
    // The height for that number of lines of bars.
    [[nodiscard]] int heightFor(int lines) const;

protected:
    QList<TilePlan> plan(const GridLayout &layout, const QList<Occurrence> &occurrences,
                         bool ghost) const override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace mailhost
