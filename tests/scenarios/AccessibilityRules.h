// What must hold of every window for a user who cannot see it or has no mouse. Each function adds failures to
// the test that runs; they name the window by `where`.
#pragma once

#include <QString>

class QWidget;

namespace scenarios {

// Each control has a name and a role, is reached by Tab, and has a letter or is of a kind that needs none. A
// window without any control is a failure.
void expectAccessible(QWidget *window, const QString &where);
// By Tab, no control is reached after one that stands wholly below it. The strip counts apart.
void expectReadingOrder(QWidget *window, const QString &where);
// By Tab, the two buttons of the editor's strip are reached from left to right.
void expectStripOrder(QWidget *editor, const QString &where);

} // namespace scenarios
