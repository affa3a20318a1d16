#include "standin/walkthrough/Desktop.h"

#include "platform/services/Services.h"
#include "standin/walkthrough/Walk.h"

#include <QFile>

namespace walkthrough {

namespace {
const QString clientIdentifier = QStringLiteral("com.parlo.meetings");
constexpr int startMilliseconds = 20000;

bool onTheBus() {
    return platform::services().workspace->runningApplications().contains(clientIdentifier);
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

ClientProcess::ClientProcess(QString dataFile)
    : m_dataFile(std::move(dataFile)) {}

ClientProcess::~ClientProcess() {
    kill();
}

bool ClientProcess::start(const QStringList &rules) {
    const platform::Workspace &workspace = *platform::services().workspace;
    const QString bundle = workspace.pathForBundleIdentifier(clientIdentifier);
    QStringList arguments{QStringLiteral("--background"), QStringLiteral("--data"), m_dataFile};
    for (const QString &rule : rules)
        arguments << QStringLiteral("--rule") << rule;
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(workspace.executablePath(bundle), arguments);
    return m_process.waitForStarted(startMilliseconds) && Walk::waitFor(onTheBus, startMilliseconds);
}

void ClientProcess::kill() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(startMilliseconds);
    Walk::waitFor([] { return !onTheBus(); });
}

bool ClientProcess::isRunning() const {
    return m_process.state() == QProcess::Running && onTheBus();
}

QByteArray ClientProcess::data() const {
    QFile file(m_dataFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace walkthrough
