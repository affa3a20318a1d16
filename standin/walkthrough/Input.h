// Real input events, as a person's mouse and keyboard give them: to the window, where the toolkit finds the
// control.
#pragma once

#include <QPoint>
#include <QString>

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
// The shown dialog or window whose controls have a button of that text (mnemonic marks aside); nullptr when
// none.
QWidget *shownButton(const QString &text);

} // namespace walkthrough
