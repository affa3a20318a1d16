// One open appointment editor.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"

#include <QVariantMap>
#include <memory>

class QWidget;

// May outlive the editor; then it behaves as an adapter on nothing.
class vlERCalendarEventEditorViewController : public vlDelegateBase {
public:
    explicit vlERCalendarEventEditorViewController(rt::Object *editor);

    // The appointment being edited, with the editor's pending changes as they are when it is asked. Never
    // nullptr; owned by this adapter and replaced when the editor goes over to another appointment: do not
    // keep it.
    [[nodiscard]] vlECCalendarEvent *ecCalendarEvent() const;
    void resetECCalendarEventInstance() const;

    // The snapshot of the appointment; with "onbehalfEmailAddress" when it is scheduled for someone else.
    [[nodiscard]] QVariantMap getVlMeetingData() const;

    [[nodiscard]] bool isSupportedOwner() const { return ecCalendarEvent()->isSupportedOwner(); }
    [[nodiscard]] bool needHideVlButton() const {
        return isCancelMode() || isOccurrenceOrException() || !isSupportedOwner();
    }
    [[nodiscard]] bool blockDeleteVelaMeeting() const {
        return !isSupportedOwner() || isOccurrenceOrException();
    }
    [[nodiscard]] bool isOnBehalf() const; // always false where the edition does not schedule for others
    [[nodiscard]] QString onbehalfEmailAddress() const; // null unless isOnBehalf()
    [[nodiscard]] QString currentEmailAddress() const;  // of the From field; "" without an account
    [[nodiscard]] QString curFromEmailAddress() const { return ecCalendarEvent()->curFromAddress(); }

    // Tells the host that there is something to save, and remembers that the user was in the settings.
    void setIsDirty(bool dirty);
    // Whether what a meeting depends on has changed: attendees, recurrence, subject, times, the body against
    // the one kept by setInitBodyContent(), or the meeting's settings.
    [[nodiscard]] bool isVlMeetingItemsChanged() const;
    // Keeps the pending body when it says anything; the given one unless it is null.
    void setInitBodyContent();
    void setInitBodyContent(const QString &html);

    // Stores the plug-in's data.
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

    // The body, in whichever of the two body editors this host has. Defined in body/editorBody.cpp.
    // Write the invitation into it, or take it out when the invitation is empty; nothing when there is
    // nothing to do.
    void updateEmailBodyWithVelaContent(const QString &invitation, bool isHTML) const;
    // Add an audio conference's text at its end; nothing for an empty text.
    void updateEmailBodyForPAC(const QString &text, bool isHTML) const;
    void updateEmailBody(const QString &html) const;     // the older editor's body element
    void displayEmailContent(const QString &html) const; // the newer editor
    [[nodiscard]] QString bodyContent() const;           // of the newer editor; null when there is none
    // No character but white space.
    [[nodiscard]] static bool isBodyContentEmpty(const QString &html);
    [[nodiscard]] bool isCurrentEmailBodyEmpty() const;
    // Puts the reminder into the older editor when the given body is one single character long, which is what
    // the host's empty bodies are.
    void addVlReminderInEmailBody(const QString &html) const;

private:
    void writeNewBody(const QString &html) const;
    [[nodiscard]] rt::Object *content() const { return object(olItem_content); }
    [[nodiscard]] rt::Object *webDocument() const;

    mutable rt::Weak<> m_pECCalendarEvent; // what the event adapter was made on
    mutable std::unique_ptr<vlECCalendarEvent> m_ECCalendarEvent;
    bool m_bVlSettingOpened = false;
    QString m_initBodyContent;
};
