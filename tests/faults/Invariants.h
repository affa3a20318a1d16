// What must hold after every step, whatever anybody has done.
#pragma once

#include "tests/faults/Desktop.h"

namespace faults {

// How much may have gone wrong so far.
enum class Weather {
    Calm,  // one editor at a time, and a client that answers everything at once
    Busy,  // such a client, and several editors beside the calendar
    Stormy // anything
};

// The first thing that does not hold, as a sentence; a null text when all does.
[[nodiscard]] QString whatIsWrong(Desktop &desktop, Weather weather);

} // namespace faults
