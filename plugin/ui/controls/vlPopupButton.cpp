#include "plugin/ui/controls/vlPopupButton.h"

#include "plugin/ui/controls/menuOpening.h"

#include <QKeyEvent>

namespace {

constexpr double imageBottom = 20; // points above the button's bottom
constexpr double titleGap = 5;     // points between image and title
constexpr double anchorLeft = 3;   // the menu's corner is left of the image
constexpr double anchorGap = 6;    // and below the image
constexpr double pressedOffset = 1;

} // namespace

QRectF vlPopupButton::imageRectangle() const {
    const QSizeF size = face().mImage.size();
    return {QPointF((width() - size.width()) / 2, height() - size.height() - imageBottom), size};
}

QRectF vlPopupButton::iconRect() const {
    const QRectF image = imageRectangle();
    return {QPointF(image.left() - anchorLeft, image.bottom() + anchorGap), image.size()};
}

void vlPopupButton::paintTitle(QPainter &painter) const {
    const double top = imageRectangle().bottom() + titleGap + (isDown() ? pressedOffset : 0);
    drawTitle(painter, *this, face(), top, TitleAnchor::Top);
}

bool vlPopupButton::event(QEvent *event) {
    const bool isMnemonic = event->type() == QEvent::Shortcut;
    if (isMnemonic)
        popUpMenu();
    return isMnemonic || StripButton::event(event);
}

// Does not call the toolkit's handling, because a press must not send the button's own action.
void vlPopupButton::mousePressEvent(QMouseEvent *event) {
    if (isEntered() && event->button() == Qt::LeftButton)
        popUpMenu();
}

void vlPopupButton::mouseReleaseEvent(QMouseEvent *) {}

void vlPopupButton::keyPressEvent(QKeyEvent *event) {
    if (opensMenu(event->key()))
        popUpMenu();
    else
        StripButton::keyPressEvent(event);
}

void vlPopupButton::popUpMenu() {
    if (menu() && isEnabled() && face().isComplete())
        menu()->popup(mapToGlobal(iconRect().topLeft().toPoint()));
}
