// A connection to the session bus on the Qt event loop.
#pragma once

#include "platform/services/bus/Notifications.h"

#include <QQueue>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <systemd/sd-bus.h>

namespace platform {

// Sends and receives notifications as signals, owns one well-known name, and queries the owners of names. If
// the bus is missing or lost, it reconnects with increasing delays, logs one line at the loss and one at the
// return, and then restores observers and name. No operation waits longer than `patience`. Main thread only;
// has no thread.
class SessionBus {
public:
    using Receiver = std::function<void(const QString &name, const TextMap &userInfo)>;
    static constexpr std::chrono::milliseconds patience{500};
    static constexpr std::chrono::milliseconds longestHold{3000};

    // Claims `ownName`, unless it is empty, when the event loop first runs: other programs may send as soon
    // as they see the name, and the observers are registered by then. Does not take a name from another
    // process. The receiver is called from the event loop only and may run a nested event loop.
    SessionBus(const QString &ownName, Receiver receiver);
    ~SessionBus();
    Q_DISABLE_COPY_MOVE(SessionBus)

    // Sends one notification. Returns null if the bus accepted it, else the reason.
    [[nodiscard]] QString send(const QString &name, const QString &sender, const TextMap &userInfo);
    // Starts to receive notifications of that name; the receiver may get others as well.
    void observe(const QString &name);
    void stopObserving(const QString &name);
    // The well-known names that have an owner now. Empty without a bus or an answer.
    [[nodiscard]] QStringList ownedNames();
    // The process that owns the name; 0 if unknown.
    [[nodiscard]] qint64 processOwning(const QString &name);
    // Call it when starting a program that will own the name. Later messages are held back until the program
    // owns the name and can receive them, or until `longestHold` has passed. Their order is kept.
    void holdUntilOwned(const QString &name);

private:
    template<typename Type, Type *(*release)(Type *)>
    struct Release {
        void operator()(Type *resource) const { release(resource); }
    };
    using Connection = std::unique_ptr<sd_bus, Release<sd_bus, sd_bus_close_unref>>;
    using Slot = std::unique_ptr<sd_bus_slot, Release<sd_bus_slot, sd_bus_slot_unref>>;
    using Message = std::unique_ptr<sd_bus_message, Release<sd_bus_message, sd_bus_message_unref>>;
    // A notifier may be released during its own signal.
    struct GiveUp {
        void operator()(QSocketNotifier *notifier) const {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    };
    using Notifier = std::unique_ptr<QSocketNotifier, GiveUp>;
    struct Notification {
        QString name;
        QString sender;
        TextMap userInfo;
    };

    void open();
    int prepare(sd_bus *bus);
    void waitUntilReady();
    void lost(int error);
    void announceReady();
    void process();
    int processOnce();
    void deliverReceived();
    void watch();
    void watchDescriptor(int descriptor, int events);
    void addMatch(const QString &name);
    void claimName();
    void sendHeld();
    [[nodiscard]] int trySend(const QString &name, const QString &sender, const TextMap &userInfo);
    [[nodiscard]] Message call(const char *member, const QString *argument);

    static int onMessage(sd_bus_message *message, void *self, sd_bus_error *);
    static int onOwnerChanged(sd_bus_message *change, void *self, sd_bus_error *);
    static int onNameAnswer(sd_bus_message *answer, void *self, sd_bus_error *);

    const QByteArray m_ownName;
    const Receiver m_receiver;
    Connection m_bus; // null while disconnected; must be destroyed after its slots
    std::map<QString, Slot> m_matches;
    QStringList m_observed;
    QQueue<Notification> m_received; // without their senders
    Slot m_awaited;                  // the change of owner that ends holding back
    QQueue<Notification> m_held;
    bool m_isReady = false;
    bool m_claims = false; // from the first turn of the event loop on
    bool m_lossWasLogged = false;
    Notifier m_readable;
    Notifier m_writable;
    QTimer m_timeout; // due or remaining work of the library
    QTimer m_retry;
    QTimer m_holdEnd; // active while messages are held back
    std::chrono::milliseconds m_retryDelay;
};

} // namespace platform
