// The applications around the plug-in: the host it is in, the meeting client, the agent.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/util/sharedObject.h"

#include <QString>

inline const QString keyOutlookIdentifier = u"com.microsoft.Outlook"_s;
inline const QString kVelausIdentify = u"com.parlo.meetings"_s;
inline const QString kVelaClientAppName = u"Parlo Meetings.app"_s;
inline const QString kVelausAppLaunchPath = u"/Applications/%@"_s; // of kVelaClientAppName
inline const QString kVelausUserAppLaunchPath =
    u"~/Library/Application Support/Parlo Meetings/Parlo Meetings.app"_s;
inline const QString kPathOutlookSandboxContainerDocuments =
    u"Library/Containers/com.microsoft.Outlook/Data/Documents"_s;
inline const QString kvlOutlookPluginFolder = u"ParloMeetingsOutlookPlugin"_s;
inline const QString kPathVlPluginAgent =
    u"/Users/Shared/ParloMeetingsOutlookPlugin/vOutlookPluginAgent.app"_s;
inline const QString kVelaClientStartUrl = u"velamtg://meetings.parlo.example/start"_s;

// Keeps nothing: every call looks again. Bundle paths are the system's own absolute paths. Main thread only.
class vlAppHelper : public SharedObject<vlAppHelper> {
public:
    [[nodiscard]] int macOSVersion() const;               // packed decimal: 0x1068 is 10.6.8; 0 when unknown
    [[nodiscard]] bool isSupportedOSVersion() const;      // later than 10.6.0
    [[nodiscard]] QString OutlookVersion() const;         // null when the host's bundle cannot be read
    [[nodiscard]] bool isSupportedOutlookVersion() const; // at least 14.1.4
    [[nodiscard]] bool isOutlookVersionLargeThan2016() const; // at least 15.9

    // A value of a property-list file; no value when the file cannot be read or has no such key.
    [[nodiscard]] rt::Value objectForPropertyListKey(const QString &key, const QString &filePath) const;
    [[nodiscard]] bool isAppInstalledWithBundleIdentifier(const QString &identifier) const;
    [[nodiscard]] bool isAppRunningWithBundleIdentifier(const QString &identifier) const;
    void launchApplicationWithBundleIdentifier(const QString &identifier) const; // asynchronous
    void launchOutlookApp() const { launchApplicationWithBundleIdentifier(keyOutlookIdentifier); }
    [[nodiscard]] bool isOutlookRunning() const {
        return isAppRunningWithBundleIdentifier(keyOutlookIdentifier);
    }
    [[nodiscard]] bool isOutlookInstalled() const {
        return isAppInstalledWithBundleIdentifier(keyOutlookIdentifier);
    }

    // Whether the path is a folder that is an application bundle.
    [[nodiscard]] bool IsAppExist(const QString &path) const;
    [[nodiscard]] QString getVelausIdentifier() const { return kVelausIdentify; }
    [[nodiscard]] QString getVelausAppPath() const;
    // The client's bundle: where its own defaults say it is, else the usual folder, else the per-user path as
    // it is written, with its "~". Look-ups take getVelaClientBundlePath().
    [[nodiscard]] QString getVelaClientInstallPath() const;
    // The same where it lies: with the user's home folder in place of a leading "~", so that a client that
    // one user has installed for himself is found.
    [[nodiscard]] QString getVelaClientBundlePath() const;
    // The client's executable, null when it has none; tells whether its bundle exists.
    [[nodiscard]] QString getVelausLaunchPath(bool &exists) const;
    [[nodiscard]] bool isVelausInstalled() const;
    [[nodiscard]] bool isVelaRunning() const { return isAppRunningWithBundleIdentifier(kVelausIdentify); }
    // Brings a running client to the front with the URL.
    void walkWithAlreadyRunningVelaus(const QString &url) const;
    // Starts the client, or brings the running one to the front. Whether a new process was started.
    bool LaunchVelaClient() const;

    [[nodiscard]] QString getOutlookSandboxContainerVelaPluginPath() const;
    [[nodiscard]] QString getVlPluginVersion() const; // the agent's; null when it is not there
};
