// What a user does and sees. Input is sent as by mouse and keyboard: to the window, in which the toolkit
// finds the control.
#pragma once

#include "platform/Literals.h"

#include <QPoint>
#include <QString>
#include <functional>

class QAbstractButton;
class QMenu;
class QMessageBox;
class QWidget;

namespace walkthrough {

// Runs the event loop until the condition holds; returns false if it does not within the time.
bool waitFor(const std::function<bool()> &condition, int milliseconds = 10'000);
// Shortens all later waits: after an injected fault the awaited event may never come.
void waitLessFromNowOn();
// Runs all timers that are due within the seconds (0: those already due).
void settle(double seconds = 0);

// A click in the middle of the control (on the mark of a check box or radio button). Like the gestures below,
// returns false and sends nothing if the control is missing, or hidden, disabled or behind a modal window for
// some seconds.
bool click(QWidget *control);
bool doubleClick(QWidget *control);
// Moves the pointer over the control and stops.
bool hover(QWidget *control);
// Presses the button at the point, moves in steps by the distance, and releases.
bool drag(QWidget *control, const QPoint &from, const QPoint &distance);
// Sends the key to the active window, as a keyboard does.
bool press(QWidget *window, QKeyCombination key);
bool type(QWidget *window, const QString &text);

// The keys of the texts on the plug-in's buttons.
namespace buttons {
inline const QString add = u"AddVelaButton"_s;
inline const QString audio = u"AddPACButton"_s;
inline const QString remove = u"CancelVelaButton"_s;
inline const QString settings = u"ChangeSettingButton"_s;
inline const QString launch = u"Button_LaunchClient"_s;
inline const QString confirm = u"Button_Continue"_s;
inline const QString removeInAlert = u"Button_OKGot"_s;
} // namespace buttons
// A text of the plug-in in the language of this run, without its mnemonic mark.
[[nodiscard]] QString pluginText(const QString &key);

// The first visible widget of that object name in any window, or nullptr.
QWidget *shown(const QString &objectName);
// The plug-in's visible button with that key in any window, or in the one given; or nullptr.
QAbstractButton *shownButton(const QString &key, const QWidget *window = nullptr);
bool waitForButton(const QString &key);

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
