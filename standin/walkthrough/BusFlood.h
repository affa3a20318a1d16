// Another program on the same bus that means no good.
#pragma once

namespace walkthrough {

// Floods both channels between plug-in and client with what neither of them sends: unknown actions, answers
// to nothing, texts that are no answers, megabytes. Returns when nobody who has started it is left.
int floodBus();

} // namespace walkthrough
