// An image that is sharp on every display.
#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

class QPainter;

// A value type that is cheap to copy. It is rendered for the display's pixel ratio when it is drawn.
class BundleImage {
public:
    BundleImage() = default; // no image
    // An image of the plug-in's resources; no image if the name does not exist.
    explicit BundleImage(const QString &name);

    [[nodiscard]] bool isNull() const { return m_image.isNull(); }
    [[nodiscard]] QSizeF size() const; // in points
    [[nodiscard]] const QImage &image(qreal ratio) const;
    // Draws the image stretched to the rectangle.
    void draw(QPainter &painter, const QRectF &rectangle) const;

private:
    QString m_name;
    mutable QImage m_image; // last rendered
};
