// Handles answers to schedule requests that arrive in a different order than the requests.
#pragma once

#include "plugin/workflow/MeetingContext.h"

#include <memory>

// The answer to a schedule request does not name its appointment. If several requests are pending and the
// client answers in a different order, the meeting that was read back belongs to another appointment. In that
// case the other appointment and the current one exchange their meetings and requests, and the current one
// waits for its own meeting. Returns the other context, or nullptr if nothing was exchanged.
std::shared_ptr<MeetingContext> exchangeScheduleAnswers();
