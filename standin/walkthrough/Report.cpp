#include "standin/walkthrough/Report.h"

#include "platform/services/Services.h"
#include "standin/support/BusNames.h"
#include "standin/walkthrough/ResultPage.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <limits>

namespace walkthrough {

namespace names = standin::names;

namespace {

constexpr int shownCharacters = 140;
constexpr int shortTimeout = 3000;
constexpr int slice = 20; // milliseconds for which the event loop runs between two looks at a condition

QString oneLine(QString text) {
    text.replace(u'\r', u' ').replace(u'\n', u' ');
    text = text.simplified();
    return text.size() > shownCharacters ? text.left(shownCharacters) + u"..."_s : text;
}

void printLine(const QString &line) {
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

} // namespace

int Report::s_longestTimeout = std::numeric_limits<int>::max();

void Report::expect(const ProcessKill &kill) {
    m_kill = kill;
    s_longestTimeout = shortTimeout;
}

Report::Report(QString folder)
    : m_folder(std::move(folder)) {
    platform::DistributedNotificationCenter &bus = *platform::services().distributedNotifications;
    m_observers << bus.addObserver(
        names::requestsToClient,
        [this](const QString &, const platform::TextMap &info) { record(true, info); });
    m_observers << bus.addObserver(
        names::answersOfClient,
        [this](const QString &, const platform::TextMap &info) { record(false, info); });
}

Report::~Report() {
    for (const platform::ObserverId observer : std::as_const(m_observers))
        platform::services().distributedNotifications->removeObserver(observer);
}

void Report::record(bool sent, const platform::TextMap &userInfo) {
    m_messages.append({sent, userInfo.value(names::actionIdKey).toUInt(), userInfo.value(names::contentKey)});
    if (m_kill && m_messages.size() == m_kill->atMessage)
        comment(u"a kill at message %1: %2 killed"_s.arg(m_messages.size()).arg(m_kill->execute()));
}

bool Report::step(bool ok, const QString &what) {
    printLine((ok ? u"ok - "_s : u"not ok - "_s) + what);
    for (; m_reported < m_messages.size(); ++m_reported) {
        const Message &message = m_messages[m_reported];
        comment(u"%1 %2: %3"_s.arg(message.sent ? u"sent"_s : u"answered"_s)
                    .arg(message.actionId)
                    .arg(oneLine(message.content)));
    }
    m_failed = m_failed || !ok;
    return ok;
}

void Report::comment(const QString &text) {
    printLine(u"# "_s + text);
}

void Report::picture(QWidget *widget, const QString &name) {
    const QString file = u"%1-%2.png"_s.arg(++m_pictures, 2, 10, QChar(u'0')).arg(name);
    if (widget && widget->grab().save(m_folder + u'/' + file))
        printLine(pictureMark + file);
    else
        step(false, u"a picture of %1 is saved"_s.arg(name));
}

bool Report::waitFor(const std::function<bool()> &condition, int milliseconds) {
    const QDeadlineTimer deadline(std::min(milliseconds, s_longestTimeout));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, slice);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void Report::settle(double seconds) {
    // This timer fires after all timers that are due before it.
    bool due = false;
    platform::services().runLoop->callAfter(seconds, [&due] { due = true; });
    waitFor([&due] { return due; });
}

int Report::sentSinceMark(quint32 actionId, const QString &prefix) const {
    int count = 0;
    for (const Message &message : sinceMark())
        count += message.sent && message.actionId == actionId && message.content.startsWith(prefix);
    return count;
}

int Report::answeredSinceMark(quint32 actionId) const {
    int count = 0;
    for (const Message &message : sinceMark())
        count += !message.sent && message.actionId == actionId;
    return count;
}

} // namespace walkthrough
