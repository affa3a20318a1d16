// Appointments as the host's object model shows them.
#pragma once

#include "platform/runtime/Object.h"
#include "standin/mailhost/model/CalendarDate.h"
#include "standin/mailhost/model/CalendarSession.h"

#include <QPointer>
#include <functional>
#include <optional>

namespace mailhost {

// Shows a message to the person, attached to a window when there is one. Filled by the windows.
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

// How an appointment recurs.
class Recurrence : public rt::Object {
public:
    explicit Recurrence(QString rule);
    [[nodiscard]] QString rule() const { return m_rule; }

private:
    QString m_rule;
};

// Lists and recurrence as host values that live until the next turn of the event loop.
[[nodiscard]] rt::Value attendeeValues(const QList<Attendee> &attendees);
[[nodiscard]] rt::Value recurrenceValue(const QString &rule); // no value when it does not recur

// A live view on one appointment of the calendar, or on one that is not stored yet. What is set on it is seen
// through this object at once and stored with the next save of the editor that shows it.
class CalendarEvent : public rt::Object {
public:
    // Told of what is set from outside, so that an editor can show it.
    enum class SetItem { Summary, Location, Capabilities };
    using SetHandler = std::function<void(SetItem item)>;

    CalendarEvent(CalendarSession *session, const QString &uid, const QString &recurrenceId,
                  bool isOccurrence);
    CalendarEvent(CalendarSession *session, Appointment draft);

    // The appointment as stored (the draft when it is not), with what was set on this object.
    [[nodiscard]] virtual Appointment appointment() const;
    [[nodiscard]] Appointment stored() const;
    [[nodiscard]] bool isStored() const {
        return m_session && m_session->file().contains(m_uid, m_recurrenceId);
    }
    [[nodiscard]] CalendarSession *session() const { return m_session; }
    // For one day of a series: which one, and when it is; the series has its own times.
    void setOccurrence(const Occurrence &occurrence) { m_occurrence = occurrence; }
    // The day of the series that this stands for; empty for what takes place once and for a series.
    [[nodiscard]] QString instanceId() const {
        return m_isOccurrence ? m_occurrence.instanceId : m_recurrenceId;
    }
    // Both stand for the same appointment, or the same day of the same series.
    [[nodiscard]] bool isSame(const CalendarEvent &other) const;
    // Another object for the same, without what was set on this one.
    [[nodiscard]] std::unique_ptr<CalendarEvent> copy() const;
    // What is to be stored when it is changed: of one day of a series an exception.
    [[nodiscard]] Appointment changeable() const;
    // After an exception was stored for the day: from now on it stands for that.
    void followStored();
    void setHandler(SetHandler handler) { m_handler = std::move(handler); }
    // Forgets what was set: it has been stored.
    void clearSet();
    [[nodiscard]] bool hasSetCapabilities() const { return m_capabilities.has_value(); }

    [[nodiscard]] QString summary() const { return appointment().summary; }
    [[nodiscard]] QString location() const { return appointment().location; }
    [[nodiscard]] rt::Value startTime() const { return dateValue(appointment().start); }
    [[nodiscard]] rt::Value endTime() const { return dateValue(appointment().end); }
    [[nodiscard]] rt::Value recurrence() const { return recurrenceValue(appointment().recurrenceRule); }
    [[nodiscard]] QString body() const { return appointment().bodyHtml; }
    [[nodiscard]] rt::Value attendeeList() const { return attendeeValues(appointment().attendees); }
    [[nodiscard]] bool isOccurrence() const { return m_isOccurrence; }
    [[nodiscard]] bool isModifiedException() const { return !m_recurrenceId.isEmpty() && !m_isOccurrence; }
    // CONFERENCE as stored; empty when there is none.
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
    virtual void setSummary(const QString &summary);
    virtual void setLocation(const QString &location);
    virtual void setOlmUCCapabilities(const QString &text);
    // Takes it out of the calendar. False, with a message to the person, when it could not be.
    bool deleteEventNow();
    // Tells the attendees, and deletes.
    void cancelMeetingInWindow(QWidget *window);

protected:
    CalendarEvent(rt::Class *isa, CalendarSession *session, Appointment draft);
    Appointment m_draft;

private:
    void wasSet(SetItem item) const {
        if (m_handler)
            m_handler(item);
    }
    QPointer<CalendarSession> m_session;
    QString m_uid;
    QString m_recurrenceId;
    bool m_isOccurrence = false;
    Occurrence m_occurrence; // the day of its series
    std::optional<QString> m_summary;
    std::optional<QString> m_location;
    std::optional<QString> m_capabilities;
    SetHandler m_handler;
};

// The record that is about to be stored.
class MutableCalendarEvent : public CalendarEvent {
public:
    MutableCalendarEvent(CalendarSession *session, Appointment appointment);
    [[nodiscard]] Appointment appointment() const override { return m_draft; }
    void setSummary(const QString &summary) override { m_draft.summary = summary; }
    void setLocation(const QString &location) override { m_draft.location = location; }
    void setBody(const QString &html) { m_draft.bodyHtml = html; }
    void setOlmUCCapabilities(const QString &text) override { m_draft.ucCapabilities = text; }
    // 0 when it is in the calendar; otherwise the session says why not.
    qint64 saveRecord();
};

void defineEventClasses();

} // namespace mailhost
