// Input from the bus: the octets of the connection, the signal in them, and its observers.
#include "platform/services/bus/NotificationSignal.h"
#include "platform/services/bus/Notifications.h"
#include "plugin/link/channel/vlIPCChannel.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/LinkHarness.h"

#include <sys/socket.h>
#include <unistd.h>

using namespace fuzz;

namespace {

// A bus connection whose other end sends the given octets.
class Wire {
public:
    Wire() {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, m_ends) < 0)
            return;
        sd_bus_new(&m_bus);
        sd_bus_set_fd(m_bus, m_ends[0], m_ends[0]);
        sd_bus_negotiate_fds(m_bus, 0);
        write("DATA\r\nOK 0123456789abcdef0123456789abcdef\r\n");
        sd_bus_start(m_bus);
        process();
    }
    ~Wire() {
        sd_bus_close_unref(m_bus); // with its own end
        ::close(m_ends[1]);
    }
    Wire(const Wire &) = delete;
    Wire &operator=(const Wire &) = delete;

    [[nodiscard]] sd_bus *bus() const { return m_bus; }
    void hear(sd_bus_message_handler_t handler, void *self) {
        sd_bus_add_filter(m_bus, nullptr, handler, self);
    }
    void write(const QByteArray &octets) {
        (void)!::send(m_ends[1], octets.constData(), size_t(octets.size()), MSG_NOSIGNAL);
    }
    void process() {
        while (sd_bus_process(m_bus, nullptr) > 0) {
        }
    }

private:
    int m_ends[2] = {-1, -1};
    sd_bus *m_bus = nullptr;
};

struct Notification {
    QString name;
    platform::TextMap userInfo;
};

struct Heard {
    QList<Notification> notifications;
    bool othersTouchNothing = true;
};

int onMessage(sd_bus_message *message, void *self, sd_bus_error *) {
    auto *heard = static_cast<Heard *>(self);
    Notification notification{u"untouched"_s, {{u"a"_s, u"b"_s}}};
    const Notification before = notification;
    if (platform::readNotificationSignal(message, &notification.name, &notification.userInfo))
        heard->notifications.append(notification);
    else if (notification.name != before.name || notification.userInfo != before.userInfo)
        heard->othersTouchNothing = false;
    return 0;
}

int ignore(sd_bus_message *, void *, sd_bus_error *) {
    return 0;
}

void openOctets(const QByteArray &octets) {
    Wire wire;
    Heard heard;
    wire.hear(onMessage, &heard);
    wire.write(octets);
    wire.process();
    claim(heard.othersTouchNothing, "a message that is no notification leaves name and user info alone");
    if (heard.notifications.isEmpty())
        return;
    LinkHarness harness;
    for (const Notification &notification : std::as_const(heard.notifications)) {
        claim(!notification.name.isNull(), "a notification has a name");
        harness.receive(notification.name, notification.userInfo);
    }
}

// A notification arrives as it was sent.
void openTexts(const QByteArray &bytes) {
    Pieces pieces(bytes);
    const QString name = pieces.nextText();
    const QString sender = pieces.nextText();
    platform::TextMap userInfo;
    while (!pieces.atEnd()) {
        const QString key = pieces.nextText();
        userInfo.insert(key, pieces.nextText());
    }
    if (!platform::refusalOf(name, sender, userInfo).isNull())
        return;
    Wire wire;
    sd_bus_message *message = nullptr;
    claim(platform::makeNotificationSignal(wire.bus(), name, sender, userInfo, &message) >= 0,
          "what is not refused can be sent");
    sd_bus_message_seal(message, 1, 0);
    sd_bus_message_rewind(message, 1);
    Notification read;
    claim(platform::readNotificationSignal(message, &read.name, &read.userInfo), "what is sent can be read");
    claimSame(read.name, platform::carriedText(name), "the name arrives");
    platform::TextMap carried;
    for (const auto &[key, text] : userInfo.asKeyValueRange())
        carried.insert(platform::carriedText(key), platform::carriedText(text));
    claim(read.userInfo == carried, "the user info arrives");
    sd_bus_message_unref(message);
    const QByteArray rule = platform::notificationMatchRule(name);
    sd_bus_slot *slot = nullptr;
    claim(sd_bus_add_match(wire.bus(), &slot, rule.constData(), ignore, nullptr) >= 0, "the rule is valid");
    sd_bus_slot_unref(slot);
}

void open(const QByteArray &bytes) {
    const bool isMessage = bytes.startsWith('l') || bytes.startsWith('B');
    isMessage ? openOctets(bytes) : openTexts(bytes);
}

const AddFuzzTarget target("envelope", open);

} // namespace
