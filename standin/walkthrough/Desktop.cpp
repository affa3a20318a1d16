#include "standin/walkthrough/Desktop.h"

#include "platform/services/Services.h"
#include "standin/meetingclient/ClientLink.h"
#include "standin/walkthrough/Walk.h"

#include <QFile>
#include <QJsonDocument>

namespace walkthrough {

namespace {
const QString clientIdentifier = QStringLiteral("com.parlo.meetings");
constexpr int startMilliseconds = 20000;

const QString agentIdentifier = QStringLiteral("com.parlo.vOutlookPluginAgent");

bool onTheBus(const QString &identifier) {
    return platform::services().workspace->runningApplications().contains(identifier);
}
} // namespace

PrivateBus::PrivateBus() {
    m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                    QStringLiteral("--print-address=1")});
    if (m_daemon.waitForStarted(startMilliseconds))
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(startMilliseconds)) {
        }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    if (m_address.isEmpty())
        m_error = QStringLiteral("The message bus daemon could not be started: %1. Install the package dbus.")
                      .arg(m_daemon.errorString());
}

PrivateBus::~PrivateBus() {
    m_daemon.kill();
    m_daemon.waitForFinished(startMilliseconds);
}

AgentProcess::~AgentProcess() {
    m_process.kill();
    m_process.waitForFinished(startMilliseconds);
}

bool AgentProcess::start() {
    const platform::Workspace &workspace = *platform::services().workspace;
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(workspace.executablePath(workspace.pathForBundleIdentifier(agentIdentifier)),
                    QStringList());
    return m_process.waitForStarted(startMilliseconds) &&
           Walk::waitFor([] { return onTheBus(agentIdentifier); }, startMilliseconds);
}

RunningClient::RunningClient(QString dataFile)
    : m_dataFile(std::move(dataFile)) {
    qputenv("PARLO_CLIENT_DATA", m_dataFile.toUtf8());
}

RunningClient::~RunningClient() {
    quit();
}

void RunningClient::tell(const QString &rule) {
    platform::services().distributedNotifications->post(meetingclient::controlNotification, QString(),
                                                        {{meetingclient::controlRuleKey, rule}}, true);
}

void RunningClient::quit() {
    tell(meetingclient::controlExit);
    Walk::waitFor([] { return !isRunning(); });
}

bool RunningClient::isRunning() {
    return onTheBus(clientIdentifier);
}

QJsonObject RunningClient::meeting(const QString &key) const {
    QFile file(m_dataFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    return root.value(QStringLiteral("meetings")).toObject().value(key).toObject();
}

} // namespace walkthrough
