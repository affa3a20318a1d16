// What the user does to the selected appointment of a calendar view, by mouse or by keyboard.
#pragma once

#include "standin/mailhost/windows/grid/GridController.h"
#include "standin/mailhost/windows/main/MainWindow.h"

namespace mailhost {

// Every change goes through the methods of the host's object model, so that who follows them learns of it
// and may refuse it; what was refused is still in the calendar as it was, and shown so.
class AppointmentCommands : public QObject {
    Q_OBJECT
public:
    // Neither is owned; both outlive this.
    AppointmentCommands(MainWindow *window, GridViewWrapper *grid);
    void setSession(CalendarSession *session) { m_session = session; }

    void openSelected();
    void openSeries(); // of the selected day; the appointment itself when it does not recur
    [[nodiscard]] QString joinLink() const; // of the selected one; empty when there is none
    void join();
    void renameSelected() { m_window->calendar()->beginRename(); }
    // Moves start and end by so many seconds; those of an all-day appointment by a day in that direction.
    // Does nothing when too little would be left.
    void changeBy(int startSeconds, int endSeconds);
    void moveByDays(int days);
    void deleteSelected();
    void cancelSelected();
    void undo();
    void redo();

    // The ends of the mouse's gestures.
    void moveTo(const QDateTime &start);
    void resizeTo(const QDateTime &start, qint64 seconds);
    void renameTo(const QString &subject);

private:
    [[nodiscard]] CalendarEvent *selectedEvent() const;
    void tell(bool done); // why it was not

    MainWindow *m_window;
    GridViewWrapper *m_grid;
    QPointer<CalendarSession> m_session;
};

} // namespace mailhost
