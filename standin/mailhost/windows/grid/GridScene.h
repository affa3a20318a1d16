// What the parts of the calendar grid show together: the days, their appointments and the selected place.
#pragma once

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/windows/grid/GridNavigator.h"
#include "standin/mailhost/windows/grid/GridStyle.h"

#include <memory>
#include <optional>

namespace mailhost {

// The days have equal widths, after the gutter of the hour labels.
struct GridScene {
    explicit GridScene(const QWidget *widget)
        : style(widget) {}

    GridStyle style;
    QList<Occurrence> occurrences;
    GridLayout layout;
    QDate first;
    int days = 7;
    QDate today;
    int width = 0;                     // of everything
    std::optional<GridPosition> place; // the selected appointment or place on the clock
    rt::Weak<> controller;             // is handed to new tiles

    [[nodiscard]] int left(int day) const { return style.gutter + (width - style.gutter) * day / days; }
    // The nearest day.
    [[nodiscard]] int dayAt(int x) const {
        int day = 0;
        while (day + 1 < days && x >= left(day + 1))
            ++day;
        return day;
    }
    // -1: not shown.
    [[nodiscard]] int dayOf(const QDate &date) const {
        const qint64 day = first.daysTo(date);
        return date.isValid() && day >= 0 && day < days ? int(day) : -1;
    }
};

} // namespace mailhost
