#include "platform/services/bundle/InterfaceLoader.h"

#include "platform/Literals.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUiLoader>
#include <QWidget>
#include <QXmlStreamReader>

namespace platform {

namespace {

// Checked first, because the loader would build an incomplete window from a truncated file or log a second
// message.
QString xmlErrorOf(const QByteArray &content) {
    QXmlStreamReader reader(content);
    if (reader.readNextStartElement() && reader.name() != QLatin1String("ui"))
        return u"it is not an interface description"_s;
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? reader.errorString() : QString();
}

// The loader searches each library path for widget plug-ins and loads all of them with their dependencies.
// The toolkit's own plug-ins need a complete second toolkit: 6 MB and 8 ms. Our descriptions use no plug-ins,
// so the loader is made while the library paths are empty.
std::unique_ptr<QUiLoader> makeLoaderWithoutPlugins() {
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    auto loader = std::make_unique<QUiLoader>();
    QCoreApplication::setLibraryPaths(paths);
    return loader;
}

} // namespace

InterfaceLoader::InterfaceLoader(const QString &folder)
    : m_folder(folder) {}

InterfaceLoader::~InterfaceLoader() = default;

QByteArray InterfaceLoader::contentOf(const QString &path) {
    const auto known = m_contents.constFind(path);
    if (known != m_contents.constEnd())
        return *known;
    QFile file(path);
    QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QString error = xmlErrorOf(content);
    if (!error.isNull()) {
        qWarning("interface description %s: %s", qPrintable(path), qPrintable(error));
        content.clear();
    }
    m_contents.insert(path, content);
    return content;
}

std::unique_ptr<QWidget> InterfaceLoader::load(const QString &path) {
    QByteArray content = contentOf(path);
    if (content.isEmpty())
        return nullptr;
    if (!m_loader) {
        m_loader = makeLoaderWithoutPlugins();
        m_loader->setWorkingDirectory(QDir(m_folder));
    }
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    std::unique_ptr<QWidget> widget(m_loader->load(&buffer));
    if (!widget)
        qWarning("interface description %s: %s", qPrintable(path), qPrintable(m_loader->errorString()));
    return widget;
}

} // namespace platform
