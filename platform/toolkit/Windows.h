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

// Ties a controller to its window and puts the window at the end of the application's list. Neither is owned;
// a dead one leaves the list. A window that was registered before gets the new controller and keeps its
// place.
void registerWindow(QWidget *window, rt::Object *controller);
void unregisterWindow(QWidget *window);
// The controller of a window; nullptr when it has none or the controller has died.
[[nodiscard]] rt::Object *windowController(const QWidget *window);
// The registered windows that are still there, in order of registration.
[[nodiscard]] QList<QWidget *> orderedWindows();

// The application's delegate: the host object that stands for the whole program. Not owned.
void setApplicationDelegate(rt::Object *delegate);
[[nodiscard]] rt::Object *applicationDelegate();

// Told when a window is about to close (its close was accepted, it still exists). Handlers live as long as
// `owner`. windowWillClose() is called by a window of the host; anyone else only observes.
void observeWindowWillClose(QObject *owner, std::function<void(QWidget *window)> handler);
void windowWillClose(QWidget *window);

// Whether a view is of the class of that name: the runtime class of a view that has one; "NSView" for any
// widget, "NSTextField" for a label or a line edit; else the name of a C++ class that it has or inherits
// (Q_OBJECT needed).
[[nodiscard]] bool isViewOfKind(const QWidget *view, const QString &className);
// The text of a text field (label or line edit); a null text for anything else.
[[nodiscard]] QString textFieldValue(const QWidget *field);
void setTextFieldValue(QWidget *field, const QString &text);

// Opens `sheet` modal for `parent` without blocking; alone and application-modal-free when parent is nullptr.
// `ended` gets the dialog's result once; it is not called when the parent dies first. The caller keeps owning
// the sheet. When the sheet goes, the parent gets the activation that it had.
void beginSheet(QDialog *sheet, QWidget *parent, std::function<void(int result)> ended);

// While one is running, its window is shown and is the only one of the application that takes input; the
// event loop runs on. Ends with end() or the window's death. A second session while one is running is
// refused. When the window goes, the window that was active before gets the activation back.
class ModalSession {
public:
    ModalSession() = default;
    ~ModalSession();
    ModalSession(const ModalSession &) = delete;
    ModalSession &operator=(const ModalSession &) = delete;
    bool begin(QWidget *window); // false: another session is running, or no window
    void end();                  // hides the window; nothing when not running
    [[nodiscard]] bool isRunning() const;

private:
    QPointer<QWidget> m_window;
};

} // namespace platform
