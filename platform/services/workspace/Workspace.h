// The applications, bundles and folders of the desktop.
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

// Paths given to and answered by this class are the system's own absolute paths ("/Applications/Some.app");
// resolve() turns one into the path where it lies on this machine, below a root folder. The other services
// take resolved or plain paths. Nothing is cached: every call looks again. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;

    // Below a root folder when `path` begins with "/Applications/" or "/Users/Shared/"; otherwise the path
    // itself. Of several root folders the first that has the path; if none has it, the first, which is the
    // one that the user may write to. A leading "~" is not expanded.
    [[nodiscard]] virtual QString resolve(const QString &path) const = 0;
    // The (unresolved) path of the application with that bundle identifier: first among the running ones that
    // have announced it, else among the bundles in "/Applications" and "/Users/Shared". A null text when
    // there is none.
    [[nodiscard]] virtual QString pathForBundleIdentifier(const QString &identifier) const = 0;
    // Whether the (unresolved) path is a folder that is an application bundle: it has Contents/Info.plist.
    [[nodiscard]] virtual bool isFilePackage(const QString &path) const = 0;
    // The (resolved) path of the bundle's executable: CFBundleExecutable below Contents/MacOS, when the file
    // is there and executable. A null text otherwise.
    [[nodiscard]] virtual QString executablePath(const QString &bundlePath) const = 0;
    // The bundle identifiers of the applications that run now: the well-known names owned on the session bus.
    [[nodiscard]] virtual QStringList runningApplications() const = 0;
    // Starts the application asynchronously; false when there is no such application. Notifications posted
    // from now on reach it.
    virtual bool launchApplication(const QString &identifier) = 0;
    // Starts a process of the (resolved) executable, detached; whether it started.
    virtual bool startProcess(const QString &executable, const QStringList &arguments) = 0;
    // Packed decimal: 0x1068 is 10.6.8. 0 when it cannot be read. A Linux desktop has no version in this
    // numbering: kernel and distribution count differently, and some distributions not at all. Those who ask
    // want to know whether the services that came with that version are there; here this library brings them,
    // so the desktop answers the version to which its services correspond, 0x1068, on every system that it
    // runs on.
    [[nodiscard]] virtual int systemVersion() const = 0;
    // The user's home and Documents folders (plain paths, existing or not).
    [[nodiscard]] virtual QString homeFolder() const = 0;
    [[nodiscard]] virtual QString documentsFolder() const = 0;
    // Shows a folder in the desktop's file browser; false when that cannot be done.
    virtual bool openInFileBrowser(const QString &folder) = 0;
    // Brings this process to the front when it is not.
    virtual void activateThisApplication() = 0;
};

} // namespace platform
