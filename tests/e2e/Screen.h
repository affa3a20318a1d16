// An X server with a window manager, its keyboard and its mouse, and what can be seen on it from outside.
#pragma once

#include "standin/support/Child.h"

#include <QImage>
#include <QString>
#include <QTemporaryDir>

namespace e2e {

class Screen {
public:
    // The one of this test program; started when it is first asked for.
    static Screen &instance();

    [[nodiscard]] bool isThere() const { return m_isThere; }
    [[nodiscard]] const QString &display() const { return m_display; }

    // Keys go to the window that has the focus, in the notation of xdotool: "alt+i".
    void press(const QString &keys);
    void type(const QString &text);
    void drag(const QPoint &from, const QPoint &to);
    // The user chooses another window in the window manager.
    void activate(const QString &title);

    // Its title; a null text when no window is active.
    [[nodiscard]] QString activeWindow();
    [[nodiscard]] QImage picture() const;

private:
    Screen();
    bool startServer();
    bool startWindowManager();
    QString xdotool(const QStringList &arguments, int *exitCode = nullptr);

    QTemporaryDir m_folder; // the server keeps the picture of the screen in a file there
    standin::Child m_server;
    standin::Child m_windowManager;
    QString m_display;
    bool m_isThere = false;
};

} // namespace e2e
