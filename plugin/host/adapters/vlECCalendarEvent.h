// An appointment in the host's calendar, seen with the edits that an open editor has not saved yet.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"
#include "plugin/host/adapters/vlECEmailAccount.h"

#include <QVariantMap>
#include <functional>
#include <optional>

class vlECCalendarEvent : public vlDelegateBase {
public:
    // The pending changes by "content." and member name; asked anew for every read, as the user goes on
    // editing.
    using PendingChanges = std::function<QVariantMap()>;

    explicit vlECCalendarEvent(rt::Object *event, const QVariantMap &unCommitedChange = QVariantMap());
    vlECCalendarEvent(rt::Object *event, PendingChanges unCommitedChange);

    // The pending value when there is one, else the stored one. A subject that the user has cleared is "";
    // any other cleared value is the null marker.
    [[nodiscard]] rt::Value getOneMergedItem(const QString &key) const;
    [[nodiscard]] rt::Value getOneItem(const QString &key) const; // the stored one

    // Merged. A cleared or missing one is null.
    [[nodiscard]] QString getEmailBody() const;
    [[nodiscard]] QString location() const;
    [[nodiscard]] bool isBodyHTML() const { return true; }

    // The snapshot of the appointment, merged but for the stored plug-in data. Values that are missing have
    // no entry, except the two date records, which may be empty, the duration and "recurrence". It holds time
    // zone objects and so is no JSON.
    [[nodiscard]] QVariantMap getVlMeetingData() const;
    // Whole minutes in decimal, toward zero; "0" when a date is missing, negative when the end lies first.
    [[nodiscard]] QString getVlDuration() const;
    // The attendee records in the host's order; empty when nobody is invited.
    [[nodiscard]] QVariantList getVlAttendeesData() const;

    [[nodiscard]] bool isSupportedOwner() const; // the user owns the appointment
    [[nodiscard]] bool isValidHostAppointment() const;
    // Owned by the user, and not a single occurrence of a series.
    [[nodiscard]] bool isSupportVela() const;
    // Of the account that the appointment had when the adapter was made; null without an account.
    [[nodiscard]] QString emailAddress() const;
    [[nodiscard]] QString curFromAddress() const;

    // Stored values, as the host has them.
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QString body() const;
    [[nodiscard]] QString olmUCCapabilities() const; // the stored plug-in data
    [[nodiscard]] rt::Object *startTime() const;
    [[nodiscard]] rt::Object *endTime() const;
    [[nodiscard]] rt::Value recurrence() const;
    [[nodiscard]] QVariantList attendeeList() const;
    [[nodiscard]] rt::Object *account() const;
    [[nodiscard]] bool isOccurrence() const;
    [[nodiscard]] bool isModifiedException() const;
    [[nodiscard]] bool isOwner() const;
    void setSummary(const QString &summary) const;
    void setLocation(const QString &location) const;
    void setOlmUCCapabilities(const QString &text) const;

    // Handed through; nothing here depends on them.
    [[nodiscard]] rt::Value UUID() const;
    [[nodiscard]] rt::Value isRecurring() const;
    [[nodiscard]] rt::Value duration() const;
    [[nodiscard]] rt::Value recurrenceType() const;
    [[nodiscard]] rt::Value timeZone() const;
    [[nodiscard]] rt::Value isOrganizer() const;
    [[nodiscard]] rt::Value isMeeting() const;
    [[nodiscard]] rt::Value organizer() const;
    [[nodiscard]] rt::Value seriesMasterRecord() const;
    [[nodiscard]] rt::Value exchangeID() const;
    [[nodiscard]] rt::Value exportAsICS() const;
    [[nodiscard]] rt::Value displayReadyBody() const;
    [[nodiscard]] rt::Value olmOnlineMeetingInternalLink() const;

private:
    [[nodiscard]] QVariantMap dateRecord(const QString &key) const;

    PendingChanges m_unCommitedChange;
    std::optional<vlECEmailAccount> m_ecEmailAccount;
};
