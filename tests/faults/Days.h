// Whole days: lived by the dice, or again from a script; and the shortest script that still goes wrong.
#pragma once

#include "tests/faults/Script.h"

namespace faults {

struct Figures {
    int days = 0;
    int steps = 0;
    int requests = 0;
    int answers = 0;
    int faults = 0; // things that went wrong at the client's
    int held = 0;   // host operations that the person asked for and that did not run at once
};

struct Day {
    Script script;
    QString wrong; // what did not hold after the last step; a null text when all did
};

// Every day begins with the same desktop. The same seed gives the same day.
[[nodiscard]] Day liveRandomly(quint64 seed, int steps, Figures *figures);
// Lines that cannot be done are left out.
[[nodiscard]] Day liveAgain(const Script &script);
// Leaves out what is not needed for the same thing to go wrong.
[[nodiscard]] Script shortened(const Day &day);

} // namespace faults
