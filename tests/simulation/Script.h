// The lines that a run is made of, and whole runs: chosen at random, or repeated from a script.
//
// clang-format off
// The user:
//   open | front | save | saveclose | send | close | delete  APPOINTMENT
//   new plain | video | audio
//   strip APPOINTMENT  add | remove | settings
//   audio APPOINTMENT  1 | 2
//   sheet ok | cancel | escape | BOX
//   subject APPOINTMENT [WORD]
//   place | body  APPOINTMENT WORD
//   later APPOINTMENT MINUTES
//   from APPOINTMENT INDEX
//   question BUTTON
//   alert default | escape
//   menu later | earlier | longer | shorter | delete | cancel  APPOINTMENT
//   menu undo | redo
//   rename APPOINTMENT WORD
//   wait SECONDS
// The client, and the disk:
//   rule RULE                    (see AnswerRules)
//   client runs | quits | restarts | uninstalled | installed | old
//   signed in | out
//   forget APPOINTMENT           (its meeting was deleted somewhere else)
//   forge ACTION CONTENT         (an answer that nobody asked for)
//   forge-meeting APPOINTMENT
//   order ORDER                  (see People.h)
//   disk full | free
// clang-format on
#pragma once

#include "tests/simulation/Invariants.h"

namespace simulation {

struct Script {
    QString hostVersion;
    Conditions conditions = Conditions::Faulty;
    QStringList lines = {};

    // As text that parse() reads: one line for each step.
    [[nodiscard]] QString text() const;
    static Script parse(const QString &text);
};

struct Run {
    Script script;
    QString wrong = {}; // the invariant that the last step has violated; a null text when all hold
};

struct Figures {
    int runs = 0;
    int steps = 0;
    int requests = 0;
    int answers = 0;
    int faults = 0; // that the script brought about at the client or on the disk
    int held = 0;   // host operations that waited for the client
};

// Every run begins with the same desktop. The same seed gives the same run.
[[nodiscard]] Run runRandomly(quint64 seed, int steps, Figures *figures);
// Lines that cannot be done are left out.
[[nodiscard]] Run runAgain(const Script &script);
// Leaves out what is not needed for the same thing to go wrong.
[[nodiscard]] Script shortened(const Run &run);

} // namespace simulation
