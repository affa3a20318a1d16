// The session bus with nothing in between: the library's own calls, blocking, no event loop.
#pragma once

#include <cstdint>
#include <string>
#include <systemd/sd-bus.h>

namespace bench {

class BareBus {
public:
    // Listens to the signals that name `heard` first. Ends the process when there is no bus.
    explicit BareBus(const char *heard);
    // A signal of the same form as a notification's.
    void send(const char *name, const char *content);
    // Waits for the next one and answers its content.
    const std::string &next();

private:
    static int onSignal(sd_bus_message *message, void *self, sd_bus_error *);
    sd_bus *m_bus = nullptr;
    std::string m_content;
    bool m_heard = false;
};

} // namespace bench
