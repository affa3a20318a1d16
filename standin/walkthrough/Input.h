// Real input events like those of mouse and keyboard: they go to the window, and the toolkit finds the
// control.
#pragma once

#include <QPoint>
#include <QString>

class QMenu;
class QMessageBox;
class QWidget;

namespace walkthrough {

// A click in the middle of the control (on the mark of a check box or radio button), or at a point of it.
// Returns false and sends nothing if the control is missing, or hidden, disabled or behind a modal window for
// some seconds.
bool click(QWidget *control);
bool clickAt(QWidget *control, const QPoint &at);
bool doubleClick(QWidget *control, const QPoint &at);
// Moves the pointer over the control and stops.
void hover(QWidget *control);
// Presses the button at the point, moves in steps by the distance, and releases.
bool drag(QWidget *control, const QPoint &from, const QPoint &distance);
// Sends the key to the active window, as a keyboard does.
bool press(QWidget *window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
bool type(QWidget *window, const QString &text);

// The first visible widget of that object name in any window, or nullptr.
QWidget *shown(const QString &objectName);
// The visible button with that text (without mnemonic marks) in any window, or nullptr.
QWidget *shownButton(const QString &text);
bool waitForButton(const QString &text);

// Clicks the control and returns the menu that opens, or nullptr.
QMenu *openMenu(QWidget *control);
// Chooses the visible entry of that number, from 0; false unless it exists and is enabled.
bool choose(QMenu *menu, int entry);

// The open message box, or nullptr. waitForAlert() waits for one.
QMessageBox *alert();
bool waitForAlert();
// Presses Escape in the modal window and waits until no modal window is open.
bool dismissModal();

} // namespace walkthrough
