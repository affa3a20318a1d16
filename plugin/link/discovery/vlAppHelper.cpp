#include "plugin/link/discovery/vlAppHelper.h"

#include "platform/services/Services.h"
#include "platform/services/propertylist/PropertyList.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "plugin/util/versionRule.h"

#include <QStringList>

namespace {

const QString placeholder = u"%@"_s;
const QString infoPlistOfBundle = u"/Contents/Info.plist"_s;
const QString keyShortVersion = u"CFBundleShortVersionString"_s;
const QString homePrefix = u"~/"_s;
const QString keyInstallPath = u"installPath"_s;

constexpr int lastUnsupportedSystem = 0x1060; // 10.6.0
constexpr DottedVersion oldestSupportedHost{14, 1, 4};
constexpr DottedVersion firstHostAbove2016{15, 9, 0};

platform::Workspace &workspace() {
    return *platform::services().workspace;
}

} // namespace

int vlAppHelper::macOSVersion() const {
    return workspace().systemVersion();
}

bool vlAppHelper::isSupportedOSVersion() const {
    return macOSVersion() > lastUnsupportedSystem;
}

QString vlAppHelper::OutlookVersion() const {
    const QString path = workspace().pathForBundleIdentifier(keyOutlookIdentifier);
    if (path.isEmpty())
        return {};
    return rt::textValue(objectForPropertyListKey(keyShortVersion, path + infoPlistOfBundle));
}

bool vlAppHelper::isSupportedOutlookVersion() const {
    return isVersionAtLeast(OutlookVersion(), oldestSupportedHost);
}

bool vlAppHelper::isOutlookVersionLargeThan2016() const {
    return isVersionAtLeast(OutlookVersion(), firstHostAbove2016);
}

rt::Value vlAppHelper::objectForPropertyListKey(const QString &key, const QString &filePath) const {
    const rt::Value list = platform::PropertyList::read(workspace().resolve(filePath));
    return rt::mapValue(list).value(key);
}

bool vlAppHelper::isAppInstalledWithBundleIdentifier(const QString &identifier) const {
    return !workspace().pathForBundleIdentifier(identifier).isEmpty();
}

bool vlAppHelper::isAppRunningWithBundleIdentifier(const QString &identifier) const {
    return workspace().runningApplications().contains(identifier);
}

void vlAppHelper::launchApplicationWithBundleIdentifier(const QString &identifier) const {
    workspace().launchApplication(identifier);
}

bool vlAppHelper::IsAppExist(const QString &path) const {
    return !path.isEmpty() && workspace().isFilePackage(path);
}

QString vlAppHelper::getVelausAppPath() const {
    QString path = kVelausAppLaunchPath;
    return path.replace(placeholder, kVelaClientAppName);
}

QString vlAppHelper::getVelaClientInstallPath() const {
    const rt::Value installed =
        platform::services().userDefaults->valueInDomain(kVelausIdentify, keyInstallPath);
    const QString installPath = rt::textValue(installed);
    if (IsAppExist(installPath))
        return installPath;
    return IsAppExist(getVelausAppPath()) ? getVelausAppPath() : kVelausUserAppLaunchPath;
}

QString vlAppHelper::getVelaClientBundlePath() const {
    const QString path = getVelaClientInstallPath();
    return path.startsWith(homePrefix) ? workspace().homeFolder() + path.mid(homePrefix.size() - 1) : path;
}

QString vlAppHelper::getVelausLaunchPath(bool &exists) const {
    exists = isVelausInstalled();
    return workspace().executablePath(getVelaClientBundlePath());
}

bool vlAppHelper::isVelausInstalled() const {
    return IsAppExist(getVelaClientBundlePath());
}

void vlAppHelper::walkWithAlreadyRunningVelaus(const QString &url) const {
    constexpr bool deliverImmediately = true;
    platform::services().distributedNotifications->post(kNoti_ActivateVelaApplicationExternally, QString(),
                                                        {{kParam_ActivateVelaApplicationExternally, url}},
                                                        deliverImmediately);
}

bool vlAppHelper::LaunchVelaClient() const {
    bool exists = false;
    const QString executable = getVelausLaunchPath(exists);
    if (executable.isNull() || !exists)
        return false;
    if (!isVelaRunning())
        return workspace().startProcess(executable, {kVelaClientStartUrl});
    walkWithAlreadyRunningVelaus(kVelaClientStartUrl);
    return false;
}

QString vlAppHelper::getOutlookSandboxContainerVelaPluginPath() const {
    return QStringList{workspace().homeFolder(), kPathOutlookSandboxContainerDocuments,
                       kvlOutlookPluginFolder}
        .join(u'/');
}

QString vlAppHelper::getVlPluginVersion() const {
    return rt::textValue(objectForPropertyListKey(keyShortVersion, kPathVlPluginAgent + infoPlistOfBundle));
}
