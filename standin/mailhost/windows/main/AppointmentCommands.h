// The user's commands for the selected appointment of a calendar view, by mouse or keyboard.
#pragma once

#include "standin/mailhost/windows/JoinLink.h"
#include "standin/mailhost/windows/MessageBoxes.h"
#include "standin/mailhost/windows/grid/GridController.h"
#include "standin/mailhost/windows/main/MainWindow.h"

namespace mailhost {

// Every change uses the methods of the host's object model, so that hooks see it and may refuse it. A refused
// change leaves the calendar unchanged, and the view shows that.
class AppointmentCommands : public QObject {
    Q_OBJECT
public:
    // Neither is owned; both must outlive this object.
    AppointmentCommands(MainWindow *window, GridViewWrapper *grid);

    void openSelected();
    void openSeries(); // of the selected day; the appointment itself if it does not recur
    [[nodiscard]] QString joinLink() const; // of the selected appointment; empty if there is none
    void join() { openJoinLink(m_window, joinLink()); }
    void renameSelected() { m_window->calendar()->beginRename(); }
    // Moves start and end by these seconds; for an all-day appointment by a day in that direction. Does
    // nothing if the rest would be too short.
    void changeBy(int startSeconds, int endSeconds);
    void moveByDays(int days);
    void deleteSelected();
    void cancelSelected();
    // Do nothing if there is no step.
    void undo();
    void redo();

    // Carry out the mouse's gestures.
    void moveTo(const QDateTime &start);
    void resizeTo(const QDateTime &start, qint64 seconds);
    void renameTo(const QString &subject);

private:
    [[nodiscard]] CalendarEvent *selectedEvent() const;
    [[nodiscard]] CalendarSession *session() const { return m_grid->controller()->session(); }
    void tell(bool done); // if not done, shows the reason
    // With an additional button that does nothing. Closes a question that is still open.
    void ask(const QString &question, const QString &detail, const QList<MessageChoice> &choices);

    MainWindow *m_window;
    GridViewWrapper *m_grid;
    QPointer<QMessageBox> m_question;
};

} // namespace mailhost
