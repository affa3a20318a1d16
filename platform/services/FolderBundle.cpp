#include "platform/services/Bundle.h"
#include "platform/services/BundleImages.h"
#include "platform/services/InterfaceLoader.h"
#include "platform/services/StringsTable.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QWidget>

namespace platform {

namespace {

const QString baseLanguage = QStringLiteral("en");

class FolderBundle : public Bundle {
public:
    explicit FolderBundle(const QString &folder)
        : m_folder(folder)
        , m_language(chooseLanguage())
        , m_images(folder)
        , m_interfaces(folder) {}

    QString localizedString(const QString &key, const QString &fallback,
                            const QString &table) const override {
        auto loaded = m_tables.constFind(table);
        if (loaded == m_tables.constEnd())
            loaded = m_tables.insert(table, loadTable(table));
        const auto found = loaded->constFind(key);
        return found == loaded->constEnd() ? fallback : *found;
    }

    QImage image(const QString &name, qreal devicePixelRatio) const override {
        return m_images.image(name, devicePixelRatio);
    }

    QString pathForResource(const QString &fileName) const override {
        const QString path = m_folder + QLatin1Char('/') + fileName;
        return QFileInfo(path).isFile() ? path : QString();
    }

    std::unique_ptr<QWidget> loadInterface(const QString &name) const override {
        const QString path = pathForResource(name + QLatin1String(".ui"));
        return path.isNull() ? nullptr : m_interfaces.load(path);
    }

private:
    [[nodiscard]] QString folderOf(const QString &language) const {
        return m_folder + QLatin1Char('/') + language + QLatin1String(".lproj");
    }

    // The first language that the person prefers and the bundle has: "de-AT" is also served by "de".
    [[nodiscard]] QString chooseLanguage() const {
        const QStringList preferred = QLocale::system().uiLanguages();
        for (const QString &language : preferred) {
            for (const QString &candidate : {language, language.section(QLatin1Char('-'), 0, 0)}) {
                if (QFileInfo(folderOf(candidate)).isDir())
                    return candidate;
            }
        }
        return baseLanguage;
    }

    [[nodiscard]] QHash<QString, QString> loadTable(const QString &table) const {
        QHash<QString, QString> texts = readTable(baseLanguage, table);
        if (m_language != baseLanguage)
            texts.insert(readTable(m_language, table));
        return texts;
    }

    [[nodiscard]] QHash<QString, QString> readTable(const QString &language, const QString &table) const {
        QFile file(folderOf(language) + QLatin1Char('/') + table + QLatin1String(".strings"));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        bool isWhole = true;
        const QHash<QString, QString> texts = parseStringsTable(file.readAll(), &isWhole);
        if (!isWhole)
            qWarning("the table of texts %s has malformed entries", qPrintable(file.fileName()));
        return texts;
    }

    QString m_folder;
    QString m_language;
    mutable QHash<QString, QHash<QString, QString>> m_tables;
    mutable BundleImages m_images;
    mutable InterfaceLoader m_interfaces;
};

} // namespace

std::unique_ptr<Bundle> makeFolderBundle(const QString &folder) {
    return std::make_unique<FolderBundle>(folder);
}

} // namespace platform
