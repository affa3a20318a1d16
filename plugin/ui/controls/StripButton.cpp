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
    setText(title);                             // the mnemonic's shortcut
    setAccessibleName(m_face.mLable.trimmed()); // some tables pad a title with blanks to position it
    update();
}

void StripButton::setEntered(bool isEntered) {
    if (m_bEntered == isEntered)
        return;
    m_bEntered = isEntered;
    update();
}

void StripButton::updateRect() {
    m_bEntered = isVisible() && canBeEntered() && underMouse();
    update();
}

void StripButton::paintEvent(QPaintEvent *) {
    if (!m_face.isComplete())
        return;
    QPainter painter(this);
    const QRectF imageArea = imageRectangle();
    if (m_bEntered)
        m_highlight.draw(painter, imageArea);
    m_face.mImage.draw(painter, imageArea);
    paintTitle(painter);
    drawFocusMark(painter, *this, imageArea);
}

void StripButton::enterEvent(QEnterEvent *event) {
    QPushButton::enterEvent(event);
    if (canBeEntered())
        setEntered(true);
}

void StripButton::leaveEvent(QEvent *event) {
    QPushButton::leaveEvent(event);
    setEntered(false);
}

// If the button appears below the pointer, the toolkit reports the pointer again.
void StripButton::showEvent(QShowEvent *event) {
    m_bEntered = false;
    QPushButton::showEvent(event);
}

void StripButton::hideEvent(QHideEvent *event) {
    m_bEntered = false;
    QPushButton::hideEvent(event);
}

void StripButton::resizeEvent(QResizeEvent *event) {
    QPushButton::resizeEvent(event);
    updateRect();
}
