// Appointments in the host's object model.
#pragma once

#include "platform/runtime/Object.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/model/CalendarSession.h"

#include <QPointer>
#include <functional>
#include <optional>

namespace mailhost {

// Shows a message to the user, attached to the window if given. Set by the windows.
using ErrorPresenter = std::function<void(QWidget *parent, const QString &message)>;
[[nodiscard]] ErrorPresenter &errorPresenter();

class EventAttendee : public rt::Object {
public:
    explicit EventAttendee(Attendee attendee);
    [[nodiscard]] QString name() const { return m_attendee.name; }
    [[nodiscard]] QString emailAddress() const { return m_attendee.email; }
    [[nodiscard]] int attendeeType() const { return int(m_attendee.type); }

private:
    Attendee m_attendee;
};

// The recurrence of an appointment.
class Recurrence : public rt::Object {
public:
    explicit Recurrence(QString rule);
    [[nodiscard]] QString rule() const { return m_rule; }

private:
    QString m_rule;
};

// Lists and recurrence as host values that live until the next turn of the event loop.
[[nodiscard]] rt::Value attendeeValues(const QList<Attendee> &attendees);
[[nodiscard]] rt::Value recurrenceValue(const QString &rule); // no value if it does not recur

// A live view of an appointment in the calendar or of one that is not stored yet. Values set on this object
// are visible through it at once and are stored when the editor that shows it is saved.
class CalendarEvent : public rt::Object {
public:
    // A value that other code may set; the editor is notified and shows it.
    using Field = QString Appointment::*;
    using SetHandler = std::function<void(Field field)>;

    CalendarEvent(CalendarSession *session, const QString &uid, const QString &recurrenceId,
                  bool isOccurrence);
    CalendarEvent(CalendarSession *session, Appointment draft);

    // The stored appointment (or the draft) with the values set on this object.
    [[nodiscard]] virtual Appointment appointment() const;
    [[nodiscard]] Appointment stored() const;
    [[nodiscard]] bool isStored() const {
        return m_session && m_session->file().contains(m_uid, m_recurrenceId);
    }
    [[nodiscard]] CalendarSession *session() const { return m_session; }
    // For one day of a series: which one, and when it is; the series has its own times.
    void setOccurrence(const Occurrence &occurrence) { m_occurrence = occurrence; }
    // The identifier of this day in its series; empty for a single appointment and for a whole series.
    [[nodiscard]] QString instanceId() const {
        return m_isOccurrence ? m_occurrence.instanceId : m_recurrenceId;
    }
    // Whether both represent the same appointment, or the same day of the same series.
    [[nodiscard]] bool isSame(const CalendarEvent &other) const;
    // A copy without the values set on this object.
    [[nodiscard]] std::unique_ptr<CalendarEvent> copy() const;
    // The appointment to store after a change; for a day of a series this is an exception.
    [[nodiscard]] Appointment changeable() const;
    // Call it after an exception was stored for the day: the object then represents the exception.
    void followStored();
    void setHandler(SetHandler handler) { m_handler = std::move(handler); }
    // Drops the set values, which are stored now.
    void clearSet() { m_set.clear(); }
    [[nodiscard]] bool hasSetCapabilities() const;

    [[nodiscard]] QString summary() const { return appointment().summary; }
    [[nodiscard]] QString location() const { return appointment().location; }
    [[nodiscard]] rt::Value startTime() const { return dateValue(appointment().start); }
    [[nodiscard]] rt::Value endTime() const { return dateValue(appointment().end); }
    [[nodiscard]] rt::Value recurrence() const { return recurrenceValue(appointment().recurrenceRule); }
    [[nodiscard]] QString body() const { return appointment().bodyHtml; }
    [[nodiscard]] rt::Value attendeeList() const { return attendeeValues(appointment().attendees); }
    [[nodiscard]] bool isOccurrence() const { return m_isOccurrence; }
    [[nodiscard]] bool isModifiedException() const { return !m_recurrenceId.isEmpty() && !m_isOccurrence; }
    // The stored CONFERENCE; empty if there is none.
    [[nodiscard]] QString conferenceLink() const {
        return m_session ? m_session->file().conferenceLink(m_uid, m_recurrenceId) : QString();
    }
    [[nodiscard]] bool isOwner() const { return m_session && m_session->isOwner(appointment()); }
    [[nodiscard]] EmailAccount *account() const;
    [[nodiscard]] QString UUID() const { return m_uid; }
    [[nodiscard]] bool isRecurring() const { return !appointment().recurrenceRule.isEmpty(); }
    [[nodiscard]] double duration() const;    // seconds
    [[nodiscard]] int recurrenceType() const; // 0 none, 1 daily, 2 weekly, 3 monthly, 4 yearly
    [[nodiscard]] QTimeZone timeZone() const { return zoneOf(appointment().start); }
    [[nodiscard]] bool isMeeting() const { return !appointment().attendees.isEmpty(); }
    [[nodiscard]] rt::Value organizer() const;
    [[nodiscard]] rt::Object *seriesMasterRecord() const;
    [[nodiscard]] QString exchangeID() const { return {}; }
    [[nodiscard]] QString exportAsICS() const;
    [[nodiscard]] QString olmOnlineMeetingInternalLink() const { return {}; }
    [[nodiscard]] QString olmUCCapabilities() const { return appointment().ucCapabilities; }
    void setSummary(const QString &summary) { set(&Appointment::summary, summary); }
    void setLocation(const QString &location) { set(&Appointment::location, location); }
    void setOlmUCCapabilities(const QString &text) { set(&Appointment::ucCapabilities, text); }
    // Removes the appointment from the calendar. On failure returns false and shows a message to the user.
    bool deleteEventNow();
    // Notifies the attendees and deletes the appointment.
    void cancelMeetingInWindow(QWidget *window);

protected:
    CalendarEvent(rt::Class *isa, CalendarSession *session, Appointment draft);
    virtual void set(Field field, const QString &value);
    Appointment m_draft;

private:
    QPointer<CalendarSession> m_session;
    QString m_uid;
    QString m_recurrenceId;
    bool m_isOccurrence = false;
    Occurrence m_occurrence;                // the day of its series
    QList<std::pair<Field, QString>> m_set; // a later value replaces an earlier one
    SetHandler m_handler;
};

// The record that is about to be stored.
class MutableCalendarEvent : public CalendarEvent {
public:
    MutableCalendarEvent(CalendarSession *session, Appointment appointment);
    [[nodiscard]] Appointment appointment() const override { return m_draft; }
    void setBody(const QString &html) { m_draft.bodyHtml = html; }
    // Returns 0 if the record is stored; otherwise the session has the reason.
    qint64 saveRecord();

protected:
    void set(Field field, const QString &value) override { m_draft.*field = value; }
};

void defineEventClasses();

} // namespace mailhost
