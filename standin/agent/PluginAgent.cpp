#include "standin/agent/PluginAgent.h"

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

const QString versionAction = u"1"_s;
const QString launchAction = u"2"_s;

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

// Null without a client.
QString clientVersion() {
    const QString bundle = clientBundle();
    if (bundle.isEmpty())
        return {};
    const QString list = platform::services().workspace->resolve(bundle) + u"/Contents/Info.plist"_s;
    return rt::textValue(rt::mapValue(platform::PropertyList::read(list)).value(u"CFBundleVersion"_s));
}

void launchClient() {
    if (standin::isRunning(names::client))
        return standin::post(names::activation, {{names::activationUrlKey, startUrl}});
    platform::Workspace &workspace = *platform::services().workspace;
    const QString bundle = clientBundle();
    const QString executable = bundle.isEmpty() ? QString() : workspace.executablePath(bundle);
    if (!executable.isEmpty())
        workspace.startProcess(executable, {startUrl});
}

void onRequest(const QString &actionId) {
    if (actionId == launchAction)
        return launchClient();
    const QString version = actionId == versionAction ? clientVersion() : QString();
    if (!version.isEmpty())
        standin::post(names::answersOfAgent,
                      {{names::actionIdKey, versionAction}, {names::contentKey, version}});
}

} // namespace

PluginAgent::PluginAgent()
    : m_observer(platform::services().distributedNotifications->addObserver(
          names::requestsToAgent, [](const QString &, const platform::TextMap &userInfo) {
              onRequest(userInfo.value(names::actionIdKey));
          })) {}

PluginAgent::~PluginAgent() {
    platform::services().distributedNotifications->removeObserver(m_observer);
}

} // namespace pluginagent
