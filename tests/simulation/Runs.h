// Whole runs: chosen at random, or repeated from a script; and the shortest script that still goes wrong.
#pragma once

#include "tests/simulation/Script.h"

namespace simulation {

struct Figures {
    int runs = 0;
    int steps = 0;
    int requests = 0;
    int answers = 0;
    int faults = 0; // that the script brought about at the client or on the disk
    int held = 0;   // host operations that waited for the client
};

struct Run {
    Script script;
    QString wrong; // what did not hold after the last step; a null text when all did
};

// Every run begins with the same desktop. The same seed gives the same run.
[[nodiscard]] Run runRandomly(quint64 seed, int steps, Figures *figures);
// Lines that cannot be done are left out.
[[nodiscard]] Run runAgain(const Script &script);
// Leaves out what is not needed for the same thing to go wrong.
[[nodiscard]] Script shortened(const Run &run);

} // namespace simulation
