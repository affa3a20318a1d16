// The whole program as an object for main() and tests.
#pragma once

#include "standin/mailhost/model/HostOptions.h"
#include "standin/mailhost/windows/editor/EditorWindow.h"
#include "standin/mailhost/windows/main/MainWindowController.h"

namespace mailhost {

// Needs a QApplication and filled services (installDesktopServices() or a test's own) before start(). Only
// one may exist. Its destruction closes its windows.
class HostApplication {
public:
    explicit HostApplication(HostOptions options);
    ~HostApplication();
    HostApplication(const HostApplication &) = delete;
    HostApplication &operator=(const HostApplication &) = delete;

    // Defines the classes of the host's object model. A second call does nothing.
    static void defineClasses();
    // Writes this program's bundle with the chosen version below the root folder. On failure returns false
    // and sets a sentence in `error`. Call it after the services are filled.
    bool installBundle(QString *error) const;
    // Fills the platform's services with the desktop's.
    void installDesktopServices() const;

    // Makes the first main window (not shown) and the application delegate.
    void start();
    // Opens the calendar of the options, or the sample calendar from the program's data folder. On failure
    // returns false, sets a sentence in `error` and keeps the old calendar open.
    bool openCalendar(QString *error);
    void show();
    // Loads the plug-in library. Returns true if there is none to load. Call it after start().
    bool loadPlugin(QString *error) const;

    [[nodiscard]] const HostOptions &options() const { return m_options; }
    [[nodiscard]] CalendarSession *session() const { return m_session.get(); }
    // The first open main window, or nullptr.
    [[nodiscard]] MainWindowController *mainWindowController() const { return m_mainWindows.value(0); }
    [[nodiscard]] QList<MainWindowController *> mainWindowControllers() const { return m_mainWindows; }
    // Makes another main window on the same calendar (not shown).
    MainWindowController *addMainWindow();
    // Closes the editors and then the main windows. Returns false if an editor with changes stays open.
    bool closeAll();
    // Opens the editor of the appointment as the user does; nullptr if the appointment does not exist.
    EditorWindowController *openEditorFor(const QString &uid, const QString &recurrenceId = QString());
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
    QList<MainWindowController *> m_mainWindows; // owned, in order of opening
};

// The options of the command line. Ends the process on an error and for help or version.
[[nodiscard]] HostOptions optionsFromArguments();

} // namespace mailhost
