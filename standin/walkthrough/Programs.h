// The programs beside the host that take part in a session.
#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QString>

namespace walkthrough {

// The plug-in agent, which a desktop starts at log-in. Ends with the object.
class AgentProcess {
public:
    ~AgentProcess();
    // Starts it from its bundle and waits until it is on the bus. Returns false on failure.
    bool start();

private:
    QProcess m_process;
};

// The meeting client, which the user launches.
class RunningClient {
public:
    // Clients launched later keep their meetings in that file.
    explicit RunningClient(QString dataFile);
    // Tells the client to end.
    ~RunningClient();
    [[nodiscard]] static bool isRunning();
    // Gives it a rule for its answers, or an order.
    static void tell(const QString &rule);
    // Tells it to end and waits until it has.
    static void quit();
    // A meeting as the file has it; empty if there is no such meeting.
    [[nodiscard]] QJsonObject meeting(const QString &key) const;

private:
    QString m_dataFile;
};

} // namespace walkthrough
