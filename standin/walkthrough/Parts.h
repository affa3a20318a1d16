// The parts of the walk-through and their steps.
#pragma once

#include "standin/walkthrough/Session.h"

#include <vector>

namespace walkthrough {

struct Part {
    const char *name;
    // Each returns whether the next one can run.
    std::vector<bool (*)(Session &session)> steps;
};

// Runs all parts in this process, with the host of one generation. Returns the exit code: 0 if every step
// succeeded.
int runWalkthrough(const SessionOptions &options);

Part editorPart();     // add a meeting through the sheet, save, reopen, change,
                       // move, remove, send
Part calendarPart();   // changes on the calendar, with no editor open
Part refusalPart();    // the same without a client, and refused by it
Part lateAnswerPart(); // the same with a late answer of the client
Part deletionPart();
Part toolBarPart();
Part audioPart();
Part onBehalfPart();
bool cancelWithoutClient(Session &session);

} // namespace walkthrough
