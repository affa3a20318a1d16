// The road: add a meeting through the sheet, save, reopen, change, move, send, remove.
#pragma once

#include "standin/walkthrough/ProcessKill.h"

#include <QString>

namespace walkthrough {

struct SessionOptions {
    QString hostVersion;
    // Pictures, the calendar file and the outbox go below it.
    QString out;
    QString calendar; // is copied first; empty: the sample calendar
    // Where the programs keep what they keep for their user; empty: in a folder that is thrown away.
    QString state;
    std::optional<ProcessKill> kill;
};

// Walks it in this process, with the host of that generation and the client in a process of its own. Answers
// the exit code: 0 when every step did what it says.
int runWalkthrough(const SessionOptions &options);

} // namespace walkthrough
