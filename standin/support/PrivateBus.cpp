#include "standin/support/PrivateBus.h"

#include "platform/Literals.h"

namespace standin {

namespace {

constexpr int generousMilliseconds = 20'000;
constexpr const char *addressVariable = "DBUS_SESSION_BUS_ADDRESS";

} // namespace

PrivateBus::PrivateBus()
    : m_formerAddress(qgetenv(addressVariable)) {
    qputenv(addressVariable, "unix:path=" + m_folder.filePath(u"bus"_s).toLocal8Bit());
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
}

PrivateBus::~PrivateBus() {
    kill();
    if (m_formerAddress.isNull())
        qunsetenv(addressVariable);
    else
        qputenv(addressVariable, m_formerAddress);
}

QString PrivateBus::address() {
    return qEnvironmentVariable(addressVariable);
}

bool PrivateBus::start() {
    m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s,
                                      u"--address="_s + address()});
    while (m_daemon.state() != QProcess::NotRunning && !m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(generousMilliseconds))
            return false;
    }
    return m_daemon.canReadLine();
}

void PrivateBus::kill() {
    m_daemon.kill();
    m_daemon.waitForFinished(generousMilliseconds);
}

} // namespace standin
