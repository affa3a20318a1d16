// An appointment in the host's calendar, merged with the unsaved changes of an open editor.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"
#include "plugin/host/adapters/vlECEmailAccount.h"

#include <QVariantMap>
#include <functional>
#include <optional>

class vlECCalendarEvent : public vlDelegateBase {
public:
    // Returns the pending changes; keys are "content." and the member name. Called for every read, because
    // the user may still be editing.
    using PendingChanges = std::function<QVariantMap()>;

    explicit vlECCalendarEvent(rt::Object *event, const QVariantMap &unCommitedChange = QVariantMap())
        : vlECCalendarEvent(event, [unCommitedChange] { return unCommitedChange; }) {}
    vlECCalendarEvent(rt::Object *event, PendingChanges unCommitedChange);

    // The pending value if there is one, else the stored one. A subject that the user has cleared is ""; any
    // other cleared value is the null marker.
    [[nodiscard]] rt::Value getOneMergedItem(const QString &key) const;
    // The stored value.
    [[nodiscard]] rt::Value getOneItem(const QString &key) const { return getOLItemID(key); }

    // Merged; null if it was cleared or is missing.
    [[nodiscard]] QString getEmailBody() const { return rt::textValue(getOneMergedItem(olItem_body)); }
    [[nodiscard]] QString location() const { return rt::textValue(getOneMergedItem(olItem_location)); }
    [[nodiscard]] bool isBodyHTML() const { return true; }

    // The snapshot of the appointment: merged values, except for the plug-in's data, which is the stored one.
    // Missing values have no entry, except the two date records (possibly empty), the duration and
    // "recurrence". It contains time zone objects and therefore cannot be converted to JSON.
    [[nodiscard]] QVariantMap getVlMeetingData() const;
    // Whole minutes in decimal, truncated toward zero; "0" if a date is missing, negative if the end comes
    // before the start.
    [[nodiscard]] QString getVlDuration() const;
    // The attendee records in the host's order.
    [[nodiscard]] QVariantList getVlAttendeesData() const;

    [[nodiscard]] bool isSupportedOwner() const { return isOwner(); } // the user owns the appointment
    [[nodiscard]] bool isValidHostAppointment() const { return isOwner() && account(); }
    // Owned by the user, and not a single occurrence of a series.
    [[nodiscard]] bool isSupportVela() const {
        return isSupportedOwner() && !isOccurrence() && !isModifiedException();
    }
    // The address of the account that the appointment had when the adapter was made; null without an account.
    [[nodiscard]] QString emailAddress() const {
        return m_ecEmailAccount ? m_ecEmailAccount->emailAddress() : QString();
    }
    [[nodiscard]] QString curFromAddress() const {
        return m_ecEmailAccount ? m_ecEmailAccount->curFromAddress() : QString();
    }

    // Stored values, as the host has them.
    [[nodiscard]] QString summary() const { return text(olItem_summary); }
    [[nodiscard]] QString body() const { return text(olItem_body); }
    [[nodiscard]] QString olmUCCapabilities() const { return text(olItem_olmUCCapabilities); } // our own data
    [[nodiscard]] rt::Object *startTime() const { return object(olItem_startTime); }
    [[nodiscard]] rt::Object *endTime() const { return object(olItem_endTime); }
    [[nodiscard]] rt::Value recurrence() const { return getOLItemID(olItem_recurrence); }
    [[nodiscard]] QVariantList attendeeList() const {
        return rt::listValue(getOLItemID(olItem_attendeeList));
    }
    [[nodiscard]] rt::Object *account() const { return object(olItem_account); }
    [[nodiscard]] bool isOccurrence() const { return flag(olItem_isOccurrence); }
    [[nodiscard]] bool isModifiedException() const { return flag(olItem_isModifiedException); }
    [[nodiscard]] bool isOwner() const { return flag(olItem_isOwner); }
    void setSummary(const QString &summary) const { getOLItemID(olItem_setSummary, summary); }
    void setLocation(const QString &location) const { getOLItemID(olItem_setLocation, location); }
    void setOlmUCCapabilities(const QString &data) const { getOLItemID(olItem_setOlmUCCapabilities, data); }

    // Passed on unchanged.
    [[nodiscard]] rt::Value UUID() const { return getOLItemID(olItem_UUID); }
    [[nodiscard]] rt::Value isRecurring() const { return getOLItemID(olItem_isRecurring); }
    [[nodiscard]] rt::Value duration() const { return getOLItemID(olItem_duration); }
    [[nodiscard]] rt::Value recurrenceType() const { return getOLItemID(olItem_recurrenceType); }
    [[nodiscard]] rt::Value timeZone() const { return getOLItemID(olItem_timeZone); }
    [[nodiscard]] rt::Value isOrganizer() const { return getOLItemID(olItem_isOrganizer); }
    [[nodiscard]] rt::Value isMeeting() const { return getOLItemID(olItem_isMeeting); }
    [[nodiscard]] rt::Value organizer() const { return getOLItemID(olItem_organizer); }
    [[nodiscard]] rt::Value seriesMasterRecord() const { return getOLItemID(olItem_seriesMasterRecord); }
    [[nodiscard]] rt::Value exchangeID() const { return getOLItemID(olItem_exchangeID); }
    [[nodiscard]] rt::Value exportAsICS() const { return getOLItemID(olItem_exportAsICS); }
    [[nodiscard]] rt::Value displayReadyBody() const { return getOLItemID(olItem_displayReadyBody); }
    [[nodiscard]] rt::Value olmOnlineMeetingInternalLink() const {
        return getOLItemID(olItem_olmOnlineMeetingInternalLink);
    }

private:
    [[nodiscard]] QVariantMap dateRecord(const QString &key) const;

    PendingChanges m_unCommitedChange;
    std::optional<vlECEmailAccount> m_ecEmailAccount;
};
