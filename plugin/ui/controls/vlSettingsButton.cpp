#include "plugin/ui/controls/vlSettingsButton.h"

#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr double imageTop = 10;   // points below the button's top
constexpr double titleBottom = 2; // points above its bottom
constexpr double pressedOffset = 1;

} // namespace

vlSettingsButton::vlSettingsButton(QWidget *parent)
    : QPushButton(parent) {
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the field that the user is writing in
    setAutoDefault(false);
}

void vlSettingsButton::setImage(const BundleImage &image) {
    m_face.mImage = image;
    update();
}

void vlSettingsButton::setTitle(const QString &title) {
    m_face.setTitle(title);
    setText(title);                             // the mnemonic's shortcut
    setAccessibleName(m_face.mLable.trimmed()); // some tables end a title in blanks, for its place
    update();
}

QRectF vlSettingsButton::imageRectangle() const {
    const QSizeF size = m_face.mImage.size();
    return {QPointF((width() - size.width()) / 2, imageTop), size};
}

void vlSettingsButton::paintEvent(QPaintEvent *) {
    if (!m_face.isComplete())
        return;
    QPainter painter(this);
    const QRectF imageArea = imageRectangle();
    if (m_bEntered && isEnabled())
        m_highlight.draw(painter, imageArea);
    m_face.mImage.draw(painter, imageArea);
    const double bottom = height() - titleBottom - (isDown() ? pressedOffset : 0);
    drawTitle(painter, *this, m_face, bottom, TitleAnchor::Bottom);
    drawFocusMark(painter, *this, imageArea);
}

void vlSettingsButton::updateRect() {
    m_bEntered = isVisible() && isEnabled() && underMouse();
    update();
}

void vlSettingsButton::enterEvent(QEnterEvent *event) {
    QPushButton::enterEvent(event);
    if (m_bEntered || !isEnabled())
        return;
    m_bEntered = true;
    update();
}

void vlSettingsButton::leaveEvent(QEvent *event) {
    QPushButton::leaveEvent(event);
    if (!m_bEntered)
        return;
    m_bEntered = false;
    update();
}

// The toolkit tells of the pointer anew when a button appears below it.
void vlSettingsButton::showEvent(QShowEvent *event) {
    m_bEntered = false;
    QPushButton::showEvent(event);
}

void vlSettingsButton::hideEvent(QHideEvent *event) {
    m_bEntered = false;
    QPushButton::hideEvent(event);
}

void vlSettingsButton::changeEvent(QEvent *event) {
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        updateRect();
}

void vlSettingsButton::resizeEvent(QResizeEvent *event) {
    QPushButton::resizeEvent(event);
    updateRect();
}

void vlSettingsButton::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}
