#include "plugin/ui/controls/vlPopupToolbarView.h"

#include "plugin/ui/controls/menuOpening.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace {
constexpr int side = 32; // size of a tool-bar's image in points
} // namespace

vlPopupToolbarView::vlPopupToolbarView(QWidget *parent)
    : QAbstractButton(parent) {
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, &vlPopupToolbarView::popUpMenu); // for screen readers
}

void vlPopupToolbarView::setImage(const BundleImage &image) {
    mImage = image;
    update();
}

void vlPopupToolbarView::setMenu(std::shared_ptr<QMenu> menu) {
    mMenu = std::move(menu);
    update();
}

QSize vlPopupToolbarView::sizeHint() const {
    return {side, side};
}

// Draws into the whole area and not only the exposed part, which would otherwise show a small complete image.
void vlPopupToolbarView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    if (isEnabled())
        mImage.draw(painter, rect());
    else
        painter.drawPixmap(rect(), disabledImage(painter.deviceTransform().m11()));
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.backgroundColor = palette().color(QPalette::Window);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

// The same look as the image of a disabled button in that tool-bar.
QPixmap vlPopupToolbarView::disabledImage(qreal ratio) const {
    QPixmap pixmap(size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    mImage.draw(painter, rect());
    painter.end();
    QStyleOption option;
    option.initFrom(this);
    return style()->generatedIconPixmap(QIcon::Disabled, pixmap, &option);
}

void vlPopupToolbarView::mousePressEvent(QMouseEvent *event) {
    event->accept();
    if (event->button() == Qt::LeftButton)
        popUpMenu();
}

void vlPopupToolbarView::mouseReleaseEvent(QMouseEvent *event) {
    event->accept();
}

void vlPopupToolbarView::keyPressEvent(QKeyEvent *event) {
    if (opensMenu(event->key()))
        popUpMenu();
    else
        QAbstractButton::keyPressEvent(event);
}

void vlPopupToolbarView::popUpMenu() {
    if (isEnabled())
        popUpBelow(mMenu.get(), this);
}
