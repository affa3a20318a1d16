#include "standin/mailhost/windows/main/MainToolBarIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace mailhost {

namespace {

constexpr double side = 32; // of the grid that the drawings are made on
constexpr double penWidth = 2;

// A sheet of a calendar with its two rings.
void calendar(QPainter &painter) {
    painter.drawRoundedRect(QRectF(5, 7, 22, 20), 3, 3);
    painter.drawLine(QPointF(5, 13), QPointF(27, 13));
    painter.drawLine(QPointF(11, 4), QPointF(11, 9));
    painter.drawLine(QPointF(21, 4), QPointF(21, 9));
}

void plus(QPainter &painter, const QPointF &centre) {
    painter.drawLine(centre - QPointF(4, 0), centre + QPointF(4, 0));
    painter.drawLine(centre - QPointF(0, 4), centre + QPointF(0, 4));
}

void person(QPainter &painter, const QPointF &head) {
    painter.drawEllipse(head, 4, 4);
    QPainterPath shoulders(head + QPointF(-7, 15));
    shoulders.cubicTo(head + QPointF(-7, 4), head + QPointF(7, 4), head + QPointF(7, 15));
    painter.drawPath(shoulders);
}

void chevron(QPainter &painter, double direction) {
    painter.drawPolyline(
        QPolygonF({{16 + direction * 4, 8}, {16 - direction * 4, 16}, {16 + direction * 4, 24}}));
}

void filled(QPainter &painter, const QRectF &rectangle) {
    painter.save();
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(rectangle, 1, 1);
    painter.restore();
}

void bin(QPainter &painter) {
    painter.drawLine(QPointF(6, 9), QPointF(26, 9));
    painter.drawPolyline(QPolygonF({{12, 9}, {13, 5}, {19, 5}, {20, 9}}));
    painter.drawPolyline(QPolygonF({{8.5, 9}, {10, 27}, {22, 27}, {23.5, 9}}));
    painter.drawLine(QPointF(13.5, 14), QPointF(14, 22));
    painter.drawLine(QPointF(18.5, 14), QPointF(18, 22));
}

void week(QPainter &painter) {
    calendar(painter);
    for (const double x : {9.0, 14.0, 19.0})
        filled(painter, QRectF(x, 16.5, 3.5, 7));
}

void draw(QPainter &painter, MainToolBarIcon icon) {
    switch (icon) {
    case MainToolBarIcon::NewAppointment:
        calendar(painter);
        plus(painter, {16, 20});
        break;
    case MainToolBarIcon::NewMeeting:
        person(painter, {13, 10});
        plus(painter, {25, 20});
        break;
    case MainToolBarIcon::Previous:
        chevron(painter, 1);
        break;
    case MainToolBarIcon::Next:
        chevron(painter, -1);
        break;
    case MainToolBarIcon::Today:
        calendar(painter);
        filled(painter, QRectF(12.5, 16.5, 7, 7));
        break;
    case MainToolBarIcon::Day:
        calendar(painter);
        filled(painter, QRectF(9, 16.5, 14, 7));
        break;
    case MainToolBarIcon::Week:
        week(painter);
        break;
    case MainToolBarIcon::Delete:
        bin(painter);
        break;
    }
}

class LineEngine : public QIconEngine {
public:
    explicit LineEngine(MainToolBarIcon icon)
        : m_icon(icon) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        const double scale = std::min(rect.width(), rect.height()) / side;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center() + QPointF(0.5, 0.5) - QPointF(side, side) * scale / 2);
        painter->scale(scale, scale);
        painter->setPen(
            QPen(palette.color(group, role), penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        draw(*painter, m_icon);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new LineEngine(m_icon); }

private:
    MainToolBarIcon m_icon;
};

} // namespace

QIcon mainToolBarIcon(MainToolBarIcon icon) {
    return QIcon(new LineEngine(icon));
}

} // namespace mailhost
