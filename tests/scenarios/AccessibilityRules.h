// Rules for every window, for users who cannot see it or have no mouse. Each function adds failures to the
// test that runs; they name the window by `where`.
#pragma once

#include <QString>

class QWidget;

namespace scenarios {

// Each control has a name and a role, is reached by Tab, and has a letter or is of a kind that needs none. A
// window without any control is a failure.
void expectAccessible(QWidget *window, const QString &where);
// Tab reaches no control after one that is completely below it. The strip is checked separately.
void expectReadingOrder(QWidget *window, const QString &where);
// Tab reaches the two buttons of the editor's strip from left to right.
void expectStripOrder(QWidget *editor, const QString &where);

} // namespace scenarios
