#include "standin/walkthrough/Programs.h"

#include "platform/services/Services.h"
#include "standin/support/BusNames.h"
#include "standin/walkthrough/Report.h"

#include <QFile>
#include <QJsonDocument>

namespace walkthrough {

namespace names = standin::names;

namespace {

constexpr int startMilliseconds = 20000;

bool onTheBus(const QString &identifier) {
    return platform::services().workspace->runningApplications().contains(identifier);
}
} // namespace

AgentProcess::~AgentProcess() {
    m_process.kill();
    m_process.waitForFinished(startMilliseconds);
}

bool AgentProcess::start() {
    const platform::Workspace &workspace = *platform::services().workspace;
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(workspace.executablePath(workspace.pathForBundleIdentifier(names::agent)), QStringList());
    return m_process.waitForStarted(startMilliseconds) &&
           Report::waitFor([] { return onTheBus(names::agent); }, startMilliseconds);
}

RunningClient::RunningClient(QString dataFile)
    : m_dataFile(std::move(dataFile)) {
    qputenv("PARLO_CLIENT_DATA", m_dataFile.toUtf8());
}

RunningClient::~RunningClient() {
    quit();
}

void RunningClient::tell(const QString &rule) {
    platform::services().distributedNotifications->post(names::control, QString(),
                                                        {{names::controlRuleKey, rule}}, true);
}

void RunningClient::quit() {
    tell(names::controlExit);
    Report::waitFor([] { return !isRunning(); });
}

bool RunningClient::isRunning() {
    return onTheBus(names::client);
}

QJsonObject RunningClient::meeting(const QString &key) const {
    QFile file(m_dataFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    return root.value(u"meetings"_s).toObject().value(key).toObject();
}

} // namespace walkthrough
