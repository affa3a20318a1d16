// What must hold after every step, whatever anybody has done.
#pragma once

#include "tests/simulation/Ledger.h"

namespace simulation {

// How much may have gone wrong so far; in each of them several editors are open beside the calendar.
enum class Conditions {
    Prompt, // a client that answers everything at once
    Slow,   // one that answers late and in another order
    Faulty  // anything
};

class Invariants {
public:
    Invariants(Desktop &desktop, Conditions conditions)
        : m_desktop(desktop)
        , m_conditions(conditions)
        , m_ledger(desktop) {}
    // After each step, once: the first thing that does not hold, as a sentence; a null text when all does.
    [[nodiscard]] QString whatIsWrong();

private:
    Desktop &m_desktop;
    Conditions m_conditions;
    Ledger m_ledger;
    const QByteArray m_calendarAtFirst = m_desktop.scenario().fileBytes();
};

} // namespace simulation
