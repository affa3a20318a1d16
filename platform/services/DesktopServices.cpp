// Assembles the services of a real desktop.
#include "platform/services/Services.h"
#include "platform/services/bus/DesktopNotifications.h"
#include "platform/services/bus/SessionBus.h"
#include "platform/services/runloop/QtRunLoop.h"
#include "platform/services/storage/FileUserDefaults.h"
#include "platform/services/workspace/DesktopWorkspace.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <dlfcn.h>

namespace platform {

namespace {

const QString installedResources =
    u"/Users/Shared/ParloMeetingsOutlookPlugin/ParloMeetings.bundle/Contents/Resources"_s;

// A package may be unpacked anywhere.
QString folderOfThisLibrary() {
    static const char inThisLibrary = 0;
    Dl_info library{};
    return dladdr(&inThisLibrary, &library) ? QFileInfo(QFile::decodeName(library.dli_fname)).canonicalPath()
                                            : QString();
}

QStringList rootsOf(const DesktopOptions &options) {
    if (!options.rootFolder.isEmpty())
        return {options.rootFolder};
    const QString fromEnvironment = qEnvironmentVariable("PARLO_ROOT");
    if (!fromEnvironment.isEmpty())
        return {fromEnvironment};
    return {QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/parlo"_s,
            folderOfThisLibrary()};
}

QString defaultsFolderOf(const DesktopOptions &options) {
    if (!options.defaultsFolder.isEmpty())
        return options.defaultsFolder;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/parlo"_s;
}

} // namespace

Services makeDesktopServices(const DesktopOptions &options) {
    auto observers = std::make_shared<ObserverList<TextMap>>();
    auto bus = std::make_shared<SessionBus>(
        options.bundleIdentifier,
        [observers](const QString &name, const TextMap &userInfo) { observers->deliver(name, userInfo); });
    auto workspace = std::make_unique<DesktopWorkspace>(bus, rootsOf(options), options.documentsFolder);
    const QString resources =
        options.pluginResources.isEmpty() ? workspace->resolve(installedResources) : options.pluginResources;

    Services desktop;
    desktop.distributedNotifications = std::make_unique<DesktopNotificationCenter>(bus, observers);
    desktop.notifications = std::make_unique<NotificationCenter>();
    desktop.runLoop = std::make_unique<QtRunLoop>();
    desktop.workspace = std::move(workspace);
    desktop.userDefaults =
        std::make_unique<FileUserDefaults>(defaultsFolderOf(options), options.bundleIdentifier);
    desktop.pluginBundle = makeFolderBundle(resources);
    return desktop;
}

} // namespace platform
