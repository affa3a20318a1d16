// The open calendar and the operations on it.
#pragma once

#include "standin/mailhost/model/Accounts.h"
#include "standin/mailhost/store/CalendarFile.h"

#include <QObject>
#include <vector>

namespace mailhost {

// A change that can be undone.
struct UndoStep {
    QString uid;
    QByteArray before; // the components of the appointment; empty if it did not exist
    QByteArray after;
    QString what; // "Move of “Design review”"
};

// Writes every change to the file at once. If writing fails, reads the file again, so that the program shows
// the state on disk, including changes by other programs. Main thread only.
class CalendarSession : public QObject {
    Q_OBJECT
public:
    // `file` must not be nullptr.
    CalendarSession(std::unique_ptr<CalendarFile> file, const HostOptions &options, QString outbox);

    [[nodiscard]] const CalendarFile &file() const { return *m_file; }
    [[nodiscard]] const Accounts &accounts() const { return m_accounts; }
    [[nodiscard]] const HostOptions &options() const { return m_options; }
    // Whether the user may change the appointment: it has no organizer, or one of the accounts is the
    // organizer.
    [[nodiscard]] bool isOwner(const Appointment &appointment) const {
        return appointment.organizerEmail.isEmpty() || m_accounts.find(appointment.organizerEmail);
    }

    // The reason, for the user, why the start of a series cannot change (see CalendarFile::keepsStart()).
    [[nodiscard]] static QString startIsKept();
    // Adds the appointment or changes the one with the same identifiers. On failure returns false and sets a
    // sentence for the user in lastError().
    bool store(const Appointment &appointment);
    bool remove(const QString &uid, const QString &recurrenceId);
    // Writes the message to the attendees (an invitation or a cancellation) into the outbox. Sending cannot
    // be undone.
    bool sendMessage(const Appointment &appointment, bool cancellation);
    // Sends the cancellation to the attendees and removes the appointment. Removes nothing if the sending
    // failed: the attendees would still expect the meeting.
    bool cancel(Appointment appointment);

    // The text, for the user, of the next undo or redo step; null if there is none. Changes of an appointment
    // with a meeting record cannot be undone, and neither can changes of an appointment that was changed in
    // another way since.
    [[nodiscard]] QString undoText() { return nextOf(m_undo, &UndoStep::after); }
    [[nodiscard]] QString redoText() { return nextOf(m_redo, &UndoStep::before); }
    bool undo() { return !undoText().isNull() && takeBack(m_undo, m_redo, false); }
    bool redo() { return !redoText().isNull() && takeBack(m_redo, m_undo, true); }
    [[nodiscard]] const QString &lastError() const { return m_lastError; }

Q_SIGNALS:
    void changed();

private:
    bool writeOrGoBack();
    void remember(UndoStep step, bool hasRecord);
    void forgetSteps(const QString &uid);
    QString nextOf(std::vector<UndoStep> &steps, QByteArray UndoStep::*expected) const;
    bool takeBack(std::vector<UndoStep> &from, std::vector<UndoStep> &to, bool forward);

    std::vector<UndoStep> m_undo;
    std::vector<UndoStep> m_redo;
    std::unique_ptr<CalendarFile> m_file;
    HostOptions m_options;
    QString m_outbox;
    Accounts m_accounts;
    QString m_lastError;
};

// The owner of the calendar: the address that takes part in most meetings; among equals the one that
// organizes most. Without meetings the sample user.
[[nodiscard]] Mailbox calendarOwner(const QList<Appointment> &appointments);

} // namespace mailhost
