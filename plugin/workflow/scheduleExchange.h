// Answers to schedule requests that came in another order than the requests.
#pragma once

#include "plugin/workflow/MeetingContext.h"

#include <memory>

// The answer to a schedule request does not tell whose it is. With several under way, the client may have
// answered in another order than it was asked: the meeting that is read back then is the one that another
// appointment has asked for. If so, that appointment and the one at hand exchange the meetings and requests
// that they have got, and the one at hand waits for its own. The other one; nullptr: nothing was exchanged.
std::shared_ptr<MeetingContext> exchangeScheduleAnswers();
