#include "standin/walkthrough/Report.h"

#include "platform/services/Services.h"
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

constexpr int shownCharacters = 140;
const QString bus = u"org.freedesktop.DBus"_s;

QString oneLine(const QString &text) {
    const QString line = text.simplified();
    return line.size() > shownCharacters ? line.left(shownCharacters) + u"..."_s : line;
}

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

Report::~Report() {
    for (const platform::ObserverId observer : std::as_const(m_observers))
        platform::services().distributedNotifications->removeObserver(observer);
}

void Report::observe() {
    platform::DistributedNotificationCenter &center = *platform::services().distributedNotifications;
    for (const QString &channel : {names::requestsToClient, names::answersOfClient})
        m_observers << center.addObserver(
            channel, [this, sent = channel == names::requestsToClient](
                         const QString &, const platform::TextMap &info) { record(sent, info); });
}

void Report::record(bool sent, const platform::TextMap &userInfo) {
    m_messages.append({sent, userInfo.value(names::actionIdKey).toUInt(), userInfo.value(names::contentKey)});
    if (m_messages.size() == m_killAt && !m_toKill.isEmpty())
        comment(u"a kill at message %1: %2 killed"_s.arg(m_killAt).arg(int(killOwnerOf(m_toKill))));
}

void Report::write(bool ok, const QString &what) {
    printLine((ok ? u"ok - "_s : u"not ok - "_s) + what);
    for (; m_reported < m_messages.size(); ++m_reported) {
        const Message &message = m_messages[m_reported];
        comment(u"%1 %2: %3"_s.arg(message.sent ? u"sent"_s : u"answered"_s)
                    .arg(message.action)
                    .arg(oneLine(message.content)));
    }
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

QStringList Report::sentContents(const Request &request) const {
    QStringList contents;
    for (const Message &message : m_messages.mid(m_marked))
        if (message.sent && message.action == request.action && message.content.startsWith(request.prefix))
            contents << message.content;
    return contents;
}

qsizetype Report::answered(quint32 action) const {
    const QList<Message> messages = m_messages.mid(m_marked);
    return std::ranges::count_if(
        messages, [action](const Message &message) { return !message.sent && message.action == action; });
}

} // namespace walkthrough
