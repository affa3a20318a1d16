#include "standin/walkthrough/ProcessKill.h"

#include "platform/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <csignal>
#include <unistd.h>

namespace walkthrough {

namespace {

const QStringList names = {u"host"_s, u"client"_s, u"agent"_s, u"bus"_s};
const QStringList programs = {QString(), u"parlo-client"_s, u"parlo-agent"_s, u"dbus-daemon"_s};

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Whether the process belongs to this walk-through and not to another one on the machine: its environment has
// this bus, or it is the bus that this process's parent has started.
bool isOfThisSession(const QString &process) {
    const QByteArray bus = "DBUS_SESSION_BUS_ADDRESS=" + qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (contentOf(process + u"/environ"_s).split('\0').contains(bus))
        return true;
    const QByteArray state = contentOf(process + u"/stat"_s);
    return state.mid(state.lastIndexOf(')') + 2).split(' ').value(1).toInt() == getppid();
}

int killAll(const QString &program) {
    int killed = 0;
    const QDir processes(u"/proc"_s);
    for (const QString &entry : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const int id = entry.toInt();
        const QString process = processes.filePath(entry);
        if (id > 0 && QFileInfo(process + u"/exe"_s).symLinkTarget().section(u'/', -1) == program &&
            isOfThisSession(process))
            killed += ::kill(id, SIGKILL) == 0;
    }
    return killed;
}

} // namespace

std::optional<ProcessKill> ProcessKill::parse(const QString &text) {
    const qsizetype target = names.indexOf(text.section(u':', 0, 0));
    const int at = text.section(u':', 1).toInt();
    if (target < 0 || at < 1)
        return std::nullopt;
    return ProcessKill{Target(target), at};
}

int ProcessKill::execute() const {
    if (target == Target::Host)
        std::raise(SIGKILL);
    return killAll(programs[int(target)]);
}

} // namespace walkthrough
