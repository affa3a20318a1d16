// The lines that a run is made of, and how they are chosen at random.
//
// The user:
//   open|front|save|saveclose|send|close|delete APPOINTMENT      new plain|video|audio
//   strip APPOINTMENT add|remove|settings                        audio APPOINTMENT 1|2
//   sheet ok|cancel|escape|BOX                                   question BUTTON
//   subject APPOINTMENT [WORD]   place|body APPOINTMENT WORD     later APPOINTMENT MINUTES
//   from APPOINTMENT INDEX       move|resize APPOINTMENT MINUTES  rename APPOINTMENT WORD
//   menu delete|cancel APPOINTMENT   menu undo|redo              alert default|escape
//   start video|share            wait SECONDS
// The client, and the disk:
//   rule RULE (see AnswerRules)  client runs|quits|restarts|uninstalled|installed|old   signed in|out
//   forget APPOINTMENT           forge ACTION CONTENT            forge-meeting APPOINTMENT
//   order ORDER (see People.h)   disk full|free
#pragma once

#include "tests/simulation/Invariants.h"

#include <random>

namespace simulation {

struct Script {
    QString hostVersion;
    Conditions conditions = Conditions::Stormy;
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
    // An empty text when this time nothing came to mind.
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

// Whether the line is something that goes wrong at the client's or on the disk.
[[nodiscard]] bool isFault(const QString &line);

} // namespace simulation
