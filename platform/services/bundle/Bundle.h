// The resources of a bundle: texts, images, interface descriptions.
#pragma once

#include <QImage>
#include <QString>
#include <memory>

class QWidget;

namespace platform {

// A folder of resources: `<language>.lproj/<table>.strings` (UTF-8, lines of `"key" = "text";`), images as
// PNG or SVG files by name (with or without extension; a "name@2x" file serves sharper displays), interface
// descriptions as `<name>.ui` files, for one language in its `.lproj` folder. Loaded once per name. Main
// thread only.
class Bundle {
public:
    virtual ~Bundle() = default;
    // The text for the key, in the desktop's language if the bundle has it, else in English; `fallback` if
    // the table lacks the key.
    [[nodiscard]] virtual QString localizedString(const QString &key, const QString &fallback,
                                                  const QString &table) const = 0;
    // The image of that name at the given device pixel ratio (its devicePixelRatio is set; its size in points
    // is the same at every ratio); a null image if there is none.
    [[nodiscard]] virtual QImage image(const QString &name, qreal devicePixelRatio = 1.0) const = 0;
    // Builds the top widget of the interface description of that name, without a parent; the caller owns it.
    // Returns nullptr if there is none or it is malformed (logs one line). Find widgets by objectName().
    [[nodiscard]] virtual std::unique_ptr<QWidget> loadInterface(const QString &name) const = 0;
};

// A bundle in a folder on disk. Its language is the first of the preferred languages (such as "de-AT",
// "zh-CN") that it has, else English. Without preferred languages it uses those of the desktop's locale.
[[nodiscard]] std::unique_ptr<Bundle> makeFolderBundle(const QString &folder,
                                                       const QStringList &preferredLanguages = {});

} // namespace platform
