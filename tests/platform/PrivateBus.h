// A session bus of a test's own.
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <functional>

// The address stays the same however often the daemon is started, and is in this process's environment while
// the object lives. The daemon runs from start() on.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    // False when it is not there after a generous while.
    bool start();
    void kill();
    // Sends a signal of the given arguments, each in dbus-send's notation, and waits until that is done.
    bool sendSignal(const QString &member, const QStringList &arguments);

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QByteArray m_formerAddress;
};

// Runs the event loop until the condition holds; false when it does not within a generous while.
bool waitFor(const std::function<bool()> &condition);
