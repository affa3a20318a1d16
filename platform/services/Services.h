// The only access to the services of the desktop.
#pragma once

#include "platform/services/bundle/Bundle.h"
#include "platform/services/bus/Notifications.h"
#include "platform/services/runloop/RunLoop.h"
#include "platform/services/storage/UserDefaults.h"
#include "platform/services/workspace/Workspace.h"

#include <QVariantMap>
#include <memory>

namespace platform {

// A program fills it once at its start, before it loads a plug-in; a test fills its own. Every pointer must
// be set while any user of services() exists.
struct Services {
    std::unique_ptr<DistributedNotificationCenter> distributedNotifications;
    std::unique_ptr<NotificationCenter> notifications;
    std::unique_ptr<RunLoop> runLoop;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<UserDefaults> userDefaults;
    // The plug-in's own resources.
    std::unique_ptr<Bundle> pluginBundle;
    // Values that code on the main thread stores for later code on the main thread.
    QVariantMap mainThreadDictionary;
};

[[nodiscard]] Services &services();
// Replaces all services and destroys the old ones. The last ones are never destroyed, because the process may
// end at any time.
void setServices(Services services);

// Options of a desktop program.
struct DesktopOptions {
    QString bundleIdentifier; // of this program: its name on the bus and its defaults domain
    // The folder that contains the absolute bundle paths. If empty: $PARLO_ROOT; without it "parlo" in the
    // user's data folder, then the folder of this library, beside which an installation has its bundles.
    QString rootFolder;
    QString defaultsFolder;  // folder of the defaults; empty: the desktop's configuration folder
    QString documentsFolder; // empty: the desktop's Documents folder
};
// The services of a real desktop. Needs an application object. Claims the bundle identifier on the session
// bus when the event loop first runs, or once a bus is available, unless another process owns the name.
[[nodiscard]] Services makeDesktopServices(const DesktopOptions &options);

} // namespace platform
