#include "standin/walkthrough/Walk.h"

#include "platform/services/Services.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <limits>

namespace walkthrough {

namespace {

const QString requestChannel = QStringLiteral("VelaOutlookPluginToVelaVideoClient_PRL");
const QString answerChannel = QStringLiteral("VelaVideoClientToVelaOutlookPlugin_PRL");
constexpr int shownCharacters = 140;
constexpr int shortPatience = 3000;
constexpr int slice = 20; // milliseconds for which the event loop runs between two looks at a condition

QString oneLine(QString text) {
    text.replace(u'\r', u' ').replace(u'\n', u' ');
    text = text.simplified();
    return text.size() > shownCharacters ? text.left(shownCharacters) + QStringLiteral("...") : text;
}

void printLine(const QString &line) {
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

} // namespace

int Walk::s_longestPatience = std::numeric_limits<int>::max();

void Walk::expect(const Mishap &mishap) {
    m_mishap = mishap;
    s_longestPatience = shortPatience;
}

Walk::Walk(QString folder)
    : m_folder(std::move(folder)) {
    platform::DistributedNotificationCenter &bus = *platform::services().distributedNotifications;
    m_observers << bus.addObserver(
        requestChannel, [this](const QString &, const platform::TextMap &info) { record(true, info); });
    m_observers << bus.addObserver(
        answerChannel, [this](const QString &, const platform::TextMap &info) { record(false, info); });
}

Walk::~Walk() {
    for (const platform::ObserverId observer : std::as_const(m_observers))
        platform::services().distributedNotifications->removeObserver(observer);
}

void Walk::record(bool sent, const platform::TextMap &userInfo) {
    m_messages.append({sent, userInfo.value(QStringLiteral("actionId")).toUInt(),
                       userInfo.value(QStringLiteral("content"))});
    if (m_mishap && m_messages.size() == m_mishap->atMessage)
        comment(QStringLiteral("a mishap at message %1: %2 killed")
                    .arg(m_messages.size())
                    .arg(m_mishap->happen()));
}

bool Walk::step(bool ok, const QString &what) {
    printLine((ok ? QStringLiteral("ok - ") : QStringLiteral("not ok - ")) + what);
    for (; m_reported < m_messages.size(); ++m_reported) {
        const Message &message = m_messages[m_reported];
        comment(QStringLiteral("%1 %2: %3")
                    .arg(message.sent ? QStringLiteral("sent") : QStringLiteral("answered"))
                    .arg(message.actionId)
                    .arg(oneLine(message.content)));
    }
    m_failed = m_failed || !ok;
    return ok;
}

void Walk::comment(const QString &text) {
    printLine(QStringLiteral("# ") + text);
}

void Walk::picture(QWidget *widget, const QString &name) {
    const QString file =
        QStringLiteral("%1/%2-%3.png").arg(m_folder).arg(++m_pictures, 2, 10, QChar(u'0')).arg(name);
    if (!widget || !widget->grab().save(file))
        step(false, QStringLiteral("a picture of %1 is saved").arg(name));
}

bool Walk::waitFor(const std::function<bool()> &condition, int milliseconds) {
    const QDeadlineTimer deadline(std::min(milliseconds, s_longestPatience));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, slice);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void Walk::settle(double seconds) {
    // It comes after everything that was due before it.
    bool due = false;
    platform::services().runLoop->callAfter(seconds, [&due] { due = true; });
    waitFor([&due] { return due; });
}

int Walk::sentSinceMark(quint32 actionId, const QString &prefix) const {
    int count = 0;
    for (const Message &message : sinceMark())
        count += message.sent && message.actionId == actionId && message.content.startsWith(prefix);
    return count;
}

int Walk::answeredSinceMark(quint32 actionId) const {
    int count = 0;
    for (const Message &message : sinceMark())
        count += !message.sent && message.actionId == actionId;
    return count;
}

} // namespace walkthrough
