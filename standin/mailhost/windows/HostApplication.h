// The whole program, as an object that main() or a test drives.
#pragma once

#include "standin/mailhost/model/HostOptions.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/mailhost/windows/main/MainWindowController.h"

namespace mailhost {

// Needs a QApplication and filled services (installDesktopServices() or a test's own) before start(). One at
// a time. Closing and deleting it closes its windows.
class HostApplication {
public:
    explicit HostApplication(HostOptions options);
    ~HostApplication();
    HostApplication(const HostApplication &) = delete;
    HostApplication &operator=(const HostApplication &) = delete;

    // Defines the classes of the host's object model; once is enough, again does nothing.
    static void defineClasses();
    // Below the root folder there is then this program's bundle with the chosen version. False with a
    // sentence in `error` when it cannot be written. After the services are filled.
    bool installBundle(QString *error) const;
    // Fills the platform's services with the desktop's.
    void installDesktopServices() const;

    // Makes the first main window (not shown) and the application delegate.
    void start();
    // Opens the calendar of the options, or the sample calendar from the program's data folder. False with a
    // sentence in `error`; what was open stays open.
    bool openCalendar(QString *error);
    void show();
    // Opens the plug-in library. True when there is none to load. After start().
    bool loadPlugin(QString *error) const;

    [[nodiscard]] const HostOptions &options() const { return m_options; }
    [[nodiscard]] CalendarSession *session() const { return m_session.get(); }
    // The first main window that is open; nullptr when there is none.
    [[nodiscard]] MainWindowController *mainWindowController() const;
    [[nodiscard]] QList<MainWindowController *> mainWindowControllers() const;
    // One more main window on the same calendar (not shown).
    MainWindowController *addMainWindow();
    // Closes the editors and then the main windows. False when an editor with changes stays open.
    bool closeAll();
    // The editor of the appointment, opened as the person opens it; nullptr when there is no such
    // appointment.
    EditorWindowController *openEditorFor(const QString &uid, const QString &recurrenceId = QString());
    EditorWindowController *openNewMeeting();
    EditorWindowController *openNewAppointment();

private:
    QString dataFolder() const;
    QString sampleFile(QString *error) const;
    [[nodiscard]] QDate today() const;
    [[nodiscard]] NewPlace placeOfNew() const;
    void windowClosed(MainWindowController *controller);

    HostOptions m_options;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<CalendarSession> m_session;
    std::vector<std::unique_ptr<MainWindowController>> m_mainWindows; // in order of opening
};

// The options of the command line. Ends the process on a mistake, and when help or version is asked for.
[[nodiscard]] HostOptions optionsFromArguments();

} // namespace mailhost
