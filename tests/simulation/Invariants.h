// What must hold after every step, whatever anybody has done.
#pragma once

#include "tests/simulation/Ledger.h"

namespace simulation {

// How much may have gone wrong so far; in each of them several editors are open beside the calendar.
enum class Conditions {
    Calm,  // a client that answers everything at once
    Slow,  // one that answers late and in another order
    Stormy // anything
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
    using Appointments = QMap<QString, mailhost::Appointment>; // by name
    // In the order in which they are looked at.
    QString nothingIsLogged();
    QString editorsStayOpen();
    QString nothingOfAClosedEditor();
    QString wordsInEditors();
    QString keysArrive();
    QString requestsHaveACause();
    QString progressEnds();
    QString stripsShowTheirOwn();
    QString fileIsWhole(const Appointments &file);
    QString wordsInTheFile(const Appointments &file);
    QString onlyWhatWasWanted(const Appointments &file);
    QString linksAreTheirOwn(const Appointments &file);
    QString meetingsFollow(const Appointments &file);

    Desktop &m_desktop;
    Conditions m_conditions;
    Ledger m_ledger;
};

} // namespace simulation
