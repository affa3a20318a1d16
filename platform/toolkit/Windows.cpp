#include "platform/toolkit/Windows.h"

#include "platform/Guarded.h"

#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <utility>

namespace platform {

namespace {

struct RegisteredWindow {
    QPointer<QWidget> window;
    rt::Weak<> controller;
};

struct CloseObserver {
    QPointer<QObject> owner;
    std::function<void(QWidget *)> handler;
};

QList<RegisteredWindow> &registeredWindows() {
    static auto *windows = new QList<RegisteredWindow>;
    windows->removeIf([](const RegisteredWindow &entry) { return entry.window.isNull(); });
    return *windows;
}

QList<CloseObserver> &closeObservers() {
    static auto *observers = new QList<CloseObserver>;
    observers->removeIf([](const CloseObserver &entry) { return entry.owner.isNull(); });
    return *observers;
}

rt::Weak<> &delegateReference() {
    static auto *delegate = new rt::Weak<>;
    return *delegate;
}

bool isTextField(const QWidget *view) {
    return qobject_cast<const QLabel *>(view) || qobject_cast<const QLineEdit *>(view);
}

} // namespace

void registerWindow(QWidget *window, rt::Object *controller) {
    if (!window)
        return;
    QList<RegisteredWindow> &windows = registeredWindows();
    for (RegisteredWindow &entry : windows) {
        if (entry.window == window) {
            entry.controller = rt::Weak<>(controller);
            return;
        }
    }
    windows.append({window, rt::Weak<>(controller)});
}

void unregisterWindow(QWidget *window) {
    registeredWindows().removeIf([window](const RegisteredWindow &entry) { return entry.window == window; });
}

rt::Object *windowController(const QWidget *window) {
    if (!window)
        return nullptr;
    for (const RegisteredWindow &entry : std::as_const(registeredWindows()))
        if (entry.window == window)
            return entry.controller.get();
    return nullptr;
}

QList<QWidget *> orderedWindows() {
    QList<QWidget *> windows;
    for (const RegisteredWindow &entry : std::as_const(registeredWindows()))
        windows.append(entry.window);
    return windows;
}

void setApplicationDelegate(rt::Object *delegate) {
    delegateReference() = rt::Weak<>(delegate);
}

rt::Object *applicationDelegate() {
    return delegateReference().get();
}

void observeWindowWillClose(QObject *owner, std::function<void(QWidget *window)> handler) {
    if (owner && handler)
        closeObservers().append({owner, std::move(handler)});
}

void windowWillClose(QWidget *window) {
    // Iterates over a copy, because a handler may add observers or delete the window or the owner of a later
    // observer.
    const QList<CloseObserver> observers = closeObservers();
    const QPointer<QWidget> alive = window;
    for (const CloseObserver &observer : observers)
        if (observer.owner && alive)
            guarded("a window's handler", [&] { observer.handler(window); });
}

QString textFieldValue(const QWidget *field) {
    if (!isTextField(field))
        return {};
    const auto *label = qobject_cast<const QLabel *>(field);
    const QString text = label ? label->text() : static_cast<const QLineEdit *>(field)->text();
    return text.isNull() ? u""_s : text;
}

void setTextFieldValue(QWidget *field, const QString &text) {
    if (auto *label = qobject_cast<QLabel *>(field))
        label->setText(text);
    else if (auto *edit = qobject_cast<QLineEdit *>(field))
        edit->setText(text);
}

} // namespace platform
