#include "standin/walkthrough/Desktop.h"

#include "platform/services/Services.h"
#include "standin/meetingclient/ClientLink.h"
#include "standin/walkthrough/Report.h"

#include <QFile>
#include <QJsonDocument>

namespace walkthrough {

namespace {
const QString clientIdentifier = u"com.parlo.meetings"_s;
constexpr int startMilliseconds = 20000;

const QString agentIdentifier = u"com.parlo.vOutlookPluginAgent"_s;

bool onTheBus(const QString &identifier) {
    return platform::services().workspace->runningApplications().contains(identifier);
}
} // namespace

PrivateBus::PrivateBus() {
    m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s});
    if (m_daemon.waitForStarted(startMilliseconds))
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(startMilliseconds)) {
        }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    if (m_address.isEmpty())
        m_error = u"The message bus daemon could not be started: %1. Install the package dbus."_s.arg(
            m_daemon.errorString());
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
           Report::waitFor([] { return onTheBus(agentIdentifier); }, startMilliseconds);
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
    Report::waitFor([] { return !isRunning(); });
}

bool RunningClient::isRunning() {
    return onTheBus(clientIdentifier);
}

QJsonObject RunningClient::meeting(const QString &key) const {
    QFile file(m_dataFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    return root.value(u"meetings"_s).toObject().value(key).toObject();
}

} // namespace walkthrough
