// The main window and its controller.
#pragma once

#include "standin/mailhost/windows/GridController.h"

#include <QMainWindow>
#include <functional>

class QLabel;
class QMessageBox;
class QToolBar;

namespace mailhost {

class MainWindowController;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(MainWindowController *controller);
    void showTitle(const QString &week, const QString &file);
    [[nodiscard]] WeekList *list() const { return m_list; }
    // The tool-bar button of that identifier; nullptr when the window has none. Made once.
    [[nodiscard]] QWidget *toolBarItem(const QString &identifier);
    void fillToolBar(const QStringList &identifiers);
    void ask(const QString &question, const QString &detail, const QString &verb, std::function<void()> yes);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    QAction *addAction(QMenu *menu, const QString &name, const QString &text, const QKeySequence &keys,
                       void (MainWindowController::*operation)());
    MainWindowController *m_controller;
    QToolBar *m_toolBar;
    QLabel *m_title;
    WeekList *m_list;
    QPointer<QMessageBox> m_question;
};

// Of class "ERageMainWindowController". Everything that changes an appointment goes through the object
// runtime.
class MainWindowController : public QObject, public rt::Object {
    Q_OBJECT
public:
    explicit MainWindowController(const QDate &today);
    ~MainWindowController() override;

    // The session is not owned; nullptr shows nothing.
    void setSession(CalendarSession *session);
    [[nodiscard]] QWidget *window() const { return m_window.get(); }
    [[nodiscard]] MainWindow *mainWindow() const { return m_window.get(); }
    [[nodiscard]] GridViewWrapper *grid() const { return m_grid.get(); }
    void showWeek(const QDate &day);
    // Where an appointment made now begins: the selected or shown day, at the next half hour.
    [[nodiscard]] QDateTime startOfNew() const;
    // Opens the editor of the appointment; nullptr when there is none.
    rt::Object *openAppointment(const QString &uid, const QString &recurrenceId = QString());

    void newAppointment();
    void newMeeting();
    void goToToday();
    void previousWeek();
    void nextWeek();
    void openSelected();
    void deleteSelected();
    void cancelSelected();
    void renameSelected();
    void moveEarlier() { moveSelected(-30 * 60); }
    void moveLater() { moveSelected(30 * 60); }
    void makeLonger() { resizeSelected(30 * 60); }
    void makeShorter() { resizeSelected(-30 * 60); }
    // False when an editor with changes stays open.
    bool closeEditors();

    [[nodiscard]] rt::Value toolBarItem(const rt::Value &toolBar, const QString &identifier,
                                        bool willBeInserted);
    [[nodiscard]] QVariantList defaultIdentifiers(const rt::Value &toolBar);
    [[nodiscard]] QVariantList allowedIdentifiers(const rt::Value &toolBar);

private:
    void refresh();
    void moveSelected(int seconds);
    void resizeSelected(int seconds);
    void deleteEvent(bool series);

    QDate m_today;
    QDate m_day;
    QPointer<CalendarSession> m_session;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<GridViewWrapper> m_grid;
};

// Of class "ErageAppDelegate": stands for the whole program.
class AppDelegate : public rt::Object {
public:
    AppDelegate();
    void newCalendarMeeting(const rt::Value &sender);
};

void defineMainWindowClasses();

} // namespace mailhost
