// What sections start beside themselves.
#pragma once

#include "bench/table/BareBus.h"
#include "platform/Literals.h"
#include "standin/support/PrivateBus.h"

#include <QProcess>
#include <QTemporaryDir>

namespace bench {

// A desktop that is thrown away: folders of its own, and a bus on which this process and those that it starts
// meet. Ends the process when there is none.
class PrivateDesktop {
public:
    PrivateDesktop();
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    standin::PrivateBus m_bus;
};

// This program again, as one of the named parts, ready when it has said so. Killed with the object.
class Part {
public:
    explicit Part(const QString &name);
    ~Part();

private:
    QProcess m_process;
};
// What the part says.
void tellReady();

// There and back, on the bus alone, with the other process.
class BareEcho {
public:
    void roundTrip(const QByteArray &content);

private:
    Part m_other{u"echo-bare"_s};
    BareBus m_bus{"BenchAnswer"};
};

} // namespace bench
