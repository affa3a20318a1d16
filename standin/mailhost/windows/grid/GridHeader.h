// The names and dates of the days above the grid; today is marked.
#pragma once

#include "standin/mailhost/windows/grid/GridScene.h"

#include <QWidget>

namespace mailhost {

class GridHeader : public QWidget {
public:
    explicit GridHeader(std::shared_ptr<const GridScene> scene);
    void showScene();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QFont dateFont() const;
    [[nodiscard]] QString nameOf(const QDate &date, int room) const;
    void paintDay(QPainter &painter, int day) const;
    std::shared_ptr<const GridScene> m_scene;
};

} // namespace mailhost
