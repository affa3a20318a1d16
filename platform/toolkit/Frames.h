// Frames whose origin is at the bottom left, in the coordinates of the parent view. Units are points.
#pragma once

#include <QRectF>

class QWidget;

namespace platform {

// The view's frame; without a parent, y is relative to 0.
[[nodiscard]] QRectF bottomLeftFrame(const QWidget *view);
// Does nothing if the view already has that frame, so that a caller may use it at every drawing.
void setBottomLeftFrame(QWidget *view, const QRectF &frame);

} // namespace platform
