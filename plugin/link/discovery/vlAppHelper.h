// The applications around the plug-in: its host, the meeting client and the agent.
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

// Caches nothing: every call looks again. Bundle paths are the system's own absolute paths. Main thread only.
class vlAppHelper : public SharedObject<vlAppHelper> {
public:
    [[nodiscard]] int macOSVersion() const;               // packed decimal: 0x1068 is 10.6.8; 0 if unknown
    [[nodiscard]] bool isSupportedOSVersion() const;      // later than 10.6.0
    [[nodiscard]] QString OutlookVersion() const;         // null if the host's bundle is unreadable
    [[nodiscard]] bool isSupportedOutlookVersion() const; // at least 14.1.4
    [[nodiscard]] bool isOutlookVersionLargeThan2016() const; // at least 15.9

    // A value of a property-list file; no value if the file is unreadable or lacks the key.
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

    // Whether the path names the folder of an application bundle.
    [[nodiscard]] bool IsAppExist(const QString &path) const;
    [[nodiscard]] QString getVelausIdentifier() const { return kVelausIdentify; }
    [[nodiscard]] QString getVelausAppPath() const;
    // The path of the client's bundle: from the client's defaults, else the usual folder, else the per-user
    // path with an unexpanded "~". Use getVelaClientBundlePath() to look into it.
    [[nodiscard]] QString getVelaClientInstallPath() const;
    // The same path with a leading "~" replaced by the user's home folder, so that it finds a client that one
    // user has installed for himself.
    [[nodiscard]] QString getVelaClientBundlePath() const;
    // The client's executable, null if it has none. Sets `exists` to whether the bundle exists.
    [[nodiscard]] QString getVelausLaunchPath(bool &exists) const;
    [[nodiscard]] bool isVelausInstalled() const;
    [[nodiscard]] bool isVelaRunning() const { return isAppRunningWithBundleIdentifier(kVelausIdentify); }
    // Brings a running client to the front with the URL.
    void walkWithAlreadyRunningVelaus(const QString &url) const;
    // Starts the client or brings the running one to the front. Returns whether it started a new process.
    bool LaunchVelaClient() const;

    [[nodiscard]] QString getOutlookSandboxContainerVelaPluginPath() const;
    [[nodiscard]] QString getVlPluginVersion() const; // the agent's version; null without an agent
};
