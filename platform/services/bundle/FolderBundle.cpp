// A bundle as a folder: texts by language, images and interface descriptions.
#include "platform/Literals.h"
#include "platform/services/bundle/Bundle.h"
#include "platform/services/bundle/BundleImages.h"
#include "platform/services/bundle/InterfaceLoader.h"
#include "platform/services/bundle/StringsTable.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QWidget>

namespace platform {

namespace {

const QString baseLanguage = u"en"_s;

// The names of folders that fit a language, best first: "de" also fits "de-AT". The script is added, because
// the territory may imply it ("zh-CN" is "zh-Hans", "zh-TW" is not).
QStringList candidatesFor(const QString &language) {
    const QLocale locale(language);
    const QString code = QLocale::languageToCode(locale.language());
    const QString script = QLocale::scriptToCode(locale.script());
    return {language, code + QLatin1Char('-') + script, code};
}

class FolderBundle : public Bundle {
public:
    FolderBundle(const QString &folder, const QStringList &preferredLanguages)
        : m_folder(folder)
        , m_language(chooseLanguage(preferredLanguages))
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

    // A language may have its own copy of a description that contains texts.
    std::unique_ptr<QWidget> loadInterface(const QString &name) const override {
        for (const QString &folder : {folderOf(m_language), m_folder}) {
            const QString path = folder + QLatin1Char('/') + name + QLatin1String(".ui");
            if (QFileInfo(path).isFile())
                return m_interfaces.load(path);
        }
        return nullptr;
    }

private:
    [[nodiscard]] QString folderOf(const QString &language) const {
        return m_folder + QLatin1Char('/') + language + QLatin1String(".lproj");
    }

    [[nodiscard]] QString chooseLanguage(const QStringList &preferred) const {
        for (const QString &language : preferred) {
            for (const QString &candidate : candidatesFor(language)) {
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

std::unique_ptr<Bundle> makeFolderBundle(const QString &folder, const QStringList &preferredLanguages) {
    return std::make_unique<FolderBundle>(
        folder, preferredLanguages.isEmpty() ? QLocale::system().uiLanguages() : preferredLanguages);
}

} // namespace platform
