#include "standin/agent/PluginAgent.h"

#include "platform/services/Services.h"

namespace pluginagent {

namespace {

const QString requestChannel = QStringLiteral("vOutlookPluginToVOutlookPluginAgent");
const QString answerChannel = QStringLiteral("vOutlookPluginAgentToVOutlookPlugin");
const QString actionIdKey = QStringLiteral("actionId");
const QString contentKey = QStringLiteral("content");
const QString clientIdentifier = QStringLiteral("com.parlo.meetings");
const QString installPathKey = QStringLiteral("installPath");
const QString everybodysClient = QStringLiteral("/Applications/Parlo Meetings.app");
const QString ownClient = // below the home folder
    QStringLiteral("/Library/Application Support/Parlo Meetings/Parlo Meetings.app");
const QString startUrl = QStringLiteral("velamtg://meetings.parlo.example/start");
const QString activationName = QStringLiteral("Noti_ActivateVelaApplicationExternally");
const QString activationUrlKey = QStringLiteral("Param_ActivateVelaApplicationExternally");

enum class Request { ClientVersion = 1, LaunchClient = 2 };

// Where the plug-in looks for it, so that what the plug-in finds can also be started; "" when it is nowhere.
QString clientBundle() {
    const platform::Services &services = platform::services();
    const QString chosen =
        rt::textValue(services.userDefaults->valueInDomain(clientIdentifier, installPathKey));
    const QString own = services.workspace->homeFolder() + ownClient;
    for (const QString &path : {chosen, everybodysClient, own})
        if (!path.isEmpty() && services.workspace->isFilePackage(path))
            return path;
    return services.workspace->pathForBundleIdentifier(clientIdentifier);
}

} // namespace

PluginAgent::PluginAgent(QObject *parent)
    : QObject(parent)
    , m_observer(platform::services().distributedNotifications->addObserver(
          requestChannel, [](const QString &, const platform::TextMap &userInfo) { onRequest(userInfo); })) {}

PluginAgent::~PluginAgent() {
    platform::services().distributedNotifications->removeObserver(m_observer);
}

QString PluginAgent::clientVersion() {
    const QString bundle = clientBundle();
    if (bundle.isEmpty())
        return {};
    const QString list =
        platform::services().workspace->resolve(bundle) + QStringLiteral("/Contents/Info.plist");
    return rt::textValue(rt::mapValue(platform::services().propertyLists->read(list))
                             .value(QStringLiteral("CFBundleVersion")));
}

bool PluginAgent::launchClient() {
    platform::Services &services = platform::services();
    if (services.workspace->runningApplications().contains(clientIdentifier)) {
        services.distributedNotifications->post(activationName, QString(), {{activationUrlKey, startUrl}},
                                                true);
        return true;
    }
    const QString bundle = clientBundle();
    const QString executable = bundle.isEmpty() ? QString() : services.workspace->executablePath(bundle);
    return !executable.isEmpty() && services.workspace->startProcess(executable, {startUrl});
}

void PluginAgent::onRequest(const platform::TextMap &userInfo) {
    switch (userInfo.value(actionIdKey).toInt()) {
    case int(Request::ClientVersion): {
        const QString version = clientVersion();
        if (!version.isEmpty())
            platform::services().distributedNotifications->post(
                answerChannel, QString(),
                {{actionIdKey, QString::number(int(Request::ClientVersion))}, {contentKey, version}}, true);
        break;
    }
    case int(Request::LaunchClient):
        launchClient();
        break;
    default:
        break;
    }
}

} // namespace pluginagent
