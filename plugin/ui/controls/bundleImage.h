// An image of the plug-in's resources that is sharp on every display.
#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

class QPainter;

// A value: copying is cheap. Images by name are rendered for the display's pixel ratio when they are drawn.
class BundleImage {
public:
    BundleImage() = default; // no image
    // One of the resources; no image when there is none of that name.
    explicit BundleImage(const QString &name);
    // A picture of one's own, as it is.
    explicit BundleImage(const QImage &image);

    [[nodiscard]] bool isNull() const { return m_image.isNull(); }
    [[nodiscard]] QSizeF size() const; // in points
    // Stretched to the rectangle, over what lies below.
    void draw(QPainter &painter, const QRectF &rectangle) const;

private:
    QString m_name;         // null: m_image is all there is
    mutable QImage m_image; // as last rendered
};
