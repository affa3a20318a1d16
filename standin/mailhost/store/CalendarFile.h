// Reads, changes and writes an iCalendar file (RFC 5545) without losing data that this program does not know.
#pragma once

#include "standin/mailhost/store/Appointment.h"

#include <QStringList>
#include <memory>

namespace mailhost {

struct CalendarEntry;
class CalendarIndex;
struct Document;

class CalendarFile {
public:
    // Reads the file. On failure returns nullptr, and `error` tells the user what is wrong and what to do. A
    // file that does not exist is an error. Dates in zones that neither the file nor the system knows are
    // taken as local time.
    static std::unique_ptr<CalendarFile> open(const QString &path, QString *error);
    ~CalendarFile();

    [[nodiscard]] const QString &path() const { return m_path; }

    // All appointments and exceptions, in the file's order. Not the occurrences of series.
    [[nodiscard]] QList<Appointment> appointments() const;
    [[nodiscard]] std::optional<Appointment> find(const QString &uid,
                                                  const QString &recurrenceId = QString()) const;
    [[nodiscard]] bool contains(const QString &uid, const QString &recurrenceId) const;
    // Of its component (ConferenceLink.h); empty if there is none.
    [[nodiscard]] QString conferenceLink(const QString &uid, const QString &recurrenceId) const;
    // The appointments in [from, to), sorted by start. Series are expanded (RRULE, RDATE, EXDATE); an
    // exception (RECURRENCE-ID) replaces the occurrence that it changes, a cancelled one removes it, and the
    // days after one with RANGE=THISANDFUTURE follow it. The first list reads all appointments, later ones
    // only what has changed.
    [[nodiscard]] QList<Occurrence> occurrences(const QDateTime &from, const QDateTime &to) const;

    static QString newUid();
    // Fills an empty uid with a new one and returns the uid. With a recurrenceId (an instanceId) the
    // appointment becomes an exception of that series: it begins as a copy of the series' component, with all
    // that this program does not know, but without its recurrence. Returns a null text, and adds nothing, if
    // the appointment, or an exception for that day, exists already.
    QString add(const Appointment &appointment);
    // Whether days of the series were changed, deleted or added. They are named by its start, so it stays.
    [[nodiscard]] bool keepsStart(const QString &uid) const;
    // Writes the values that differ into the component; every property, parameter and component that
    // Appointment does not carry stays as it is, and so does the text of one whose value did not change. A
    // change is dated (LAST-MODIFIED, DTSTAMP); SEQUENCE is taken from the appointment: the sender increases
    // it. A time is written in the zone that its zoneId names, or else in that of its value, with a VTIMEZONE
    // where the file lacks one. The rule of a moved series follows (movedRule()). The body is written as
    // STYLED-DESCRIPTION and X-ALT-DESC with its plain twin in DESCRIPTION. A join link in the location is
    // also written as CONFERENCE (ConferenceLink.h). Returns false, and changes nothing, if the appointment
    // does not exist, or for another start of a series that keepsStart().
    bool update(const Appointment &appointment);
    // A series goes with its exceptions. With a recurrenceId (or the instanceId of a day that has no
    // exception) that day is taken out of its series: it becomes an EXDATE. Days that followed it
    // (RANGE=THISANDFUTURE) still follow it. Returns false if the appointment does not exist.
    bool remove(const QString &uid, const QString &recurrenceId = QString());

    // All components of the appointment (a series with its exceptions) as text for restore(). Empty if the
    // appointment does not exist.
    [[nodiscard]] QByteArray componentsOf(const QString &uid) const;
    // Writes the components back to the letter: in place of the present ones, or where they were removed, or
    // else at the end of the first VCALENDAR. An empty text removes the appointment. REQUIRES: the text is
    // of componentsOf() for that appointment.
    void restore(const QString &uid, const QByteArray &components);

    // Writes atomically (a temporary file beside it, then moved over it; the permissions are kept). Returns
    // false, with a sentence for the user, if the file cannot be written, or if another program has changed
    // it since it was read or saved (then it is not overwritten).
    bool save(QString *error);

    // The appointment as an iTIP message (Messages.h). Empty if the appointment does not exist, or has no
    // UID in the file yet.
    [[nodiscard]] QByteArray itipMessage(const QString &uid, const QString &recurrenceId, bool cancel) const;

private:
    CalendarFile(const QString &path, Document document);
    void changed(CalendarEntry &entry); // also dates it
    bool removeAll(const QString &uid);

    QString m_path;
    QByteArray m_digestOnDisk; // of the file last read or saved; empty: there was no file
    std::unique_ptr<CalendarIndex> m_index;
};

} // namespace mailhost
