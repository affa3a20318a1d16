#include "plugin/ui/controls/StripButton.h"

#include <QPainter>

StripButton::StripButton(QWidget *parent)
    : QPushButton(parent) {
    setFocusPolicy(Qt::TabFocus); // a click keeps the focus in the field that the user is editing
    setAutoDefault(false);
}

void StripButton::setImage(const BundleImage &image) {
    m_face.mImage = image;
    update();
}

void StripButton::setTitle(const QString &title) {
    m_face.setTitle(title);
    setText(title);                             // sets the mnemonic's shortcut and repaints
    setAccessibleName(m_face.mLable.trimmed()); // some tables pad a title with blanks to position it
}

void StripButton::setEntered(bool isEntered) {
    m_bEntered = isEntered;
    update();
}

void StripButton::updateRect() {
    m_bEntered = isVisible() && underMouse();
}

void StripButton::paintEvent(QPaintEvent *) {
    if (!m_face.isComplete())
        return;
    QPainter painter(this);
    const QRectF imageArea = imageRectangle();
    if (isEntered())
        m_highlight.draw(painter, imageArea);
    m_face.mImage.draw(painter, imageArea);
    paintTitle(painter);
    drawFocusMark(painter, *this, imageArea);
}

void StripButton::enterEvent(QEnterEvent *) {
    setEntered(true);
}

void StripButton::leaveEvent(QEvent *) {
    setEntered(false);
}

// If the button appears below the pointer, the toolkit reports the pointer again.
void StripButton::hideEvent(QHideEvent *) {
    m_bEntered = false;
}

void StripButton::resizeEvent(QResizeEvent *) {
    updateRect();
}
