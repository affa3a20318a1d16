#include "platform/services/Services.h"

#include "platform/services/bus/DesktopNotifications.h"
#include "platform/services/runloop/QtRunLoop.h"
#include "platform/services/storage/FileUserDefaults.h"
#include "platform/services/workspace/DesktopWorkspace.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <dlfcn.h>
#include <utility>

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

Services &services() {
    static auto *current = new Services;
    return *current;
}

void setServices(Services replacement) {
    // The old services are destroyed after the new ones are set, because their destruction may call a
    // service.
    const Services old = std::exchange(services(), std::move(replacement));
}

Services makeDesktopServices(const DesktopOptions &options) {
    auto center = std::make_unique<DesktopNotificationCenter>(options.bundleIdentifier);
    auto workspace =
        std::make_unique<DesktopWorkspace>(center->bus(), rootsOf(options), options.documentsFolder);

    Services desktop;
    desktop.pluginBundle = makeFolderBundle(workspace->resolve(installedResources));
    desktop.distributedNotifications = std::move(center);
    desktop.notifications = std::make_unique<NotificationCenter>();
    desktop.runLoop = std::make_unique<QtRunLoop>();
    desktop.workspace = std::move(workspace);
    desktop.userDefaults =
        std::make_unique<FileUserDefaults>(defaultsFolderOf(options), options.bundleIdentifier);
    return desktop;
}

} // namespace platform
