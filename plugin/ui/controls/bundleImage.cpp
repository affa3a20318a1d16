#include "plugin/ui/controls/bundleImage.h"

#include "platform/services/Services.h"

#include <QPainter>

BundleImage::BundleImage(const QString &name)
    : m_name(name)
    , m_image(platform::services().pluginBundle->image(name)) {}

QSizeF BundleImage::size() const {
    return m_image.deviceIndependentSize();
}

const QImage &BundleImage::image(qreal ratio) const {
    if (!qFuzzyCompare(m_image.devicePixelRatio(), ratio)) {
        const QImage sharper = platform::services().pluginBundle->image(m_name, ratio);
        if (!sharper.isNull())
            m_image = sharper;
    }
    return m_image;
}

void BundleImage::draw(QPainter &painter, const QRectF &rectangle) const {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rectangle, image(painter.deviceTransform().m11())); // may exceed the display's ratio
}
