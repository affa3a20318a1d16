// A main window: menus, tool-bar, and the calendar.
#pragma once

#include "platform/toolkit/Toolbar.h"
#include "standin/mailhost/windows/grid/CalendarGrid.h"

#include <QAction>
#include <QMainWindow>
#include <functional>

class QLabel;
class QMenu;

namespace mailhost {

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow();

    void showTitle(const QString &days, const QString &file);
    [[nodiscard]] CalendarGrid *calendar() const { return m_calendar; }
    [[nodiscard]] platform::Toolbar *toolBar() const { return m_toolBar; }

    // A new item at the end of the menu. `name` is its object name, which may be empty.
    QAction *addCommand(QMenu *menu, const QString &name, const QString &text, const QKeySequence &keys,
                        std::function<void()> operation);
    // The command of that name, or nullptr.
    [[nodiscard]] QAction *command(const QString &name) const { return findChild<QAction *>(name); }

Q_SIGNALS:
    // Emitted after the window is closed and hidden; it still exists.
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    platform::Toolbar *m_toolBar;
    QLabel *m_title;
    CalendarGrid *m_calendar;
    bool m_closed = false;
};

} // namespace mailhost
