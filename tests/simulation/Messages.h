// The messages between plug-in and meeting client, as far as a run has to interpret them.
#pragma once

#include "tests/support/TestServices.h"

namespace simulation {

enum class Request { Start, Schedule, Update, Delete, GetMeeting, Profile, Accounts };

struct Message {
    bool isAnswer = false;
    // What is asked for, or what is answered or refused; no value when the message is damaged, or when the
    // user is told nothing of such an answer.
    std::optional<Request> request;
    QString meeting; // its key; a null text when none is named
};
[[nodiscard]] Message messageOf(const platform::MemoryNotificationBus::Posted &posted);

} // namespace simulation
