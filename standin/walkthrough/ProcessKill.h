// What goes wrong in a walk on purpose: one of its programs is killed without warning.
#pragma once

#include <QString>
#include <optional>

namespace walkthrough {

struct ProcessKill {
    enum class Whom { Host, Client, Agent, Bus };
    Whom whom;
    int atMessage; // how many messages have gone over the bus by then, from 1

    // "client:7"; none when it is not of that form.
    [[nodiscard]] static std::optional<ProcessKill> parse(const QString &text);
    // Kills it, as `kill -9` does, and answers how many processes that were. The host is this process.
    int happen() const;
};

} // namespace walkthrough
