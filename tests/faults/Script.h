// The lines that a day is made of, and how the dice choose them.
//
// The person:
//   open|front|save|saveclose|send|close|delete APPOINTMENT      new plain|video|audio
//   strip APPOINTMENT add|remove|settings                        audio APPOINTMENT 1|2
//   sheet ok|cancel|escape|BOX                                   question BUTTON
//   subject APPOINTMENT [WORD]   place|body APPOINTMENT WORD     later APPOINTMENT MINUTES   from APPOINTMENT
//   INDEX move|resize APPOINTMENT MINUTES   rename APPOINTMENT WORD    menu delete|cancel APPOINTMENT   menu
//   undo|redo alert default|escape         start video|share               wait SECONDS
// The client:
//   rule RULE (see AnswerRules)  client runs|quits|restarts|uninstalled|installed|old   signed in|out
//   forget APPOINTMENT           forge ACTION CONTENT            forge-meeting APPOINTMENT
#pragma once

#include "tests/faults/Dice.h"
#include "tests/faults/Invariants.h"

namespace faults {

struct Script {
    QString hostVersion;
    Weather weather = Weather::Stormy;
    QStringList lines;

    // As text that parse() reads: one line for each step.
    [[nodiscard]] QString text() const;
    static Script parse(const QString &text);
};

// Chooses what may come next; most of it can be done, not all.
class Chooser {
public:
    Chooser(quint64 seed, Weather weather);
    [[nodiscard]] const QString &hostVersion() const { return m_hostVersion; }
    // An empty text when this time nothing came to mind.
    [[nodiscard]] QString next(const Desktop &desktop);

private:
    [[nodiscard]] QString filled(QString line, const Desktop &desktop);
    [[nodiscard]] QString appointmentFor(const QString &verb, const Desktop &desktop);
    [[nodiscard]] QString word();
    Dice m_dice;
    Weather m_weather;
    QString m_hostVersion;
    QString m_remedy; // for what is wrong with the client, one thing at a time
    int m_words = 0;
};

// Whether the line keeps a calm day calm: one thing is done after the other, and nothing beside an open
// editor.
[[nodiscard]] bool isCalm(const QString &line, const Desktop &desktop);
// Whether the line is something that goes wrong at the client's.
[[nodiscard]] bool isFault(const QString &line);

} // namespace faults
