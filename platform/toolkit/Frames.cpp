#include "platform/toolkit/Frames.h"

#include <QWidget>
#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr qreal maxCoordinate = 1 << 24; // keeps sums of coordinates within an int

const QWidget *surroundingView(const QWidget *view) {
    return view->isWindow() ? nullptr : view->parentWidget();
}

int rounded(qreal coordinate) {
    return qRound(std::clamp(coordinate, -maxCoordinate, maxCoordinate));
}

} // namespace

QRectF bottomLeftFrame(const QWidget *view) {
    if (!view)
        return {};
    QRectF frame = view->geometry();
    if (const QWidget *parent = surroundingView(view))
        frame.moveTop(parent->height() - frame.y() - frame.height());
    return frame;
}

void setBottomLeftFrame(QWidget *view, const QRectF &frame) {
    if (!view || !std::isfinite(frame.x() + frame.y() + frame.width() + frame.height()))
        return;
    const int height = rounded(frame.height());
    int top = rounded(frame.y());
    if (const QWidget *parent = surroundingView(view))
        top = parent->height() - top - height;
    const QRect geometry(rounded(frame.x()), top, rounded(frame.width()), height);
    if (view->geometry() != geometry)
        view->setGeometry(geometry);
}

} // namespace platform
