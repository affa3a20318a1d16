// The one place through which everything that the desktop gives is reached.
#pragma once

#include "platform/services/bundle/Bundle.h"
#include "platform/services/bus/Notifications.h"
#include "platform/services/runloop/RunLoop.h"
#include "platform/services/storage/UserDefaults.h"
#include "platform/services/workspace/Workspace.h"

#include <QVariantMap>
#include <memory>

namespace platform {

// Filled once by a program at its start, before a plug-in is loaded, or by a test for itself. Every pointer
// is set while anything that uses services() lives.
struct Services {
    std::unique_ptr<DistributedNotificationCenter> distributedNotifications;
    std::unique_ptr<NotificationCenter> notifications;
    std::unique_ptr<RunLoop> runLoop;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<UserDefaults> userDefaults;
    // The plug-in's own resources.
    std::unique_ptr<Bundle> pluginBundle;
    // Values that code on the main thread leaves for code that runs there later.
    QVariantMap mainThreadDictionary;
};

[[nodiscard]] Services &services();
// Replaces all services; the old ones are destroyed, the last ones never (the process may end at any time).
void setServices(Services services);

// What a desktop program starts from.
struct DesktopOptions {
    QString bundleIdentifier; // of this program: its name on the bus and its defaults domain
    // Below which absolute bundle paths lie. Empty: $PARLO_ROOT; without it the user's own data folder
    // "parlo", then the folder of this library, beside which an installation has its bundles.
    QString rootFolder;
    QString defaultsFolder;  // where defaults are kept; empty: the desktop's configuration folder
    QString documentsFolder; // empty: the desktop's Documents folder
    QString pluginResources; // folder of the plug-in's resources; empty: the installed one below a root
};
// The services of a real desktop. Needs an application object. Claims the bundle identifier on the session
// bus when the event loop first runs, or as soon as there is a bus; a name that another process holds is left
// to it.
[[nodiscard]] Services makeDesktopServices(const DesktopOptions &options);

} // namespace platform
