#include "standin/walkthrough/Report.h"

#include "standin/support/BusNames.h"
#include "standin/walkthrough/Input.h"

#include <QPixmap>
#include <QProcess>
#include <QWidget>
#include <csignal>
#include <cstdio>

namespace walkthrough {

namespace names = standin::names;

namespace {

const QString bus = u"org.freedesktop.DBus"_s;

void printLine(const QString &line) {
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

// Kills the owner of that name on the bus without warning; false if there is none.
bool killOwnerOf(const QString &name) {
    QProcess asking;
    asking.start(u"dbus-send"_s, {u"--session"_s, u"--print-reply=literal"_s, u"--dest="_s + bus, u"/"_s,
                                  bus + u".GetConnectionUnixProcessID"_s, u"string:"_s + name});
    asking.waitForFinished();
    const QByteArrayList words = asking.readAllStandardOutput().simplified().split(' '); // "uint32 1234"
    const int id = words.last().toInt();
    return id > 0 && ::kill(id, SIGKILL) == 0;
}

} // namespace

Report::Report(QString folder, const QString &kill)
    : m_folder(std::move(folder))
    , m_toKill(QHash<QString, QString>{
          {u"host"_s, names::host}, {u"client"_s, names::client}, {u"agent"_s, names::agent}, {u"bus"_s, bus}}
                   .value(kill.section(u':', 0, 0)))
    , m_killAt(kill.section(u':', 1).toInt()) {
    if (!m_toKill.isEmpty())
        waitLessFromNowOn();
}

void Report::killWhenDue() {
    if (messages().size() == m_killAt && !m_toKill.isEmpty())
        comment(u"a kill at message %1: %2 killed"_s.arg(m_killAt).arg(int(killOwnerOf(m_toKill))));
}

void Report::write(bool ok, const QString &what) {
    printLine((ok ? u"ok - "_s : u"not ok - "_s) + what);
    for (; m_reported < messages().size(); ++m_reported)
        comment(messages()[m_reported].text());
    m_failed = m_failed || !ok;
}

void Report::step(bool ok, const QString &what) {
    write(ok, what);
    if (!ok)
        throw Stopped();
}

void Report::need(bool ok, const QString &what) {
    if (!ok)
        step(false, what);
}

void Report::comment(const QString &text) {
    printLine(u"# "_s + text);
}

void Report::picture(QWidget *widget, const QString &name) {
    const QString file = u"%1-%2.png"_s.arg(++m_pictures, 2, 10, QChar(u'0')).arg(name);
    if (widget && widget->grab().save(m_folder + u'/' + file))
        printLine(pictureMark + file);
    else
        write(false, u"a picture of %1 is saved"_s.arg(name));
}

} // namespace walkthrough
