#include "plugin/ui/controls/vlSettingsButton.h"

#include <QKeyEvent>

namespace {

constexpr double imageTop = 10;   // points below the button's top
constexpr double titleBottom = 2; // points above its bottom
constexpr double pressedOffset = 1;

} // namespace

QRectF vlSettingsButton::imageRectangle() const {
    const QSizeF size = face().mImage.size();
    return {QPointF((width() - size.width()) / 2, imageTop), size};
}

void vlSettingsButton::paintTitle(QPainter &painter) const {
    const double bottom = height() - titleBottom - (isDown() ? pressedOffset : 0);
    drawTitle(painter, *this, face(), bottom, TitleAnchor::Bottom);
}

void vlSettingsButton::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        StripButton::keyPressEvent(event);
}
