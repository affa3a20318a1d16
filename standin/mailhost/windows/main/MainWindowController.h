// The controller of a main window, and the delegate of the whole program.
#pragma once

#include "standin/mailhost/model/HostContext.h"
#include "standin/mailhost/windows/grid/GridController.h"
#include "standin/mailhost/windows/main/AppointmentCommands.h"
#include "standin/mailhost/windows/main/MainToolBar.h"
#include "standin/mailhost/windows/main/MainWindow.h"

#include <QActionGroup>
#include <map>

namespace mailhost {

// Of class "ERageMainWindowController". Everything that changes an appointment goes through the object
// runtime.
class MainWindowController : public QObject, public rt::Object {
    Q_OBJECT
public:
    // `today` is called whenever needed, because the date may change while the program runs.
    explicit MainWindowController(std::function<QDate()> today);

    // The session is not owned; nullptr shows nothing.
    void setSession(CalendarSession *session);
    [[nodiscard]] QWidget *window() const { return m_window.get(); }
    [[nodiscard]] MainWindow *mainWindow() const { return m_window.get(); }
    [[nodiscard]] GridViewWrapper *grid() const { return m_grid.get(); }
    [[nodiscard]] AppointmentCommands *commands() const { return m_commands.get(); }
    // Shows the week with that day, or the day itself in the day view.
    void showDay(const QDate &day);
    void showExtent(CalendarGrid::Extent extent);
    // The start of a new appointment: the place where the user pointed last, else the next half hour on the
    // shown day.
    [[nodiscard]] NewPlace placeOfNew() const;

    void newAppointment();

    [[nodiscard]] rt::Value toolBarItem(const rt::Value &toolBar, const QString &identifier,
                                        bool willBeInserted);
    [[nodiscard]] QVariantList defaultIdentifiers(const rt::Value &) { return defaultToolBarIdentifiers(); }
    [[nodiscard]] QVariantList allowedIdentifiers(const rt::Value &) { return allowedToolBarIdentifiers(); }

Q_SIGNALS:
    void anotherWindowWanted();
    void quitWanted();

private:
    void buildMenus();
    void buildEditMenu();
    void buildViewMenu();
    void connectCalendar();
    void refresh();
    void showState(); // of the menus
    void turnPages(int pages);
    [[nodiscard]] QDate firstShown() const;
    void newAt(const QDateTime &start, bool allDay);
    void showMenu(const QPoint &position);

    std::function<QDate()> m_today;
    QDate m_day;
    CalendarGrid::Extent m_extent = CalendarGrid::Extent::Week;
    std::optional<NewPlace> m_askedPlace;
    QPointer<CalendarSession> m_session;
    std::map<QString, std::unique_ptr<platform::ToolbarItem>> m_toolBarItems; // must outlive the window
    std::unique_ptr<MainWindow> m_window;
    QActionGroup *m_forSelected; // commands that need a selected appointment
    std::unique_ptr<GridViewWrapper> m_grid;
    std::unique_ptr<AppointmentCommands> m_commands;
};

// Represents the whole program; of class "ErageAppDelegate".
class AppDelegate : public rt::Object {
public:
    AppDelegate();
    void newCalendarMeeting(const rt::Value &sender);
};

void defineMainWindowClasses();

[[nodiscard]] QDate mondayOf(const QDate &day);

} // namespace mailhost
