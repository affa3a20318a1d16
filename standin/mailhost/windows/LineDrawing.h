// Small drawings in one colour: SVG files of the resource folder "icons", which draw in "currentColor".
#pragma once

#include <QIcon>

class QPainter;

namespace mailhost {

void paintLineDrawing(QPainter &painter, const QString &name, const QRectF &rect, const QColor &colour);
// In the colour of the program's text at the time of painting: it suits a light and a dark desktop, and is
// sharp at every size.
[[nodiscard]] QIcon lineDrawingIcon(const QString &name);

} // namespace mailhost
