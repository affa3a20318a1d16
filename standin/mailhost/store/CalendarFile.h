// An iCalendar file (RFC 5545) that is read, changed and written without losing what this program does not
// know.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include <QStringList>
#include <memory>

namespace mailhost {

class CalendarFile {
public:
    // Reads the file. On failure answers nullptr and says in `error` what is wrong and what to do, for the
    // user to read. A file that does not exist is an error; a new calendar is made with create(). Dates in
    // zones that neither the file nor the system knows are taken as local time, with an entry in warnings().
    static std::unique_ptr<CalendarFile> open(const QString &path, QString *error);
    // An empty calendar that will be written to that path by the first save, unless there is a file by then.
    static std::unique_ptr<CalendarFile> create(const QString &path);
    ~CalendarFile();

    [[nodiscard]] const QString &path() const;
    // For the user to read; a listing may add some. Valid as long as the object.
    [[nodiscard]] const QStringList &warnings() const;

    // All appointments and exceptions, in the file's order. Not the occurrences of series.
    [[nodiscard]] QList<Appointment> appointments() const;
    [[nodiscard]] std::optional<Appointment> find(const QString &uid,
                                                  const QString &recurrenceId = QString()) const;
    [[nodiscard]] bool contains(const QString &uid, const QString &recurrenceId) const;
    // What happens from `from` up to, not including, `to`, sorted by start; series are expanded (RRULE,
    // RDATE, EXDATE, and RECURRENCE-ID exceptions in place of the occurrence they change, none in place of a
    // cancelled one; the days behind an exception with RANGE=THISANDFUTURE follow it). The first
    // listing reads all appointments; later ones what has changed.
    [[nodiscard]] QList<Occurrence> occurrences(const QDateTime &from, const QDateTime &to) const;

    static QString newUid();
    // Fills an empty uid with a new one and answers the uid. With a recurrenceId (an instanceId) it becomes
    // an exception of that series, and begins as a copy of the series' component, with all that this program
    // does not know, but for what says when the series takes place. A null text, and nothing is added, when
    // there is such an appointment, or an exception for that day, already.
    QString add(const Appointment &appointment);
    // Writes the values that differ into the component; every property, parameter and component that
    // Appointment does not carry stays as it is, and so does the text of one whose value did not change. A
    // change is dated (LAST-MODIFIED, DTSTAMP); SEQUENCE is only what the appointment says: whoever sends it
    // raises it. A time is written in the zone that its zoneId names, or else in that of its value, with a
    // VTIMEZONE where the file lacks one. When the start of a series is moved, its deleted and changed days
    // follow, the UNTIL of its rule, and the day in a rule that names only the one on which it began; changed
    // days take place when they did. The body is written as STYLED-DESCRIPTION and X-ALT-DESC with its
    // plain twin in DESCRIPTION. A join link in the location is also written as CONFERENCE
    // (ConferenceLink.h). False when there is no such one.
    bool update(const Appointment &appointment);
    // A series goes with its exceptions. With a recurrenceId (or the instanceId of a day that has no
    // exception) that day is taken out of its series: it becomes an EXDATE. Days that followed it
    // (RANGE=THISANDFUTURE) do so further. False when there is no such one.
    bool remove(const QString &uid, const QString &recurrenceId = QString());

    // All components of that appointment (a series with its exceptions) as text, to be put back by restore().
    // Empty when there is none.
    [[nodiscard]] QByteArray componentsOf(const QString &uid) const;
    // Puts them back, to the letter, in place of what the appointment is now, or where it was when it was
    // removed; else at the end of the first VCALENDAR. With an empty text it is removed. False, and nothing
    // is changed, when the text is no such components.
    bool restore(const QString &uid, const QByteArray &components);

    // Writes atomically (a temporary file beside it, then moved over it; the permissions are kept). False
    // with a sentence for the user when it cannot be written, or when another program has changed the file
    // since it was read or saved (then nothing is overwritten).
    bool save(QString *error);

    // The appointment alone as an iTIP message body: METHOD:REQUEST (or CANCEL), with the zones it names (RFC
    // 5546), without alarms and the private field. CRLF. Empty when there is no such one, or when it has no
    // UID in the file yet.
    [[nodiscard]] QByteArray itipMessage(const QString &uid, const QString &recurrenceId, bool cancel) const;

private:
    CalendarFile();
    struct Private;
    std::unique_ptr<Private> d;
};

// Writes an iMIP message (RFC 6047) for the appointment to the outbox folder, one .eml file, atomically: from
// the organizer to every attendee, with a text part and the text/calendar part. Answers the file's path, a
// null text with a sentence in `error` when it cannot be written.
QString writeImipMessage(const QString &outbox, const CalendarFile &calendar, const Appointment &appointment,
                         bool cancel, QString *error);

} // namespace mailhost
