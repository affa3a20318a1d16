#include "plugin/ui/controls/vlPopupToolbarView.h"

#include "plugin/ui/controls/menuOpening.h"

#include <QIcon>
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
}

QSize vlPopupToolbarView::sizeHint() const {
    return {side, side};
}

// Draws into the whole area and not only the exposed part, which would otherwise show a small complete image.
// A disabled view looks like a disabled button of that tool-bar.
void vlPopupToolbarView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    if (isEnabled()) {
        mImage.draw(painter, rect());
    } else {
        const QPixmap pixmap = QPixmap::fromImage(mImage.image(painter.deviceTransform().m11()));
        painter.drawPixmap(rect(), QIcon(pixmap).pixmap(pixmap.size(), QIcon::Disabled));
    }
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.backgroundColor = palette().color(QPalette::Window);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void vlPopupToolbarView::mousePressEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        popUpMenu();
}

void vlPopupToolbarView::mouseReleaseEvent(QMouseEvent *) {}

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
