#include "platform/services/workspace/DesktopWorkspace.h"

#include "platform/services/bus/SessionBus.h"
#include "platform/services/propertylist/PropertyList.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <QWidget>
#include <algorithm>

namespace platform {

namespace {

const QString infoFile = u"/Contents/Info.plist"_s;
const QString executableFolder = u"/Contents/MacOS/"_s;
const QString identifierKey = u"CFBundleIdentifier"_s;
const QString executableKey = u"CFBundleExecutable"_s;

// A bundle is in a shared folder or in a product's folder inside one.
constexpr int searchDepth = 2;

QWidget *windowToShow() {
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->windowType() == Qt::Window && window->isVisible())
            return window;
    }
    return nullptr;
}

} // namespace

DesktopWorkspace::DesktopWorkspace(std::shared_ptr<SessionBus> bus, const QStringList &roots,
                                   const QString &documents)
    : m_bus(std::move(bus))
    , m_roots(roots)
    , m_documents(documents) {
    for (QString &root : m_roots)
        while (root.endsWith(u'/'))
            root.chop(1);
}

QString DesktopWorkspace::resolve(const QString &path) const {
    const QStringList places = everyPlaceOf(path);
    const auto found = std::find_if(places.begin(), places.end(),
                                    [](const QString &place) { return QFileInfo::exists(place); });
    return found == places.end() ? places.first() : *found;
}

QStringList DesktopWorkspace::everyPlaceOf(const QString &path) const {
    QStringList places;
    for (const QString &root : m_roots)
        places.append(belowRoot(root, path));
    return places;
}

QVariantMap DesktopWorkspace::infoOf(const QString &bundlePath) const {
    return rt::mapValue(PropertyList::read(resolve(bundlePath) + infoFile));
}

QString DesktopWorkspace::pathForBundleIdentifier(const QString &identifier) const {
    if (identifier.isEmpty())
        return {};
    if (const qint64 process = m_bus->processOwning(identifier)) {
        const QString path = bundleOfProcess(process, identifier);
        if (!path.isNull())
            return path;
    }
    for (const QString &folder : bundleFolders) {
        const QString path = bundleBelow(folder.chopped(1), identifier, searchDepth);
        if (!path.isNull())
            return path;
    }
    return {};
}

// The bundle with that identifier that contains the executable of the process.
QString DesktopWorkspace::bundleOfProcess(qint64 process, const QString &identifier) const {
    const QString executable = QFileInfo(u"/proc/%1/exe"_s.arg(process)).symLinkTarget();
    const qsizetype end = executable.lastIndexOf(executableFolder);
    if (end < 0)
        return {};
    const QString bundle = executable.first(end);
    QString path = bundle;
    for (const QString &folder : m_roots) {
        const QString root = QFileInfo(folder).canonicalFilePath();
        if (!root.isEmpty() && bundle.startsWith(root + QLatin1Char('/')))
            path = bundle.sliced(root.size());
    }
    return rt::textValue(infoOf(path).value(identifierKey)) == identifier ? path : QString();
}

QString DesktopWorkspace::bundleBelow(const QString &folder, const QString &identifier, int depth) const {
    QStringList names;
    for (const QString &place : everyPlaceOf(folder + QLatin1Char('/')))
        names += QDir(place).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names) {
        const QString path = folder + QLatin1Char('/') + name;
        const bool isBundle = isFilePackage(path);
        if (isBundle && rt::textValue(infoOf(path).value(identifierKey)) == identifier)
            return path;
        const QString deeper = isBundle || depth <= 1 ? QString() : bundleBelow(path, identifier, depth - 1);
        if (!deeper.isNull())
            return deeper;
    }
    return {};
}

bool DesktopWorkspace::isFilePackage(const QString &path) const {
    return QFileInfo(resolve(path) + infoFile).isFile();
}

QString DesktopWorkspace::executablePath(const QString &bundlePath) const {
    const QString name = rt::textValue(infoOf(bundlePath).value(executableKey));
    const QFileInfo executable(resolve(bundlePath) + executableFolder + name);
    const bool isInBundle = !name.isEmpty() && !name.contains(u'/');
    return isInBundle && executable.isFile() && executable.isExecutable() ? executable.filePath() : QString();
}

QStringList DesktopWorkspace::runningApplications() const {
    return m_bus->ownedNames();
}

bool DesktopWorkspace::launchApplication(const QString &identifier) {
    const QString path = pathForBundleIdentifier(identifier);
    const QString executable = path.isNull() ? QString() : executablePath(path);
    if (executable.isEmpty())
        return false;
    m_bus->holdUntilOwned(identifier);
    return startProcess(executable, {});
}

bool DesktopWorkspace::startProcess(const QString &executable, const QStringList &arguments) {
    if (executable.isEmpty())
        return false;
    QProcess process;
    process.setProgram(executable);
    process.setArguments(arguments);
    process.setWorkingDirectory(homeFolder());
    // The child outlives this process and must not keep our output pipe open.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

int DesktopWorkspace::systemVersion() const {
    return 0x1068;
}

QString DesktopWorkspace::homeFolder() const {
    return QDir::homePath();
}

QString DesktopWorkspace::documentsFolder() const {
    return m_documents.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                                 : m_documents;
}

bool DesktopWorkspace::openInFileBrowser(const QString &folder) {
    return QFileInfo(folder).isDir() && QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

void DesktopWorkspace::activateThisApplication() {
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()) || QApplication::activeWindow())
        return;
    QWidget *window = windowToShow();
    if (!window)
        return;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
}

} // namespace platform
