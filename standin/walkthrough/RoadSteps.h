// The road: add a meeting through the sheet, save, reopen, change, move, send, remove.
#pragma once

#include <QString>

namespace walkthrough {

// Walks it in this process, with the host of that generation and the client in a process of its own.
// Pictures, the calendar file and the outbox go below `out`. `calendar` is copied first; empty: the sample
// calendar. Answers the exit code: 0 when every step did what it says.
int walkTheRoad(const QString &hostVersion, const QString &out, const QString &calendar);

} // namespace walkthrough
