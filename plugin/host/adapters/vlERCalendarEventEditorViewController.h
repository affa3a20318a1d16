// An open appointment editor.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"

#include <QVariantMap>
#include <memory>

class QWidget;

// May outlive the editor; then it behaves like an adapter without an object.
class vlERCalendarEventEditorViewController : public vlDelegateBase {
public:
    explicit vlERCalendarEventEditorViewController(rt::Object *editor);

    // The appointment being edited, merged with the editor's present changes at each access. Never nullptr.
    // This adapter owns it and replaces it when the editor switches to another appointment: do not store the
    // pointer.
    [[nodiscard]] vlECCalendarEvent *ecCalendarEvent() const;
    void resetECCalendarEventInstance() const;

    // The snapshot of the appointment; with "onbehalfEmailAddress" if the user schedules it for another
    // person.
    [[nodiscard]] QVariantMap getVlMeetingData() const;

    [[nodiscard]] bool isSupportedOwner() const { return ecCalendarEvent()->isSupportedOwner(); }
    [[nodiscard]] bool needHideVlButton() const {
        return isCancelMode() || isOccurrenceOrException() || !isSupportedOwner();
    }
    [[nodiscard]] bool blockDeleteVelaMeeting() const {
        return !isSupportedOwner() || isOccurrenceOrException();
    }
    [[nodiscard]] bool isOnBehalf() const; // always false if the edition cannot schedule for others
    [[nodiscard]] QString onbehalfEmailAddress() const; // null unless isOnBehalf()
    [[nodiscard]] QString currentEmailAddress() const;  // of the From field; "" without an account
    [[nodiscard]] QString curFromEmailAddress() const { return ecCalendarEvent()->curFromAddress(); }

    // Tells the host whether there are changes to save, and stores that the user changed the settings.
    void setIsDirty(bool dirty);
    // Whether values that a meeting depends on have changed: attendees, recurrence, subject, times, the body
    // compared with the one stored by setInitBodyContent(), or the meeting's settings.
    [[nodiscard]] bool isVlMeetingItemsChanged() const;
    // Stores the pending body unless it is blank. The overload stores the given body unless it is null.
    void setInitBodyContent();
    void setInitBodyContent(const QString &html);

    // Stores the plug-in's record in the appointment.
    void saveVlDataToOLProperty(const QString &data) const { getOLItemID(olItem_setOlmUCCapabilities, data); }
    void updateLocationFieldFromUI(const QString &text) const;
    [[nodiscard]] QString getLocationFromUI() const; // null without a field, "" for an empty one

    [[nodiscard]] QVariantMap uncommittedChanges() const;
    [[nodiscard]] bool isDelegating() const { return flag(olItem_isDelegating); }
    [[nodiscard]] bool isCancelMode() const { return flag(olItem_isCancelMode); }
    [[nodiscard]] bool isOccurrenceOrException() const { return flag(olItem_isOccurrenceOrException); }
    [[nodiscard]] bool isDirty() const { return flag(olItem_isDirty); }
    [[nodiscard]] QString olmUCCapabilities() const { return text(olItem_olmUCCapabilities); }
    [[nodiscard]] rt::Object *currentEmailAccount() const { return object(olItem_currentEmailAccount); }
    [[nodiscard]] QWidget *view() const { return rt::widgetValue(getOLItemID(olItem_view)); }
    [[nodiscard]] rt::Value attendeeList() const { return getOLItemID(olItem_attendeeList); }
    [[nodiscard]] rt::Value meetingOrganizer() const { return getOLItemID(olItem_meetingOrganizer); }
    [[nodiscard]] rt::Value hasMultipleAccounts() const { return getOLItemID(olItem_hasMultipleAccounts); }
    void reloadComposeView() const { getOLItemID(olItem_reloadComposeView); }
    void contentDidChange() const { getOLItemID(olItem_contentDidChange); }
    void focusOnBody() const { getOLItemID(olItem_focusOnBody); }

    // Operations on the body, for both body editors. Defined in body/editorBody.cpp. Writes the invitation
    // into the body, or removes it if the invitation is empty. Does nothing if the body needs no change.
    void updateEmailBodyWithVelaContent(const QString &invitation, bool isHTML) const;
    // Appends an audio conference's text to the body; does nothing for an empty text.
    void updateEmailBodyForPAC(const QString &text, bool isHTML) const;
    void updateEmailBody(const QString &html) const;     // the older editor's body element
    void displayEmailContent(const QString &html) const; // the newer editor
    [[nodiscard]] QString bodyContent() const;           // of the newer editor; null without one
    // Whether the body has no characters except white space.
    [[nodiscard]] static bool isBodyContentEmpty(const QString &html);
    [[nodiscard]] bool isCurrentEmailBodyEmpty() const;
    // Writes the reminder into the older editor if the given body is a single character, as the host's empty
    // bodies are.
    void addVlReminderInEmailBody(const QString &html) const;

private:
    void writeNewBody(const QString &html) const;
    [[nodiscard]] rt::Object *content() const { return object(olItem_content); }
    [[nodiscard]] rt::Object *webDocument() const;

    mutable rt::Weak<> m_pECCalendarEvent; // the object of the event adapter
    mutable std::unique_ptr<vlECCalendarEvent> m_ECCalendarEvent;
    bool m_bVlSettingOpened = false;
    QString m_initBodyContent;
};
