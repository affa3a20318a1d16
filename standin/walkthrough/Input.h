// Real input events, as a user's mouse and keyboard give them: to the window, where the toolkit finds the
// control.
#pragma once

#include <QPoint>
#include <QString>

class QMenu;
class QMessageBox;
class QWidget;

namespace walkthrough {

// A click in the middle of the control (on the mark of a check box or radio button), or at a point of it.
// False when the control is missing, or for some seconds hidden, disabled or behind a modal window: then
// nothing is sent.
bool click(QWidget *control);
bool clickAt(QWidget *control, const QPoint &at);
bool doubleClick(QWidget *control, const QPoint &at);
// The pointer comes to rest over the control.
void hover(QWidget *control);
// Pressed at one point, moved in steps by the distance, and let go.
bool drag(QWidget *control, const QPoint &from, const QPoint &distance);
// Keys go to the window that is active, as they would.
bool press(QWidget *window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
bool type(QWidget *window, const QString &text);

// The first shown widget of that object name, in any window; nullptr when there is none.
QWidget *shown(const QString &objectName);
// The shown button of that text (mnemonic marks aside), in any window; nullptr when there is none.
QWidget *shownButton(const QString &text);
bool waitForButton(const QString &text);

// The menu that a click on the control opens; nullptr when none opens.
QMenu *openMenu(QWidget *control);
// Chooses the visible entry of that number, from 0; false when there is none that is enabled.
bool choose(QMenu *menu, int entry);

// The message box that is open; nullptr when there is none. waitForAlert() waits for one.
QMessageBox *alert();
bool waitForAlert();
// Presses Escape in the modal window, and waits until none is left.
bool dismissModal();

} // namespace walkthrough
