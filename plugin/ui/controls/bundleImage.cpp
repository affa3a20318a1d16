#include "plugin/ui/controls/bundleImage.h"

#include "platform/services/Services.h"

#include <QPainter>

BundleImage::BundleImage(const QString &name)
    : m_name(name)
    , m_image(platform::services().pluginBundle->image(name)) {}

BundleImage::BundleImage(const QImage &image)
    : m_image(image) {}

QSizeF BundleImage::size() const {
    return m_image.deviceIndependentSize();
}

void BundleImage::draw(QPainter &painter, const QRectF &rectangle) const {
    const qreal ratio = painter.deviceTransform().m11(); // may be higher than the display's
    if (!m_name.isNull() && !qFuzzyCompare(m_image.devicePixelRatio(), ratio)) {
        const QImage sharper = platform::services().pluginBundle->image(m_name, ratio);
        if (!sharper.isNull())
            m_image = sharper;
    }
    if (m_image.isNull())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rectangle, m_image);
}
