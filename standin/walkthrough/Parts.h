// The parts of the walk-through: add a meeting through the sheet, save, reopen, change, move, send, remove.
#pragma once

#include "standin/walkthrough/Session.h"

namespace walkthrough {

// Runs them in this process, with the host of one generation. Answers the exit code: 0 if every step
// succeeded.
int runWalkthrough(const SessionOptions &options);

// Each answers whether the next part can be run.
bool runFirstCancellation(Session &session);
bool runEditor(Session &session);
bool runCalendar(Session &session);
bool runRefusals(Session &session);
bool runLateAnswers(Session &session);
bool runDeletions(Session &session);
bool runToolBar(Session &session);
bool runAudioConferences(Session &session);
bool runOnBehalf(Session &session);

} // namespace walkthrough
