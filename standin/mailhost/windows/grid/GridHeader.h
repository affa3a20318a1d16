// The names and dates of the days above the grid; today is marked.
#pragma once

#include "standin/mailhost/windows/grid/GridSurface.h"

namespace mailhost {

class GridHeader : public QWidget {
    Q_OBJECT
public:
    explicit GridHeader(QWidget *parent = nullptr);
    void show(const QDate &first, const QDate &today, const DayEdges &edges,
              std::shared_ptr<const GridStyle> style);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void chooseNames();
    void paintDay(QPainter &painter, const QRect &column, const QDate &date) const;
    std::shared_ptr<const GridStyle> m_style;
    DayEdges m_edges;
    QDate m_first;
    QDate m_today;
    QFont m_dateFont;
    QLocale::FormatType m_names = QLocale::LongFormat;
};

} // namespace mailhost
