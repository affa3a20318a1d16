// An injected fault: kills one of the programs without warning.
#pragma once

#include <QString>
#include <optional>

namespace walkthrough {

struct ProcessKill {
    enum class Target { Host, Client, Agent, Bus };
    Target target;
    int atMessage; // the number of messages on the bus before it, from 1

    // "client:7"; no value for another form.
    [[nodiscard]] static std::optional<ProcessKill> parse(const QString &text);
    // Kills the program like `kill -9` and returns the number of killed processes. The host is this process.
    int execute() const;
};

} // namespace walkthrough
