// A desktop of its own for a walk: a private session bus, folders that are thrown away, and the programs of
// the road.
#pragma once

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

// The meeting client, started from its bundle with its data in a folder of its own.
class ClientProcess {
public:
    explicit ClientProcess(QString dataFile);
    ~ClientProcess();
    // Starts it and waits until it is on the bus. False when that fails.
    bool start(const QStringList &rules = {});
    void kill();
    [[nodiscard]] bool isRunning() const;
    // Its meetings file as it is now.
    [[nodiscard]] QByteArray data() const;

private:
    QString m_dataFile;
    QProcess m_process;
};

} // namespace walkthrough
