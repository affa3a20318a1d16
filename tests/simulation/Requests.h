// Whether what was sent to the client follows from what was done and answered.
#pragma once

#include "tests/simulation/Desktop.h"

namespace simulation {

enum class Request { Start, Schedule, Update, Delete, GetMeeting, Profile, Accounts };

// Which one it is; none for what is not a request of the plug-in's at all.
[[nodiscard]] std::optional<Request> requestOf(const platform::TextMap &envelope);
// The key of the meeting that it is about; a null text when it names none.
[[nodiscard]] QString meetingOf(const platform::TextMap &request);

struct Answer {
    Request to;
    QString meeting; // of Schedule, Update, Delete and GetMeeting; a refusal names none
};
// What is answered or refused, as far as it is whole.
[[nodiscard]] std::optional<Answer> trueAnswer(const platform::TextMap &envelope);
// How many of them were sent in the step.
[[nodiscard]] int timesSent(const Happened &step, Request request);
// A sentence when a meeting was scheduled or deleted, and neither the line nor an answer can have led to it;
// else a null text.
[[nodiscard]] QString unaskedRequest(const Happened &step);

} // namespace simulation
