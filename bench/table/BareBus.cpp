#include "bench/table/BareBus.h"

#include <QtGlobal>

namespace bench {

namespace {
constexpr const char *path = "/com/parlo/Bench";
constexpr const char *interfaceName = "com.parlo.Bench";
constexpr const char *member = "Posted";

void check(int result, const char *what) {
    if (result < 0)
        qFatal("%s: %d", what, result);
}
} // namespace

BareBus::BareBus(const char *heard) {
    check(sd_bus_open_user(&m_bus), "the bus cannot be opened");
    const std::string rule =
        std::string("type='signal',interface='") + interfaceName + "',arg0='" + heard + '\'';
    check(sd_bus_add_match(m_bus, nullptr, rule.c_str(), onSignal, this), "the signal cannot be observed");
}

void BareBus::send(const char *name, const char *content) {
    check(sd_bus_emit_signal(m_bus, path, interfaceName, member, "ssa{ss}", name, "", 2, "actionId", "3",
                             "content", content),
          "the signal cannot be sent");
}

const std::string &BareBus::next() {
    for (m_heard = false; !m_heard;) {
        const int result = sd_bus_process(m_bus, nullptr);
        check(result, "the bus went away");
        if (result == 0)
            sd_bus_wait(m_bus, UINT64_MAX);
    }
    return m_content;
}

int BareBus::onSignal(sd_bus_message *message, void *self, sd_bus_error *) {
    const char *name = nullptr, *sender = nullptr, *key = nullptr, *action = nullptr, *content = nullptr;
    check(sd_bus_message_read(message, "ssa{ss}", &name, &sender, 2, &key, &action, &key, &content),
          "the signal cannot be read");
    auto *bus = static_cast<BareBus *>(self);
    bus->m_content = content;
    bus->m_heard = true;
    return 0;
}

} // namespace bench
