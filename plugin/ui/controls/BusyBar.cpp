#include "plugin/ui/controls/BusyBar.h"

#include <QPainter>
#include <QStyle>
#include <QTimerEvent>
#include <cmath>
#include <numbers>

namespace {

constexpr int thickness = 8; // points
constexpr int usualWidth = 312;
constexpr double pieceShare = 0.3;  // of the bar
constexpr double firstPhase = 0.25; // in the middle
constexpr double period = 2400;     // milliseconds for both directions
constexpr int frameMilliseconds = 30;
constexpr double grooveOpacity = 0.18; // applied to the text's colour

} // namespace

BusyBar::BusyBar(QWidget *parent)
    : QProgressBar(parent) {
    setRange(0, 0);
    setTextVisible(false);
    setFocusPolicy(Qt::NoFocus);
    setFixedHeight(thickness);
}

QSize BusyBar::sizeHint() const {
    return {usualWidth, thickness};
}

void BusyBar::paintEvent(QPaintEvent *) {
    const double phase = firstPhase + (m_frames.isActive() ? double(m_shown.elapsed()) / period : 0);
    const double place = (1 - std::cos(2 * std::numbers::pi * phase)) / 2; // 0: left, 1: right
    const double pieceWidth = width() * pieceShare;
    const double radius = height() / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setOpacity(grooveOpacity);
    painter.setBrush(palette().color(QPalette::WindowText));
    painter.drawRoundedRect(QRectF(rect()), radius, radius);
    painter.setOpacity(1);
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(QRectF(place * (width() - pieceWidth), 0, pieceWidth, height()), radius, radius);
}

void BusyBar::showEvent(QShowEvent *event) {
    QProgressBar::showEvent(event);
    m_shown.start();
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0)
        m_frames.start(frameMilliseconds, this);
}

void BusyBar::hideEvent(QHideEvent *event) {
    m_frames.stop();
    QProgressBar::hideEvent(event);
}

void BusyBar::timerEvent(QTimerEvent *event) {
    if (event->timerId() == m_frames.timerId())
        update();
    else
        QProgressBar::timerEvent(event);
}
