// The lines that a run is made of, and how they are chosen at random.
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

#include <random>

namespace simulation {

struct Script {
    QString hostVersion;
    Conditions conditions = Conditions::Faulty;
    QStringList lines;

    // As text that parse() reads: one line for each step.
    [[nodiscard]] QString text() const;
    static Script parse(const QString &text);
};

// Chooses what may come next; most of it can be done, not all.
class Generator {
public:
    Generator(quint64 seed, Conditions conditions);
    [[nodiscard]] const QString &hostVersion() const { return m_hostVersion; }
    // An empty text when the choice cannot be done now.
    [[nodiscard]] QString next(const Desktop &desktop);

private:
    [[nodiscard]] QString anything(const Desktop &desktop);
    [[nodiscard]] QString filled(QString line, const Desktop &desktop);
    [[nodiscard]] QString appointmentFor(const QString &verb, const Desktop &desktop);
    [[nodiscard]] int below(int end) { return int(m_random() % quint64(end)); } // the same on every system
    [[nodiscard]] bool chance(int percent) { return below(100) < percent; }
    [[nodiscard]] QString oneOf(const QStringList &list) { return list[below(int(list.size()))]; }
    std::mt19937_64 m_random;
    QStringList m_choices; // each as often as it is to come
    QString m_hostVersion;
    QString m_remedy; // for what is wrong with client or disk, one thing at a time
    int m_words = 0;
};

// Whether the line brings a fault about at the client or on the disk.
[[nodiscard]] bool isFault(const QString &line);

} // namespace simulation
