// The invariants that must hold after every step.
#pragma once

#include "tests/simulation/Ledger.h"

namespace simulation {

// The faults that may have happened so far. In all conditions several editors are open beside the calendar.
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
    // Call it once after each step. Returns a sentence about the first violated invariant; null if all hold.
    [[nodiscard]] QString whatIsWrong();

private:
    Desktop &m_desktop;
    Conditions m_conditions;
    Ledger m_ledger;
    const QByteArray m_calendarAtFirst = m_desktop.scenario().fileBytes();
};

} // namespace simulation
