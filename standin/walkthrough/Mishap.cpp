#include "standin/walkthrough/Mishap.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <csignal>
#include <unistd.h>

namespace walkthrough {

namespace {

const QStringList names = {QStringLiteral("host"), QStringLiteral("client"), QStringLiteral("agent"),
                           QStringLiteral("bus")};
const QStringList programs = {QString(), QStringLiteral("parlo-client"), QStringLiteral("parlo-agent"),
                              QStringLiteral("dbus-daemon")};

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A program of this walk, and not of another one on the same machine: it has the walk's bus in its
// environment, or is the bus, which the same process has started that started this one.
bool isOfThisWalk(const QString &process) {
    const QByteArray bus = "DBUS_SESSION_BUS_ADDRESS=" + qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (contentOf(process + QStringLiteral("/environ")).split('\0').contains(bus))
        return true;
    const QByteArray state = contentOf(process + QStringLiteral("/stat"));
    return state.mid(state.lastIndexOf(')') + 2).split(' ').value(1).toInt() == getppid();
}

int killAll(const QString &program) {
    int killed = 0;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString &entry : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const int id = entry.toInt();
        const QString process = processes.filePath(entry);
        if (id > 0 &&
            QFileInfo(process + QStringLiteral("/exe")).symLinkTarget().section(u'/', -1) == program &&
            isOfThisWalk(process))
            killed += ::kill(id, SIGKILL) == 0;
    }
    return killed;
}

} // namespace

std::optional<Mishap> Mishap::parse(const QString &text) {
    const qsizetype whom = names.indexOf(text.section(u':', 0, 0));
    const int at = text.section(u':', 1).toInt();
    if (whom < 0 || at < 1)
        return std::nullopt;
    return Mishap{Whom(whom), at};
}

int Mishap::happen() const {
    if (whom == Whom::Host)
        std::raise(SIGKILL);
    return killAll(programs[int(whom)]);
}

} // namespace walkthrough
