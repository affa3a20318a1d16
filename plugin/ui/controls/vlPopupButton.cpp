#include "plugin/ui/controls/vlPopupButton.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace {

constexpr double imageBottom = 20; // points above the button's bottom
constexpr double titleGap = 5;     // points between image and title
constexpr double anchorLeft = 3;   // the menu's corner: to the left of the image
constexpr double anchorGap = 6;    // and below it
constexpr double pressedOffset = 1;

bool opensMenu(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Select || key == Qt::Key_Return || key == Qt::Key_Enter ||
           key == Qt::Key_Down;
}

} // namespace

// Borderless and without an arrow, the toolkit's own drawing leaves no mark: it is not run.
vlPopupButton::vlPopupButton(QWidget *parent)
    : QPushButton(parent) {
    setFlat(true);
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false);
}

void vlPopupButton::setImage(const BundleImage &image) {
    m_face.mImage = image;
    update();
}

void vlPopupButton::setTitle(const QString &title) {
    m_face.setTitle(title);
    setText(title);                             // the mnemonic's shortcut
    setAccessibleName(m_face.mLable.trimmed()); // some tables end a title in blanks, for its place
    update();
}

QRectF vlPopupButton::imageRectangle() const {
    const QSizeF size = m_face.mImage.size();
    return {QPointF((width() - size.width()) / 2, height() - size.height() - imageBottom), size};
}

QRectF vlPopupButton::anchorOf(const QRectF &imageRectangle) const {
    return {QPointF(imageRectangle.left() - anchorLeft, imageRectangle.bottom() + anchorGap),
            imageRectangle.size()};
}

void vlPopupButton::paintEvent(QPaintEvent *) {
    if (!m_face.isComplete())
        return;
    QPainter painter(this);
    const QRectF imageArea = imageRectangle();
    m_iconRect = anchorOf(imageArea);
    if (m_bEntered)
        m_highlight.draw(painter, imageArea);
    m_face.mImage.draw(painter, imageArea);
    const double top = imageArea.bottom() + titleGap + (isDown() ? pressedOffset : 0);
    drawTitle(painter, *this, m_face, top, TitleAnchor::Top);
    drawFocusMark(painter, *this, imageArea);
}

void vlPopupButton::updateRect() {
    m_bEntered = isVisible() && underMouse();
    update();
}

bool vlPopupButton::event(QEvent *event) {
    if (event->type() != QEvent::Shortcut)
        return QPushButton::event(event);
    popUpMenu();
    return true;
}

void vlPopupButton::enterEvent(QEnterEvent *event) {
    QPushButton::enterEvent(event);
    if (m_bEntered || !isVisible())
        return;
    m_bEntered = true;
    update();
}

void vlPopupButton::leaveEvent(QEvent *event) {
    QPushButton::leaveEvent(event);
    if (!m_bEntered)
        return;
    m_bEntered = false;
    update();
}

void vlPopupButton::showEvent(QShowEvent *event) {
    m_bEntered = false;
    QPushButton::showEvent(event);
}

void vlPopupButton::hideEvent(QHideEvent *event) {
    m_bEntered = false;
    QPushButton::hideEvent(event);
}

void vlPopupButton::resizeEvent(QResizeEvent *event) {
    QPushButton::resizeEvent(event);
    updateRect();
}

// The toolkit's own handling never runs: a press must not send the button's own action.
void vlPopupButton::mousePressEvent(QMouseEvent *event) {
    event->accept();
    if (m_bEntered && event->button() == Qt::LeftButton)
        popUpMenu();
}

void vlPopupButton::mouseReleaseEvent(QMouseEvent *event) {
    event->accept();
}

void vlPopupButton::keyPressEvent(QKeyEvent *event) {
    if (opensMenu(event->key()))
        popUpMenu();
    else
        QPushButton::keyPressEvent(event);
}

void vlPopupButton::popUpMenu() {
    if (!menu() || !isEnabled() || !m_face.isComplete())
        return;
    m_iconRect = anchorOf(imageRectangle());
    menu()->popup(mapToGlobal(m_iconRect.topLeft().toPoint()));
}
