#include "platform/services/bus/SessionBus.h"

#include "platform/Guarded.h"
#include "platform/Literals.h"
#include "platform/services/bus/NotificationSignal.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <utility>

namespace platform {

using namespace std::chrono_literals;

namespace {

constexpr auto firstRetryDelay = 100ms;
constexpr auto longestRetryDelay = 10'000ms;
// After this number of messages the rest of the event loop runs.
constexpr int messagesPerTurn = 64;

// Results of org.freedesktop.DBus.RequestName.
enum class NameAnswer : uint32_t { IsOwner = 1, OwnedByAnother = 3, WasOwner = 4 };

int ignoreMessage(sd_bus_message *, void *, sd_bus_error *) {
    return 0;
}

// Without a handler the library would close the connection when the bus refuses a match.
int onMatchAnswer(sd_bus_message *answer, void *, sd_bus_error *) {
    if (sd_bus_message_is_method_error(answer, nullptr) > 0)
        qWarning("the session bus refuses an observer: %s", sd_bus_message_get_error(answer)->message);
    return 0;
}

// A moment of the monotonic clock, which is the one of steady_clock.
std::chrono::milliseconds untilMoment(uint64_t monotonicMicroseconds) {
    const std::chrono::steady_clock::time_point moment{std::chrono::microseconds(monotonicMicroseconds)};
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(moment - std::chrono::steady_clock::now());
    return std::clamp<std::chrono::milliseconds>(wait, 0ms, 1h);
}

} // namespace

SessionBus::SessionBus(const QString &ownName, Receiver receiver)
    : m_ownName(ownName.toUtf8())
    , m_receiver(std::move(receiver))
    , m_retryDelay(firstRetryDelay) {
    m_timeout.setSingleShot(true);
    m_timeout.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timeout, &QTimer::timeout, &m_timeout, [this] { process(); });
    m_retry.setSingleShot(true);
    QObject::connect(&m_retry, &QTimer::timeout, &m_retry, [this] { open(); });
    m_holdEnd.setSingleShot(true);
    QObject::connect(&m_holdEnd, &QTimer::timeout, &m_holdEnd, [this] { sendHeld(); });
    open();
    // The messages of a program that posts and ends at once, without an event loop, must still be sent.
    waitUntilReady();
}

SessionBus::~SessionBus() = default;

void SessionBus::open() {
    sd_bus *bus = nullptr;
    const int opened = sd_bus_open_user(&bus);
    m_bus.reset(bus);
    const int prepared = opened < 0 ? opened : prepare(bus);
    if (prepared < 0)
        lost(prepared);
    else
        watch();
}

// The library sends these requests once the connection is established.
int SessionBus::prepare(sd_bus *bus) {
    const int filtered = sd_bus_add_filter(bus, nullptr, onMessage, this);
    if (filtered < 0)
        return filtered;
    for (const QString &name : std::as_const(m_observed))
        addMatch(name);
    if (m_claims)
        claimName();
    return 0;
}

void SessionBus::claimName() {
    if (m_ownName.isEmpty())
        return;
    const int asked =
        sd_bus_request_name_async(m_bus.get(), nullptr, m_ownName.constData(), 0, onNameAnswer, this);
    if (asked < 0)
        qWarning("the name %s cannot be claimed: %s", m_ownName.constData(), std::strerror(-asked));
}

int SessionBus::onNameAnswer(sd_bus_message *answer, void *self, sd_bus_error *) {
    uint32_t code = 0;
    const bool isRefused = sd_bus_message_is_method_error(answer, nullptr) > 0;
    if (!isRefused)
        sd_bus_message_read(answer, "u", &code);
    if (NameAnswer(code) != NameAnswer::IsOwner && NameAnswer(code) != NameAnswer::WasOwner)
        qInfo("the name %s is left to another process",
              static_cast<SessionBus *>(self)->m_ownName.constData());
    return 0;
}

void SessionBus::waitUntilReady() {
    const QDeadlineTimer deadline(patience);
    while (m_bus && !m_isReady && !deadline.hasExpired()) {
        if (processOnce() == 0)
            sd_bus_wait(m_bus.get(), uint64_t(std::max<qint64>(deadline.remainingTimeNSecs() / 1000, 0)));
    }
    watch();
}

void SessionBus::lost(int error) {
    const bool hadOne = m_isReady;
    m_isReady = false;
    m_readable.reset();
    m_writable.reset();
    m_awaited.reset();
    m_matches.clear();
    m_bus.reset();
    if (!m_lossWasLogged)
        qWarning("%s (%s): notifications wait for one",
                 hadOne ? "the session bus went away" : "there is no session bus", std::strerror(-error));
    m_lossWasLogged = true;
    m_retry.start(m_retryDelay);
    m_retryDelay = std::min<std::chrono::milliseconds>(m_retryDelay * 2, longestRetryDelay);
}

void SessionBus::announceReady() {
    m_isReady = true;
    m_retryDelay = firstRetryDelay;
    if (m_lossWasLogged)
        qInfo("the session bus is there");
    m_lossWasLogged = false;
}

// Event loop

// Receivers are not called from inside the library's processing: a receiver that runs its own event loop
// would block it.
void SessionBus::process() {
    // Done before any delivery, because a receiver may ask whether this program runs.
    if (!std::exchange(m_claims, true) && m_bus)
        claimName();
    for (int messages = 0; messages < messagesPerTurn; ++messages) {
        const int result = m_bus ? processOnce() : 0;
        deliverReceived();
        if (result <= 0)
            break;
    }
    watch();
}

// Negative: disconnected. 0: no pending work.
int SessionBus::processOnce() {
    const int result = sd_bus_process(m_bus.get(), nullptr);
    if (result < 0)
        lost(result);
    else if (!m_isReady && sd_bus_is_ready(m_bus.get()) > 0)
        announceReady();
    return result;
}

void SessionBus::deliverReceived() {
    while (!m_received.isEmpty()) {
        const Notification next = m_received.dequeue();
        guarded("session bus", [&] { m_receiver(next.name, next.userInfo); });
    }
}

int SessionBus::onMessage(sd_bus_message *message, void *self, sd_bus_error *) {
    Notification received;
    if (readNotificationSignal(message, &received.name, &received.userInfo))
        static_cast<SessionBus *>(self)->m_received.enqueue(received);
    return 0;
}

// Makes the event loop wait for the events that the library waits for. Call it after every operation that may
// change them.
void SessionBus::watch() {
    if (m_bus) {
        const int descriptor = sd_bus_get_fd(m_bus.get());
        const int events = descriptor < 0 ? descriptor : sd_bus_get_events(m_bus.get());
        if (events < 0)
            lost(events);
        else
            watchDescriptor(descriptor, events);
    }
    uint64_t moment = UINT64_MAX;
    if (!m_claims || !m_received.isEmpty())
        m_timeout.start(0ms);
    else if (m_bus && sd_bus_get_timeout(m_bus.get(), &moment) >= 0 && moment != UINT64_MAX)
        m_timeout.start(untilMoment(moment));
    else
        m_timeout.stop();
}

void SessionBus::watchDescriptor(int descriptor, int events) {
    // The library may try another address, and so use another descriptor, while it connects.
    if (!m_readable || m_readable->socket() != descriptor) {
        m_readable.reset(new QSocketNotifier(descriptor, QSocketNotifier::Read));
        m_writable.reset(new QSocketNotifier(descriptor, QSocketNotifier::Write));
        QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(),
                         [this] { process(); });
        QObject::connect(m_writable.get(), &QSocketNotifier::activated, m_writable.get(),
                         [this] { process(); });
    }
    m_readable->setEnabled(events & POLLIN);
    m_writable->setEnabled(events & POLLOUT);
}

// Notifications

QString SessionBus::send(const QString &name, const QString &sender, const TextMap &userInfo) {
    if (m_holdEnd.isActive()) {
        m_held.enqueue({name, sender, userInfo});
        return {};
    }
    int sent = m_bus ? trySend(name, sender, userInfo) : -ENOTCONN;
    if (m_bus && sd_bus_is_open(m_bus.get()) <= 0) { // lost, but not noticed before
        sent = -ENOTCONN;
        lost(sent);
    }
    watch();
    if (sent == -ENOTCONN)
        return u"there is no session bus"_s;
    return sent < 0 ? QString::fromLocal8Bit(std::strerror(-sent)) : QString();
}

int SessionBus::trySend(const QString &name, const QString &sender, const TextMap &userInfo) {
    sd_bus_message *message = nullptr;
    const int made = makeNotificationSignal(m_bus.get(), name, sender, userInfo, &message);
    const Message owner(message);
    return made < 0 ? made : sd_bus_send(m_bus.get(), message, nullptr);
}

void SessionBus::holdUntilOwned(const QString &name) {
    if (!m_bus)
        return;
    const QByteArray rule = "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                            "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
                            name.toUtf8() + '\'';
    sd_bus_slot *slot = nullptr;
    if (sd_bus_add_match_async(m_bus.get(), &slot, rule.constData(), onOwnerChanged, onMatchAnswer, this) < 0)
        return;
    m_awaited.reset(slot);
    m_holdEnd.start(longestHold);
    watch();
}

int SessionBus::onOwnerChanged(sd_bus_message *change, void *self, sd_bus_error *) {
    const char *name = nullptr;
    const char *before = nullptr;
    const char *now = nullptr;
    if (sd_bus_message_read(change, "sss", &name, &before, &now) > 0 && *now)
        static_cast<SessionBus *>(self)->m_holdEnd.start(0ms);
    return 0;
}

void SessionBus::sendHeld() {
    m_awaited.reset();
    for (const Notification &next : std::exchange(m_held, {})) {
        const QString refusal = send(next.name, next.sender, next.userInfo);
        if (!refusal.isNull())
            qWarning("notification \"%s\" dropped: %s", qPrintable(next.name), qPrintable(refusal));
    }
}

void SessionBus::observe(const QString &name) {
    if (m_observed.contains(name))
        return;
    m_observed.append(name);
    if (!m_bus)
        return;
    addMatch(name);
    watch();
}

void SessionBus::stopObserving(const QString &name) {
    m_observed.removeAll(name);
    m_matches.erase(name);
    watch();
}

void SessionBus::addMatch(const QString &name) {
    sd_bus_slot *slot = nullptr;
    const QByteArray rule = notificationMatchRule(name);
    const int added =
        sd_bus_add_match_async(m_bus.get(), &slot, rule.constData(), ignoreMessage, onMatchAnswer, nullptr);
    if (added < 0)
        qWarning("notifications \"%s\" cannot be observed: %s", qPrintable(name), std::strerror(-added));
    else
        m_matches[name].reset(slot);
}

// Questions to the bus

SessionBus::Message SessionBus::call(const char *member, const QString *argument) {
    waitUntilReady();
    if (!m_isReady)
        return {};
    sd_bus_message *question = nullptr;
    sd_bus_message *answer = nullptr;
    int result = sd_bus_message_new_method_call(m_bus.get(), &question, "org.freedesktop.DBus",
                                                "/org/freedesktop/DBus", "org.freedesktop.DBus", member);
    const Message owner(question);
    if (result >= 0 && argument)
        result = sd_bus_message_append(question, "s", argument->toUtf8().constData());
    if (result >= 0)
        sd_bus_call(m_bus.get(), question, uint64_t(std::chrono::microseconds(patience).count()), nullptr,
                    &answer);
    watch(); // messages that arrived meanwhile still need processing
    return Message(answer);
}

QStringList SessionBus::ownedNames() {
    const Message answer = call("ListNames", nullptr);
    if (!answer || sd_bus_message_enter_container(answer.get(), 'a', "s") <= 0)
        return {};
    QStringList names;
    for (const char *name = nullptr; sd_bus_message_read_basic(answer.get(), 's', &name) > 0;) {
        if (*name != ':' && std::strcmp(name, "org.freedesktop.DBus") != 0)
            names.append(QString::fromUtf8(name));
    }
    return names;
}

qint64 SessionBus::processOwning(const QString &name) {
    const Message answer = call("GetConnectionUnixProcessID", &name);
    uint32_t process = 0;
    return answer && sd_bus_message_read(answer.get(), "u", &process) > 0 ? process : 0;
}

} // namespace platform
