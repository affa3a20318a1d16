#include "platform/services/bundle/BundleImages.h"

#include "platform/Literals.h"

#include <QFileInfo>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr qreal maximumRatio = 8;
constexpr int maximumPixels = 8192; // of one side

QSize pixelsOf(const QSizeF &points, qreal ratio) {
    const auto side = [ratio](qreal length) {
        return std::clamp(int(std::lround(length * ratio)), 1, maximumPixels);
    };
    return {side(points.width()), side(points.height())};
}

QImage renderDrawing(const QString &path, qreal ratio) {
    QSvgRenderer renderer(path);
    if (!renderer.isValid() || renderer.defaultSize().isEmpty())
        return {};
    QImage image(pixelsOf(renderer.defaultSize(), ratio), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    image.setDevicePixelRatio(ratio);
    return image;
}

QImage readBitmap(const QString &path, qreal scale, qreal ratio) {
    QImage image(path);
    if (image.isNull())
        return {};
    const QSize size = pixelsOf(QSizeF(image.size()) / scale, ratio);
    if (size != image.size())
        image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.setDevicePixelRatio(ratio);
    return image;
}

} // namespace

QImage BundleImages::image(const QString &name, qreal devicePixelRatio) {
    const qreal ratio = devicePixelRatio > 0 ? std::min(devicePixelRatio, maximumRatio) : 1.0;
    const auto known = m_images.constFind({name, ratio});
    if (known != m_images.constEnd())
        return *known;
    const QImage image = load(name, ratio);
    m_images.insert({name, ratio}, image);
    return image;
}

QImage BundleImages::load(const QString &name, qreal ratio) const {
    const bool isBitmap = name.endsWith(QLatin1String(".png"));
    const bool isDrawing = name.endsWith(QLatin1String(".svg"));
    const QString stem = isBitmap || isDrawing ? name.chopped(4) : name;
    const File bitmap = isDrawing ? File{} : bitmapFor(stem, ratio);
    const QString drawing = isBitmap ? QString() : pathOf(stem, u".svg"_s);
    const QString &path = bitmap.path.isNull() ? drawing : bitmap.path;
    if (path.isNull())
        return {};
    QImage image = bitmap.path.isNull() ? renderDrawing(path, ratio) : readBitmap(path, bitmap.scale, ratio);
    if (image.isNull())
        qWarning("the image %s cannot be read", qPrintable(path));
    return image;
}

QString BundleImages::pathOf(const QString &stem, const QString &suffix) const {
    const QString path = m_folder + QLatin1Char('/') + stem + suffix;
    return QFileInfo(path).isFile() ? path : QString();
}

BundleImages::File BundleImages::bitmapFor(const QString &stem, qreal ratio) const {
    const QString plain = pathOf(stem, u".png"_s);
    const QString sharp = pathOf(stem, u"@2x.png"_s);
    const bool useSharp = !sharp.isNull() && (ratio > 1 || plain.isNull());
    return useSharp ? File{sharp, 2} : File{plain, 1};
}

} // namespace platform
