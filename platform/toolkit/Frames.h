// Frames whose origin is at the bottom left, in the coordinates of the parent view. Units are points.
#pragma once

#include <QRectF>

class QWidget;

namespace platform {

// The view's frame; for a view without parent, with y counted from 0.
[[nodiscard]] QRectF bottomLeftFrame(const QWidget *view);
// Does nothing when the view has that frame already, so that it may be called for every drawing.
void setBottomLeftFrame(QWidget *view, const QRectF &frame);

} // namespace platform
