#include "standin/agent/PluginAgent.h"

#include "platform/services/Services.h"
#include "platform/services/propertylist/PropertyList.h"
#include "standin/support/BusNames.h"

namespace pluginagent {

namespace names = standin::names;

namespace {

const QString installPathKey = u"installPath"_s;
const QString everybodysClient = u"/Applications/Parlo Meetings.app"_s;
const QString ownClient = // below the home folder
    u"/Library/Application Support/Parlo Meetings/Parlo Meetings.app"_s;
const QString startUrl = u"velamtg://meetings.parlo.example/start"_s;

enum class Request { ClientVersion = 1, LaunchClient = 2 };

// The client's bundle, searched in the places where the plug-in searches it; "" if there is none.
QString clientBundle() {
    const platform::Services &services = platform::services();
    const QString chosen = rt::textValue(services.userDefaults->valueInDomain(names::client, installPathKey));
    const QString own = services.workspace->homeFolder() + ownClient;
    for (const QString &path : {chosen, everybodysClient, own})
        if (!path.isEmpty() && services.workspace->isFilePackage(path))
            return path;
    return services.workspace->pathForBundleIdentifier(names::client);
}

} // namespace

PluginAgent::PluginAgent(QObject *parent)
    : QObject(parent)
    , m_observer(platform::services().distributedNotifications->addObserver(
          names::requestsToAgent,
          [](const QString &, const platform::TextMap &userInfo) { onRequest(userInfo); })) {}

PluginAgent::~PluginAgent() {
    platform::services().distributedNotifications->removeObserver(m_observer);
}

QString PluginAgent::clientVersion() {
    const QString bundle = clientBundle();
    if (bundle.isEmpty())
        return {};
    const QString list = platform::services().workspace->resolve(bundle) + u"/Contents/Info.plist"_s;
    return rt::textValue(rt::mapValue(platform::PropertyList::read(list)).value(u"CFBundleVersion"_s));
}

bool PluginAgent::launchClient() {
    platform::Services &services = platform::services();
    if (services.workspace->runningApplications().contains(names::client)) {
        services.distributedNotifications->post(names::activation, QString(),
                                                {{names::activationUrlKey, startUrl}}, true);
        return true;
    }
    const QString bundle = clientBundle();
    const QString executable = bundle.isEmpty() ? QString() : services.workspace->executablePath(bundle);
    return !executable.isEmpty() && services.workspace->startProcess(executable, {startUrl});
}

void PluginAgent::onRequest(const platform::TextMap &userInfo) {
    switch (userInfo.value(names::actionIdKey).toInt()) {
    case int(Request::ClientVersion): {
        const QString version = clientVersion();
        if (!version.isEmpty())
            platform::services().distributedNotifications->post(
                names::answersOfAgent, QString(),
                {{names::actionIdKey, QString::number(int(Request::ClientVersion))},
                 {names::contentKey, version}},
                true);
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
