#include "plugin/ui/controls/BusyBar.h"

#include <QPainter>
#include <QStyle>
#include <cmath>
#include <numbers>

namespace {

constexpr int thickness = 8; // points
constexpr int usualWidth = 312;
constexpr double pieceShare = 0.3;  // of the bar
constexpr double firstPhase = 0.25; // in the middle
constexpr double period = 80;       // frames for both directions
constexpr int frameMilliseconds = 30;
constexpr double grooveOpacity = 0.18; // applied to the text's colour

} // namespace

BusyBar::BusyBar(QWidget *parent)
    : QProgressBar(parent) {
    setRange(0, 0);
    setFixedHeight(thickness);
    connect(&m_frames, &QTimer::timeout, this, [this] {
        ++m_frame;
        update();
    });
}

QSize BusyBar::sizeHint() const {
    return {usualWidth, thickness};
}

void BusyBar::paintEvent(QPaintEvent *) {
    const double phase = firstPhase + m_frame / period;
    const double place = (1 - std::cos(2 * std::numbers::pi * phase)) / 2; // 0: left, 1: right
    const double pieceWidth = width() * pieceShare;
    const double radius = height() / 2.0;
    QColor groove = palette().color(QPalette::WindowText);
    groove.setAlphaF(grooveOpacity);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(groove);
    painter.drawRoundedRect(QRectF(rect()), radius, radius);
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(QRectF(place * (width() - pieceWidth), 0, pieceWidth, height()), radius, radius);
}

void BusyBar::showEvent(QShowEvent *) {
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0)
        m_frames.start(frameMilliseconds);
}

void BusyBar::hideEvent(QHideEvent *) {
    m_frames.stop();
    m_frame = 0;
}
