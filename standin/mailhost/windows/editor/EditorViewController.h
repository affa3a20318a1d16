// The logic of one appointment editor: pending changes, saving and sending.
#pragma once

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/model/CalendarEvent.h"
#include "standin/mailhost/windows/editor/BodyEdit.h"
#include "standin/mailhost/windows/editor/EditorForm.h"

#include <QObject>

class QDialog;

namespace mailhost {

// Every operation that the user starts goes through the object runtime, so that exchanged methods run.
class EditorViewController : public QObject, public rt::Object {
    Q_OBJECT
public:
    // Takes ownership of the event. The window owns the view, its form and the body.
    EditorViewController(std::unique_ptr<CalendarEvent> event, QWidget *view, EditorForm *form,
                         BodyEdit *body);

    [[nodiscard]] CalendarEvent *content() const { return m_event.get(); }
    [[nodiscard]] QVariantMap uncommittedChanges() const;
    [[nodiscard]] bool isDirty() const { return m_forcedDirty || !uncommittedChanges().isEmpty(); }
    void setIsDirty(bool dirty);
    [[nodiscard]] rt::Object *currentEmailAccount() const { return m_form->currentAccount(); }
    [[nodiscard]] rt::Value attendeeList() const { return attendeeValues(m_form->values().attendees); }
    [[nodiscard]] rt::Value meetingOrganizer() const { return m_event->organizer(); }
    [[nodiscard]] bool hasMultipleAccounts() const { return m_event->session()->accounts().all().size() > 1; }
    [[nodiscard]] bool isDelegating() const;
    [[nodiscard]] bool isCancelMode() const { return m_cancelMode; }
    void setIsCancelMode(bool cancelMode);
    [[nodiscard]] bool isOccurrenceOrException() const {
        return m_event->isOccurrence() || m_event->isModifiedException();
    }
    // Values set here are unsaved changes, like typed text: the event itself gets them at the next save.
    [[nodiscard]] QString olmUCCapabilities() const {
        return m_capabilities ? *m_capabilities : m_event->olmUCCapabilities();
    }
    void setOlmUCCapabilities(const QString &text);
    [[nodiscard]] QWidget *locationTextField() const { return m_form->locationField(); }
    void reloadComposeView() { m_body->load(m_event->stored().bodyHtml); }
    void contentDidChange() { Q_EMIT stateChanged(); }
    void focusOnBody() { m_body->focusBody(); }
    [[nodiscard]] QWidget *view() const { return m_view; }

    [[nodiscard]] bool save();
    void saveFrom(rt::Object *) { rt::send(this, "save"); }
    void saveAndClose(rt::Object *) { rt::send(this, "saveAndCloseWindow:", true); }
    [[nodiscard]] int saveAndCloseWindow(bool close); // 0: saved
    [[nodiscard]] int saveAndCloseWindowAndReturnError(bool close, const rt::Value &) {
        return saveAndCloseWindow(close);
    }
    void sendMeetingPostValidate();
    void fromFieldModified(const rt::Value &) { Q_EMIT stateChanged(); }
    void switchToRecurrenceDidEnd(const rt::Value &sheet, int returnCode, const rt::Value &context);
    void hostWordMailEditor(rt::Object *editor) { m_attachedWordEditor = rt::Weak<>(editor); }

    // The operations of the user's controls.
    void requestSave() { rt::send(this, "save:", rt::Value()); }
    void requestSaveAndClose() { rt::send(this, "saveAndClose:", rt::Value()); }
    void requestSend();
    void openRecurrenceSheet();
    // Shows the series instead of one of its days.
    void switchToSeries();
    // Announces this editor's body editor as the one in use.
    void attachBodyEditor();
    [[nodiscard]] bool isMeeting() const { return !m_form->values().attendees.isEmpty(); }
    [[nodiscard]] bool canEdit() const { return m_event->isOwner(); }
    // Whether the open series cannot change its start (CalendarFile::keepsStart()).
    [[nodiscard]] bool keepsStart() const;
    // The link in the form's present values; empty if there is none (linkToOpen()).
    [[nodiscard]] QString joinLink() const;
    // The rule in the form's present values.
    [[nodiscard]] QString recurrenceRule() const { return m_form->values().recurrenceRule; }

Q_SIGNALS:
    void stateChanged(); // what the window's title, buttons and notice show
    void closeWanted();  // on the next turn of the event loop
    void failed(const QString &message);
    // The meeting has a problem; `send` sends it nevertheless.
    void sendDoubted(const QString &problem, const std::function<void()> &send);

private:
    void showEvent();
    void showForm(const Appointment &appointment);
    void showEditable();
    void followCalendar();
    void eventWasSet(CalendarEvent::Field field);
    bool store(int sequenceStep);
    void sendCancellation();

    std::unique_ptr<CalendarEvent> m_event;
    // Other code may still use them while the window is open.
    std::vector<std::unique_ptr<CalendarEvent>> m_formerEvents;
    QWidget *m_view;
    EditorForm *m_form;
    BodyEdit *m_body;
    std::unique_ptr<BodyObject> m_wordEditor;
    rt::Weak<> m_attachedWordEditor;
    QPointer<QDialog> m_sheet;
    Appointment m_shown; // the values last shown in the form and the body
    bool m_storing = false;
    std::optional<QString> m_capabilities;
    bool m_forcedDirty = false;
    bool m_cancelMode = false;
};

void defineEditorViewControllerClass();

} // namespace mailhost
