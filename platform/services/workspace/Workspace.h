// The applications, bundles and folders of the desktop.
#pragma once

#include "platform/Literals.h"

#include <QString>
#include <QStringList>

namespace platform {

// The folders (with a trailing "/") of the system's own paths, which lie below a root folder on this machine.
inline const QStringList bundleFolders{u"/Applications/"_s, u"/Users/Shared/"_s};
// The path below `root` if it begins with one of those folders; otherwise, or with an empty root, the path
// itself.
inline QString belowRoot(const QString &root, const QString &path) {
    for (const QString &folder : bundleFolders) {
        if (path.startsWith(folder))
            return root + path;
    }
    return path;
}

// Takes and returns the system's own absolute paths ("/Applications/Some.app"); resolve() maps one to the
// path on this machine, below a root folder. The other services take resolved or plain paths. Caches nothing:
// every call looks again. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;

    // The path below a root folder if `path` begins with one of `bundleFolders`; otherwise the path itself.
    // Uses the first root folder that has the path, else the first root folder, which is writable for the
    // user. Does not expand a leading "~".
    [[nodiscard]] virtual QString resolve(const QString &path) const = 0;
    // The (unresolved) path of the application with that bundle identifier: first among the running ones that
    // have announced it, else among the bundles in "/Applications" and "/Users/Shared". Null if there is
    // none.
    [[nodiscard]] virtual QString pathForBundleIdentifier(const QString &identifier) const = 0;
    // Whether the (unresolved) path names an application bundle: a folder with Contents/Info.plist.
    [[nodiscard]] virtual bool isFilePackage(const QString &path) const = 0;
    // The (resolved) path of the bundle's executable: CFBundleExecutable below Contents/MacOS, if the file
    // exists and is executable; else null.
    [[nodiscard]] virtual QString executablePath(const QString &bundlePath) const = 0;
    // The bundle identifiers of the applications that run now: the well-known names owned on the session bus.
    [[nodiscard]] virtual QStringList runningApplications() const = 0;
    // Starts the application asynchronously; returns false if it does not exist. It receives notifications
    // that are posted after this call.
    virtual bool launchApplication(const QString &identifier) = 0;
    // Starts a detached process of the (resolved) executable. Returns whether it started.
    virtual bool startProcess(const QString &executable, const QStringList &arguments) = 0;
    // Packed decimal: 0x1068 is 10.6.8; 0 if unknown. A Linux desktop has no version in this numbering.
    // Callers want to know whether the services of that system version exist; this library provides them, so
    // the desktop always returns the version to which they correspond, 0x1068.
    [[nodiscard]] virtual int systemVersion() const = 0;
    // The user's home and Documents folders (plain paths, existing or not).
    [[nodiscard]] virtual QString homeFolder() const = 0;
    [[nodiscard]] virtual QString documentsFolder() const = 0;
    // Shows a folder in the desktop's file browser; false on failure.
    virtual bool openInFileBrowser(const QString &folder) = 0;
    // Brings this process to the front.
    virtual void activateThisApplication() = 0;
};

} // namespace platform
