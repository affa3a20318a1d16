// A session bus for the programs of one test or walk-through alone.
#pragma once

#include "standin/support/Child.h"

#include <QTemporaryDir>

namespace standin {

// The address stays the same however often the daemon is started, and is in this process's environment while
// the object lives. The daemon runs from start() on.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    // False if the daemon does not come up within a generous time.
    bool start();
    void kill();
    [[nodiscard]] static QString address();

private:
    QTemporaryDir m_folder;
    Child m_daemon;
    QByteArray m_formerAddress;
};

} // namespace standin
