// A hostile program that floods the bus.
#pragma once

namespace walkthrough {

// Floods both channels between plug-in and client with messages that neither of them sends: unknown actions,
// answers without a request, invalid texts, megabytes. Runs until the process is killed.
int floodBus();

} // namespace walkthrough
