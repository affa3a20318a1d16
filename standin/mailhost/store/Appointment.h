// One appointment of a calendar file, as plain values.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>
#include <optional>

namespace mailhost {

// A point in time in the form of the calendar file.
struct CalendarTime {
    enum class Kind {
        Zoned,    // an instant in a named zone
        Utc,      // an instant written with "Z"
        Floating, // a clock time without zone: the same in every zone
        Date      // a whole day
    };
    Kind kind = Kind::Zoned;
    QDateTime value; // zoned and UTC: the instant in its zone; floating and date: local clock time of the
                     // system's zone
    QString zoneId;  // the TZID as written in the file (may be a Windows name or unknown); empty unless Zoned
    friend bool operator==(const CalendarTime &a, const CalendarTime &b) = default;
};

enum class AttendeeType { Required = 0, Optional = 1, Resource = 2 };

struct Attendee {
    QString name;
    QString email;
    AttendeeType type = AttendeeType::Required;
    friend bool operator==(const Attendee &a, const Attendee &b) = default;
};

struct Appointment {
    QString uid;          // never empty for an appointment in a file
    QString recurrenceId; // RECURRENCE-ID as written; empty for a single appointment or the series itself
    QString summary;      // null when the file has none
    QString location;     // null when the file has none
    CalendarTime start;
    CalendarTime end;       // computed from a DURATION; of whole days the day after the last one
    QString recurrenceRule; // RRULE as written; empty when it does not recur
    QString organizerName;
    QString organizerEmail;    // empty: an appointment without meeting
    QList<Attendee> attendees; // in the file's order
    QString bodyHtml;       // STYLED-DESCRIPTION or X-ALT-DESC; made from DESCRIPTION when there is only that
    QString ucCapabilities; // the private field, to the letter; null when the file has none
    QString status;         // STATUS, upper case; empty when the file has none
    int sequence = 0;
    friend bool operator==(const Appointment &a, const Appointment &b) = default;
};

// One entry of a list: an appointment, or one occurrence of a series.
struct Occurrence {
    QString uid;
    QString recurrenceId; // of an exception; empty otherwise
    // Names this day of its series: the RECURRENCE-ID that an exception for it has or would get. Empty if the
    // appointment does not recur.
    QString instanceId;
    QDateTime start; // in the system's zone
    QDateTime end;
    bool allDay = false;
    bool isOccurrence = false; // stands for one day of a series, not for the series
    bool isException = false;  // an occurrence that the file changes
    QString summary;
    QString location;
    bool hasMeetingRecord = false; // ucCapabilities is not empty
};

} // namespace mailhost
