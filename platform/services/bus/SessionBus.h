// One connection to the session bus, kept on the Qt event loop.
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

// Carries notifications as signals, owns one well-known name, and asks the bus who is there. A bus that is
// not there or goes away is tried again, later and later, with one line in the log when it is lost and one
// when it is back; what is observed and the name are then put in place again. No operation waits longer than
// `patience`. Main thread only; no thread of its own.
class SessionBus {
public:
    using Receiver = std::function<void(const QString &name, const TextMap &userInfo)>;
    static constexpr std::chrono::milliseconds patience{500};
    static constexpr std::chrono::milliseconds longestHold{3000};

    // Claims `ownName`, unless it is empty, when the event loop first runs: whoever sees the name may send
    // something, and what the program observes is in place by then. A name that another process holds is left
    // to it. The receiver is called from the event loop only, may run an event loop of its own, and may
    // destroy this object.
    SessionBus(const QString &ownName, Receiver receiver);
    ~SessionBus();
    Q_DISABLE_COPY_MOVE(SessionBus)

    // Sends one notification. A null text when it was handed to the bus, else why not.
    [[nodiscard]] QString send(const QString &name, const QString &sender, const TextMap &userInfo);
    // From now on the receiver hears of that name; of others it may hear too.
    void observe(const QString &name);
    void stopObserving(const QString &name);
    // The well-known names that have an owner now. Empty when there is no bus or no answer.
    [[nodiscard]] QStringList ownedNames();
    // The process that owns the name; 0 when unknown.
    [[nodiscard]] qint64 processOwning(const QString &name);
    // A program is being started that will own the name: what is sent from now on is held back until it owns
    // it, because only then it hears, or until `longestHold` has passed. The order stays.
    void holdUntilOwned(const QString &name);

private:
    template<typename Type, Type *(*release)(Type *)>
    struct Release {
        void operator()(Type *resource) const { release(resource); }
    };
    using Connection = std::unique_ptr<sd_bus, Release<sd_bus, sd_bus_close_unref>>;
    using Slot = std::unique_ptr<sd_bus_slot, Release<sd_bus_slot, sd_bus_slot_unref>>;
    using Message = std::unique_ptr<sd_bus_message, Release<sd_bus_message, sd_bus_message_unref>>;
    // A notifier may be given up from inside its own signal.
    struct GiveUp {
        void operator()(QSocketNotifier *notifier) const {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    };
    using Notifier = std::unique_ptr<QSocketNotifier, GiveUp>;
    struct Received {
        QString name;
        TextMap userInfo;
    };
    struct Held {
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
    Connection m_bus; // null while there is none
    std::map<QString, Slot> m_matches;
    QStringList m_observed;
    QQueue<Received> m_received;
    Slot m_awaited; // the change of owner that ends holding back
    QQueue<Held> m_held;
    bool m_isReady = false;
    bool m_claims = false; // from the first turn of the event loop on
    bool m_lossWasLogged = false;
    Notifier m_readable;
    Notifier m_writable;
    QTimer m_timeout; // what the library wants to do by itself, or is left to do
    QTimer m_retry;
    QTimer m_holdEnd; // active: what is sent is held back
    std::chrono::milliseconds m_retryDelay;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace platform
