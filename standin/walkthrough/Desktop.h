// A desktop of its own for a walk: a private session bus, folders that are thrown away, and the programs of
// the session.
#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace walkthrough {

// A session bus daemon of our own, so that neither the user's programs nor the lack of a bus matter. Ends
// with the object.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    // Empty when the daemon could not be started; error() says why, for the user.
    [[nodiscard]] const QString &address() const { return m_address; }
    [[nodiscard]] const QString &error() const { return m_error; }

private:
    QProcess m_daemon;
    QString m_address;
    QString m_error;
};

// The plug-in agent, as it runs from a log-in on. Ends with the object.
class AgentProcess {
public:
    ~AgentProcess();
    // Starts it from its bundle and waits until it is on the bus. False when that fails.
    bool start();

private:
    QProcess m_process;
};

// The meeting client that somebody has launched: it keeps its meetings in a file of the report.
class RunningClient {
public:
    // Clients that are launched from now on keep their meetings in that file.
    explicit RunningClient(QString dataFile);
    // Tells the client to end.
    ~RunningClient();
    [[nodiscard]] static bool isRunning();
    // What it is to do with its answers from now on.
    static void tell(const QString &rule);
    // Tells it to end and waits until it has.
    static void quit();
    // What its file says of a meeting; empty when there is no such meeting.
    [[nodiscard]] QJsonObject meeting(const QString &key) const;

private:
    QString m_dataFile;
};

} // namespace walkthrough
