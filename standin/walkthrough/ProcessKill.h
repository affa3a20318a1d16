// An injected fault: one of the programs is killed without warning.
#pragma once

#include <QString>
#include <optional>

namespace walkthrough {

struct ProcessKill {
    enum class Target { Host, Client, Agent, Bus };
    Target target;
    int atMessage; // how many messages have gone over the bus by then, from 1

    // "client:7"; none when it is not of that form.
    [[nodiscard]] static std::optional<ProcessKill> parse(const QString &text);
    // Kills it as `kill -9` does, and answers how many processes that were. The host is this process.
    int execute() const;
};

} // namespace walkthrough
