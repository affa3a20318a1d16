#include "platform/services/DesktopNotifications.h"
#include "platform/services/DesktopWorkspace.h"
#include "platform/services/FileUserDefaults.h"
#include "platform/services/QtRunLoop.h"
#include "platform/services/Services.h"
#include "platform/services/SessionBus.h"

#include <QStandardPaths>

namespace platform {

namespace {

const QString installedRoot = QStringLiteral("/opt/parlo");
const QString installedResources =
    QStringLiteral("/Users/Shared/ParloMeetingsOutlookPlugin/ParloMeetings.bundle/Contents/Resources");

QString rootOf(const DesktopOptions &options) {
    if (!options.rootFolder.isEmpty())
        return options.rootFolder;
    const QString fromEnvironment = qEnvironmentVariable("PARLO_ROOT");
    return fromEnvironment.isEmpty() ? installedRoot : fromEnvironment;
}

QString defaultsFolderOf(const DesktopOptions &options) {
    if (!options.defaultsFolder.isEmpty())
        return options.defaultsFolder;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/parlo");
}

} // namespace

Services makeDesktopServices(const DesktopOptions &options) {
    auto observers = std::make_shared<ObserverList<TextMap>>();
    auto bus = std::make_shared<SessionBus>(
        options.bundleIdentifier,
        [observers](const QString &name, const TextMap &userInfo) { observers->deliver(name, userInfo); });
    auto workspace = std::make_unique<DesktopWorkspace>(bus, rootOf(options), options.documentsFolder);
    const QString resources =
        options.pluginResources.isEmpty() ? workspace->resolve(installedResources) : options.pluginResources;

    Services desktop;
    desktop.distributedNotifications = std::make_unique<DesktopNotificationCenter>(bus, observers);
    desktop.notifications = std::make_unique<NotificationCenter>();
    desktop.runLoop = std::make_unique<QtRunLoop>();
    desktop.workspace = std::move(workspace);
    desktop.userDefaults =
        std::make_unique<FileUserDefaults>(defaultsFolderOf(options), options.bundleIdentifier);
    desktop.propertyLists = makePropertyLists();
    desktop.htmlImporter = makeHtmlImporter();
    desktop.pluginBundle = makeFolderBundle(resources);
    return desktop;
}

} // namespace platform
