// An image that is sharp on every display.
#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

class QPainter;

// A value type that is cheap to copy. An image made from a name is rendered for the display's pixel ratio
// when it is drawn.
class BundleImage {
public:
    BundleImage() = default; // no image
    // An image of the plug-in's resources; no image if the name does not exist.
    explicit BundleImage(const QString &name);
    // Uses the given picture unchanged.
    explicit BundleImage(const QImage &image);

    [[nodiscard]] bool isNull() const { return m_image.isNull(); }
    [[nodiscard]] QSizeF size() const; // in points
    // Draws the image stretched to the rectangle.
    void draw(QPainter &painter, const QRectF &rectangle) const;

private:
    QString m_name;         // null: made from a picture
    mutable QImage m_image; // last rendered
};
