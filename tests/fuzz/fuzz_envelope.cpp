// Notifications as signals on the bus: they arrive as they were sent.
#include "platform/services/bus/NotificationSignal.h"
#include "tests/fuzz/FuzzTarget.h"

#include <sys/socket.h>

using namespace fuzz;

namespace {

// A connection whose other end is silent: enough to make messages and rules.
sd_bus *silentBus() {
    static sd_bus *bus = [] {
        int ends[2] = {-1, -1};
        sd_bus *made = nullptr;
        sd_bus_new(&made);
        claim(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) == 0 &&
                  sd_bus_set_fd(made, ends[0], ends[0]) >= 0 && sd_bus_start(made) >= 0,
              "there is a connection");
        return made;
    }();
    return bus;
}

int ignore(sd_bus_message *, void *, sd_bus_error *) {
    return 0;
}

void open(const QByteArray &bytes) {
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
    sd_bus_message *message = nullptr;
    claim(platform::makeNotificationSignal(silentBus(), name, sender, userInfo, &message) >= 0,
          "what is not refused can be sent");
    sd_bus_message_seal(message, 1, 0);
    sd_bus_message_rewind(message, 1);
    QString readName;
    platform::TextMap readInfo;
    claim(platform::readNotificationSignal(message, &readName, &readInfo), "what is sent can be read");
    claimSame(readName, platform::carriedText(name), "the name arrives");
    platform::TextMap carried;
    for (const auto &[key, text] : userInfo.asKeyValueRange())
        carried.insert(platform::carriedText(key), platform::carriedText(text));
    claim(readInfo == carried, "the user info arrives");
    sd_bus_message_unref(message);
    const QByteArray rule = platform::notificationMatchRule(name);
    sd_bus_slot *slot = nullptr;
    claim(sd_bus_add_match(silentBus(), &slot, rule.constData(), ignore, nullptr) >= 0, "the rule is valid");
    sd_bus_slot_unref(slot);
}

const AddFuzzTarget target("envelope", open);

} // namespace
