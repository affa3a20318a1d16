// Small drawings in one colour: SVG files of the resource folder "icons", which draw in "currentColor".
#pragma once

#include <QIcon>

class QPainter;

namespace mailhost {

void paintLineDrawing(QPainter &painter, const QString &name, const QRectF &rect, const QColor &colour);
// Uses the text colour at the time of painting, which suits light and dark desktops, and is sharp at every
// size.
[[nodiscard]] QIcon lineDrawingIcon(const QString &name);

} // namespace mailhost
