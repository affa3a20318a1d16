// An iCalendar file (RFC 5545) that is read, changed and written without losing what this program does not know.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include <QStringList>
#include <memory>

namespace mailhost {

class CalendarFile {
public:
    // Reads the file. On failure answers nullptr and says in `error` what is wrong and what to do, for the user to read.
    // A file that does not exist is an error; a new calendar is made with create(). Dates in zones that neither the file
    // nor the system knows are taken as local time, with an entry in warnings().
    static std::unique_ptr<CalendarFile> open(const QString &path, QString *error);
    // An empty calendar that will be written to that path by the first save.
    static std::unique_ptr<CalendarFile> create(const QString &path);
    ~CalendarFile();

    [[nodiscard]] const QString &path() const;
    [[nodiscard]] const QStringList &warnings() const;

    // All appointments and exceptions, in the file's order. Not the occurrences of series.
    [[nodiscard]] QList<Appointment> appointments() const;
    [[nodiscard]] std::optional<Appointment> find(const QString &uid, const QString &recurrenceId = QString()) const;
    // What happens from `from` up to, not including, `to`, sorted by start; series are expanded (RRULE, RDATE, EXDATE, and
    // RECURRENCE-ID exceptions in place of the occurrence they change). Linear in the number of appointments.
    [[nodiscard]] QList<Occurrence> occurrences(const QDateTime &from, const QDateTime &to) const;

    // Makes a new identifier. `add` fills an empty uid with one and answers the uid.
    static QString newUid();
    QString add(const Appointment &appointment);
    // Writes the values that differ into the component; every property, parameter and component that Appointment does not
    // carry stays as it is, and so does the text of one whose value did not change. False when there is no such one.
    bool update(const Appointment &appointment);
    bool remove(const QString &uid, const QString &recurrenceId = QString());

    // Writes atomically (a temporary file beside it, then moved over it; the permissions are kept). False with a sentence
    // for the user when it cannot be written, or when another program has changed the file since it was read or saved
    // (then nothing is overwritten).
    bool save(QString *error);

    // The appointment alone as an iTIP message body: METHOD:REQUEST (or CANCEL), with the zones it names (RFC 5546).
    [[nodiscard]] QByteArray itipMessage(const QString &uid, const QString &recurrenceId, bool cancel) const;

private:
    CalendarFile();
    struct Private;
    std::unique_ptr<Private> d;
};

// Writes an iMIP message (RFC 6047) for the appointment to the outbox folder, one .eml file, atomically: from the
// organizer to every attendee, with a text part and the text/calendar part. Answers the file's path, a null text with a
// sentence in `error` when it cannot be written.
QString writeImipMessage(const QString &outbox, const CalendarFile &calendar, const Appointment &appointment, bool cancel,
                         QString *error);

} // namespace mailhost
