// Images of a resource folder.
#pragma once

#include <QHash>
#include <QImage>
#include <QString>

namespace platform {

// See Bundle::image. Each image is read and rendered once per device pixel ratio. Main thread only.
class BundleImages {
public:
    explicit BundleImages(const QString &folder)
        : m_folder(folder) {}
    [[nodiscard]] QImage image(const QString &name, qreal devicePixelRatio);

private:
    struct File {
        QString path;
        qreal scale; // pixels of the file per point
    };
    [[nodiscard]] QImage load(const QString &name, qreal devicePixelRatio) const;
    [[nodiscard]] QString pathOf(const QString &stem, const QString &suffix) const;
    [[nodiscard]] File bitmapFor(const QString &stem, qreal devicePixelRatio) const;

    QString m_folder;
    QHash<QPair<QString, qreal>, QImage> m_images; // includes null images for missing names
};

} // namespace platform
