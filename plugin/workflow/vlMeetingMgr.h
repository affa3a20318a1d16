// The controller of the meeting work: turns commands into requests and writes answers into appointments.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/link/linkPorts.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/MeetingContext.h"
#include "plugin/workflow/workflowPorts.h"

#include <QString>
#include <QVariantMap>
#include <memory>

class vlECCalendarEvent;
struct HeldOperation;
class vlERCalendarEventEditorViewController;

// Works on the current context. A command for a strip or an editor makes its appointment's context the
// current one; for an answer the link restores the context that asked. `editor` is the host's editor view
// controller. Editors and strips are not owned, may be nullptr, and are looked up again for every step,
// because they may no longer exist when an answer arrives; the step is then skipped. Requests are
// asynchronous: an operation returns as soon as its request is posted. Main thread only.
class vlMeetingMgr : public SharedObject<vlMeetingMgr>, public FinishReceiver, public BodyEditorHolder {
public:
    // Starts to observe the commit of the settings sheet.
    vlMeetingMgr();

    [[nodiscard]] WorkflowState state() const { return MeetingContext::atHand().state(); }
    void setState(WorkflowState state) { MeetingContext::atHand().setState(state); }

    // Commands. Each call records the command as the last one and starts it on the strip, on the editor, or
    // on neither. Returns 0 if it was started or needs no work. If the request failed, a deletion, an instant
    // meeting and the reading of the personal meeting return the ClientError's number; others return 0.
    int sendVlMeetingCommand(MeetingCommand command, EditorStrip *strip);
    int sendVlMeetingCommand(MeetingCommand command, rt::Object *editor);
    int sendVlMeetingCommand(MeetingCommand command);
    // For a change on the calendar: asks the client to read the meeting (for an update) or to delete it.
    // `data` is {"apptInfo", "keyEventOwnerWindow", "keyApptWindowID", "keyDragAndMoveOnCalendar"}; alerts
    // use the window, which is held weakly. Returns 0 if the client was asked or the command is another one,
    // 1 if the client could not be asked. If the window of that identifier has an editor, the change uses the
    // editor's context.
    int sendVlMeetingCommand(MeetingCommand command, const QVariantMap &data);
    void setMeetingAction(MeetingCommand command) { MeetingContext::atHand().meetingAction = command; }
    [[nodiscard]] MeetingCommand getMeetingAction() const { return MeetingContext::atHand().meetingAction; }

    // The meeting request of an editor: {"apptInfo", "setting", "meetingKey", "keyApptWindowID",
    // "keyEventOwnerWindow"}. Entries without a value are left out, except the settings.
    [[nodiscard]] QVariantMap getVelaMeetingData(rt::Object *editor) const;

    // Sets the state and reads the user's personal meeting. Does nothing without a profile.
    int getPMIMeetingInfo(EditorStrip *strip, WorkflowState state);
    // Whether the user's local profile says not to show the settings sheet again.
    [[nodiscard]] bool notShowSetting() const;
    void onInvokeSettingCommit(const QVariantMap &userInfo);

    void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) override;
    void onRequestDenied() override;
    // Runs the host operation that waited for the work, or clears the saved data if the editor is gone.
    void closeOLAppointment(rt::Object *editor);
    // Clears the data of the current context and, with `dropEditor`, the adapter of the body editor. The
    // user's profile is cleared together with the last context that uses it.
    void clearAllSavedData(bool dropEditor);

    // For the link.
    [[nodiscard]] QString getApptWindowIDByWindow(QWidget *window) const override;
    void setScheduleForEmail(const QString &email) override;

    // Writes the meeting into the appointment and, with `commit`, into its stored record, if there is one.
    void updateVlKeyInfoToAppointment(rt::Object *editor, const QVariantMap &info, bool commit);
    void updateVlMeetingInfoToAppointmentForDelete(rt::Object *editor, const QVariantMap &answer);
    void updateMailBodyForSchedule(rt::Object *editor);
    // The digest of the loaded meeting's invitation; null when it has none.
    [[nodiscard]] QString getEncodeMail() const;
    // The user's own part of the location: the text without the join URLs of meetings and the names of rooms.
    // Null without a new join URL.
    [[nodiscard]] QString getOLUserInputLocation(const vlERCalendarEventEditorViewController &editor,
                                                 const QString &oldJoinURL, const QString &joinURL) const;
    // The meeting's part of the location: the new join URL and the rooms. Null without the URL.
    [[nodiscard]] QString getVlLocation(const vlECCalendarEvent &event) const;

    // The values to add when the host stores the appointment's record next (see PendingWriteBack).
    void cleanVlInfoForUpdApptInfo() { MeetingContext::atHand().pendingWriteBack.reset(); }
    [[nodiscard]] bool needClearLocation() const { return pending().needClearLocation; }
    [[nodiscard]] QString getJoinURL() const { return pending().joinURL; }
    [[nodiscard]] QString getOLNewLocation() const { return pending().olNewLocation; }
    [[nodiscard]] QString getVlLocation() const { return pending().vlLocation; }
    [[nodiscard]] QString getJoinURLFromProperty() const { return pending().joinURLFromProperty; }
    [[nodiscard]] QString getOLNewBody() const { return pending().olNewBody; }
    void setOLNewBody(const QString &html) override;

    // Editing of the body. The body editor belongs to the appointment editor that contains it or, without
    // one, to the current context. Neither is kept alive.
    void setOLWordMailEditor(rt::Object *bodyEditor, rt::Object *editor = nullptr);
    [[nodiscard]] vlOLWordMailEditor *olWordMailEditor() const {
        return MeetingContext::atHand().olWordMailEditor.get();
    }
    [[nodiscard]] vlOLWordMailEditor *bodyEditorOf(rt::Object *editor) const override;
    [[nodiscard]] QString encodeMailBody() const override;

    // Scheduling for others: whether the organiser chosen in the editor may send the meeting.
    [[nodiscard]] bool checkScheduleOwnerMatched(rt::Object *editor) const;
    // Whether the appointment has no stored meeting yet; only a meeting made in this editor is checked.
    [[nodiscard]] bool needCheckOwnerMatched(rt::Object *editor) const;
    void showWarningNotAllowScheduleForOthers(rt::Object *editor);

    // Calls forwarded to other classes.
    void notifyActionResultToCalActionMgr(const QVariantMap &answer);
    [[nodiscard]] bool isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const;
    [[nodiscard]] QString getMailBodyWithVelaContentFor1520(const QString &body, const QString &emailBody,
                                                            bool isHTMLBody) const;

private:
    enum class Source { Command, Calendar, Answer };
    struct Work;
    struct Transition;
    static const Transition transitions[];
    int start(const Work &work);
    int follow(Source source, const Work &work);

    // The steps of the transitions. Return 0 if started or without work, else the ClientError's number.
    int addVelaMeeting(const Work &work);
    int changeSettings(const Work &work);
    int executeGetMeetingForChangeSetting(const Work &work);
    // Opens the settings sheet, or continues at once if the user has chosen not to see it again.
    int prepareOpenSettings(const Work &work);
    int openSheet(const Work &work);
    int refreshSheet(const Work &work);
    int cancelVelaMeeting(const Work &work);
    int schedule(const Work &work);
    int scheduleUpdateVelaMeeting(const Work &work);
    int deleteVelaMeeting(const Work &work); // returns 0 also if the strip blocks it
    int readMeetingOnCalendar(const Work &work);
    int deleteMeetingOnCalendar(const Work &work);
    int startInstantMeeting(const Work &work);
    int addAudioConference(const Work &work);
    int continueAudioConference(const Work &work);
    int readPersonalMeeting(const Work &work);
    int onAddCancelVelaMeetingFinished(const Work &work);
    int onChangeSettingFinished(const Work &work);
    int onSchdulerActionFinished(const Work &work);
    int onDeleteActionFinished(const Work &work);
    int onAudioAccountsFinished(const Work &work);
    int commitAfterReading(const Work &work);
    int updateAfterReading(const Work &work);
    int writeMeeting(const Work &work);

    // Whether the dictionary reports that the user closed a settings sheet with OK.
    [[nodiscard]] static bool isSettingCommitOK(const QVariantMap &data);
    int showSettingsWindow(EditorStrip *strip, const QVariantMap &data);
    [[nodiscard]] QVariantMap requestOf(const Work &work) const;
    [[nodiscard]] bool isAppointmentKnown(const Work &work) const;
    QVariantMap tellResult(const Work &work, StripState shown);
    // Sends the update if the request differs from the loaded meeting; else only writes the appointment.
    int commitUpdateMeeting(EditorStrip *strip, const QVariantMap &request);
    int updatePMIMeeting(EditorStrip *strip);
    int sendUpdate(EditorStrip *strip, const QVariantMap &request);
    int writeMeetingOf(const std::shared_ptr<MeetingContext> &context);
    static void noteSent(const QVariantMap &request);
    static void noteChangeBeforeOperation(rt::Object *editor);
    [[nodiscard]] static const HeldOperation *operationToRun(rt::Object *editor);
    int writeLoadedMeeting(rt::Object *openEditor, bool commit);
    int finishEditorLater(rt::Object *editor);
    static void forgetLoadedElsewhere();

    [[nodiscard]] static PendingWriteBack pending();
    // `formerURL` is the join URL in the record before this write-back; null if there was none.
    [[nodiscard]] QString oldJoinURL(const vlERCalendarEventEditorViewController &editor,
                                     const QString &formerURL) const;
    void writeLocation(const vlERCalendarEventEditorViewController &editor, const QString &formerURL,
                       const QString &joinURL);
};
