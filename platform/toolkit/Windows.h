// Windows with window controllers, the application's ordered list of windows, sheets and modal sessions.
#pragma once

#include "platform/runtime/Object.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <functional>

class QDialog;
class QWidget;

namespace platform {

// Connects a controller with its window and appends the window to the application's list. Neither is owned; a
// deleted window leaves the list. A window that is already registered gets the new controller and keeps its
// place.
void registerWindow(QWidget *window, rt::Object *controller);
void unregisterWindow(QWidget *window);
// The controller of a window; nullptr if it has none or the controller was deleted.
[[nodiscard]] rt::Object *windowController(const QWidget *window);
// The existing registered windows, in order of registration.
[[nodiscard]] QList<QWidget *> orderedWindows();

// The application's delegate: the host object that represents the whole program. Not owned.
void setApplicationDelegate(rt::Object *delegate);
[[nodiscard]] rt::Object *applicationDelegate();

// Calls the handler before a window closes (the close was accepted, the window still exists). Handlers are
// removed with `owner`. Only the host's windows call windowWillClose(); other code only observes.
void observeWindowWillClose(QObject *owner, std::function<void(QWidget *window)> handler);
void windowWillClose(QWidget *window);

// The text of a text field (label or line edit); null for other views.
[[nodiscard]] QString textFieldValue(const QWidget *field);
void setTextFieldValue(QWidget *field, const QString &text);

// Opens `sheet` modal for `parent` without blocking; without a parent the sheet is not modal. `ended` gets
// the dialog's result once, but not if the parent is deleted first. The caller keeps the ownership of the
// sheet. When the sheet closes, the parent becomes the active window.
void beginSheet(QDialog *sheet, QWidget *parent, std::function<void(int result)> ended);

// While a session runs, its window is shown and is the application's only window with input; the event loop
// continues. The session ends with end() or when the window is deleted. Only one session can run at a time.
// When the window disappears, the window that was active before becomes active again.
class ModalSession {
public:
    ModalSession() = default;
    ~ModalSession();
    ModalSession(const ModalSession &) = delete;
    ModalSession &operator=(const ModalSession &) = delete;
    bool begin(QWidget *window); // false: another session is running, or no window
    void end();                  // hides the window; does nothing if not running
    [[nodiscard]] bool isRunning() const;

private:
    QPointer<QWidget> m_window;
};

} // namespace platform
