// The calendar that is open, and what may be done to it.
#pragma once

#include "standin/mailhost/model/Accounts.h"
#include "standin/mailhost/store/CalendarFile.h"

#include <QObject>
#include <vector>

namespace mailhost {

// A change that can be taken back.
struct UndoStep {
    QString uid;
    QByteArray before; // the components of the appointment; empty: there was none
    QByteArray after;
    QString what; // "Move of “Design review”"
};

// Every change is written to the file at once. When that fails the file is read again, so that the program
// shows what is on disk, also what another program has written there meanwhile. Main thread only.
class CalendarSession : public QObject {
    Q_OBJECT
public:
    // The file is not nullptr.
    CalendarSession(std::unique_ptr<CalendarFile> file, const HostOptions &options, QString outbox);

    [[nodiscard]] const CalendarFile &file() const { return *m_file; }
    [[nodiscard]] const Accounts &accounts() const { return m_accounts; }
    [[nodiscard]] const HostOptions &options() const { return m_options; }
    // Whether the person may change the appointment: it has no organizer, or one of the accounts is.
    [[nodiscard]] bool isOwner(const Appointment &appointment) const {
        return appointment.organizerEmail.isEmpty() || m_accounts.find(appointment.organizerEmail);
    }

    // Why the start of a series stays that CalendarFile::keepsStart(), for the user to read.
    [[nodiscard]] static QString startIsKept();
    // Adds it, or changes the one with the same identifiers. False with a sentence for the user in
    // lastError().
    bool store(const Appointment &appointment);
    bool remove(const QString &uid, const QString &recurrenceId);
    // Writes the message to the attendees (a cancellation: that the meeting does not take place) into the
    // outbox. What was sent cannot be taken back.
    bool sendMessage(const Appointment &appointment, bool cancellation);
    // Tells the attendees that it does not take place, and removes it. Removed is only what they were told
    // of: otherwise they would go on expecting the meeting.
    bool cancel(Appointment appointment);

    // What undo() and redo() would do next, for the person to read; a null text when there is nothing. Only
    // changes that nobody else has followed can be taken back: not those of an appointment with a meeting
    // record, and not when the appointment has been changed otherwise since.
    [[nodiscard]] QString undoText() { return nextOf(m_undo, &UndoStep::after); }
    [[nodiscard]] QString redoText() { return nextOf(m_redo, &UndoStep::before); }
    bool undo() { return !undoText().isNull() && takeBack(m_undo, m_redo, false); }
    bool redo() { return !redoText().isNull() && takeBack(m_redo, m_undo, true); }
    [[nodiscard]] const QString &lastError() const { return m_lastError; }
    // The path of the last message written.
    [[nodiscard]] const QString &lastMessage() const { return m_lastMessage; }

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
    QString m_lastMessage;
};

// Whose calendar it is: the address that takes part in most of its meetings, as organizer when there is a
// tie. Without meetings the example person.
[[nodiscard]] Mailbox calendarOwner(const QList<Appointment> &appointments);

} // namespace mailhost
