// The one controller of the meeting work: from the user's commands to requests, from answers to the
// appointment.
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

// Works on the context at hand: a command for a strip or an editor brings that of its appointment to hand,
// the link that of whoever has asked. `editor` is the host's editor view controller. Editors and strips are
// not owned, are nullptr when there is none, and are looked up anew for every step: they may be gone when an
// answer arrives. A step is skipped when its editor or strip no longer exists. Requests are asynchronous: an
// operation returns as soon as its request is posted. Main thread only.
class vlMeetingMgr : public SharedObject<vlMeetingMgr>, public FinishReceiver, public BodyEditorHolder {
public:
    // Listens for the settings sheet's commit from now on.
    vlMeetingMgr();
    ~vlMeetingMgr() override;
    vlMeetingMgr(const vlMeetingMgr &) = delete;
    vlMeetingMgr &operator=(const vlMeetingMgr &) = delete;

    [[nodiscard]] WorkflowState state() const { return MeetingContext::atHand().state(); }
    void setState(WorkflowState state) { MeetingContext::atHand().setState(state); }

    // Commands. Each stores the command as the last one and starts it, on the strip, on the editor, or on
    // neither. 0: started, or nothing to start. Refused: the ClientError's number for a deletion, an instant
    // meeting and the reading of the personal meeting, else 0 too.
    int sendVlMeetingCommand(MeetingCommand command, EditorStrip *strip);
    int sendVlMeetingCommand(MeetingCommand command, rt::Object *editor);
    int sendVlMeetingCommand(MeetingCommand command);
    // From the calendar: asks the client to read the meeting, for an update, or to delete it. `data` is
    // {"apptInfo", "keyEventOwnerWindow", "keyApptWindowID", "keyDragAndMoveOnCalendar"}; the window is kept
    // weakly, for alerts. 0: asked, or no such command; 1: the client could not be asked. An editor in the
    // window of that identifier takes the change for its own.
    int sendVlMeetingCommand(MeetingCommand command, const QVariantMap &data);
    void setMeetingAction(MeetingCommand command) { MeetingContext::atHand().meetingAction = command; }
    [[nodiscard]] MeetingCommand getMeetingAction() const { return MeetingContext::atHand().meetingAction; }

    // The meeting request of an editor: {"apptInfo", "setting", "meetingKey", "keyApptWindowID",
    // "keyEventOwnerWindow"}, each but the settings only where there is one.
    [[nodiscard]] QVariantMap getVelaMeetingData(rt::Object *editor) const;

    // Reads the user's personal meeting in that state. Without a profile nothing happens.
    int getPMIMeetingInfo(EditorStrip *strip, WorkflowState state);
    // Whether the user's local profile says not to show the settings sheet again.
    [[nodiscard]] bool notShowSetting() const;
    void onInvokeSettingCommit(const QVariantMap &userInfo);

    void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) override;
    void onRequestDenied() override;
    // Runs the host operation that waited for the meeting work, or clears the saved data when the editor is
    // gone.
    void closeOLAppointment(rt::Object *editor);
    // Of the context at hand; dropEditor: the body editor's adapter as well. The user's profile goes with the
    // last work that uses it.
    void clearAllSavedData(bool dropEditor);

    // For the link.
    [[nodiscard]] QString getApptWindowIDByWindow(QWidget *window) const override;
    void setScheduleForEmail(const QString &email) override;

    // Writing the meeting into the appointment; `commit`: the stored record too. Nothing without an
    // appointment.
    void updateVlKeyInfoToAppointment(rt::Object *editor, const QVariantMap &info, bool commit);
    void updateVlMeetingInfoToAppointmentForDelete(rt::Object *editor, const QVariantMap &answer);
    void updateMailBodyForSchedule(rt::Object *editor);
    // The digest of the loaded meeting's invitation; null when it has none.
    [[nodiscard]] QString getEncodeMail() const;
    // What the user wrote into the location: its text without the meetings' join URLs and the rooms' names.
    // Null without a new join URL.
    [[nodiscard]] QString getOLUserInputLocation(const vlERCalendarEventEditorViewController &editor,
                                                 const QString &oldJoinURL, const QString &joinURL) const;
    // The meeting's part of the location: the join URL just written and the rooms. Null without either a
    // valid event or a join URL.
    [[nodiscard]] QString getVlLocation(const vlECCalendarEvent &event) const;

    // What the next store of the appointment's record by the host brings into it (see PendingWriteBack).
    void cleanVlInfoForUpdApptInfo() { MeetingContext::atHand().pendingWriteBack.reset(); }
    [[nodiscard]] bool needClearLocation() const { return pending().needClearLocation; }
    [[nodiscard]] QString getJoinURL() const { return pending().joinURL; }
    [[nodiscard]] QString getOLNewLocation() const { return pending().olNewLocation; }
    [[nodiscard]] QString getVlLocation() const { return pending().vlLocation; }
    [[nodiscard]] QString getJoinURLFromProperty() const { return pending().joinURLFromProperty; }
    [[nodiscard]] QString getOLNewBody() const { return pending().olNewBody; }
    void setOLNewBody(const QString &html) override;

    // For the body's editing. The body editor belongs to the appointment editor that hosts it; without one,
    // to the context at hand. Neither is kept alive.
    void setOLWordMailEditor(rt::Object *bodyEditor, rt::Object *editor = nullptr);
    [[nodiscard]] vlOLWordMailEditor *olWordMailEditor() const {
        return MeetingContext::atHand().olWordMailEditor.get();
    }
    [[nodiscard]] vlOLWordMailEditor *bodyEditorOf(rt::Object *editor) const override;
    [[nodiscard]] QString encodeMailBody() const override;

    // Scheduling for others. Whether the meeting may be sent by the organiser now chosen in the editor.
    [[nodiscard]] bool checkScheduleOwnerMatched(rt::Object *editor) const;
    // Whether the appointment has no stored meeting yet: only a meeting made in this editor is checked.
    [[nodiscard]] bool needCheckOwnerMatched(rt::Object *editor) const;
    void showWarningNotAllowScheduleForOthers(rt::Object *editor);

    // Calls that other classes carry out.
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

    // The steps of the transitions. 0: started, or nothing to start; else the ClientError's number.
    int addVelaMeeting(const Work &work);
    int changeSettings(const Work &work);
    int executeGetMeetingForChangeSetting(const Work &work);
    // Opens the settings sheet, or goes on at once for a user who does not want to see it again.
    int prepareOpenSettings(const Work &work);
    int openSheet(const Work &work);
    int refreshSheet(const Work &work);
    int cancelVelaMeeting(const Work &work);
    int schedule(const Work &work);
    int scheduleUpdateVelaMeeting(const Work &work);
    int deleteVelaMeeting(const Work &work); // 0 also when the strip blocks it
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

    // Whether the dictionary is the commit of a settings sheet that was left with OK.
    [[nodiscard]] static bool isSettingCommitOK(const QVariantMap &data);
    int showSettingsWindow(EditorStrip *strip, const QVariantMap &data);
    [[nodiscard]] QVariantMap requestOf(const Work &work) const;
    [[nodiscard]] bool isAppointmentKnown(const Work &work) const;
    QVariantMap tellResult(const Work &work, StripState shown);
    // Sends the update when the request differs from the loaded meeting; otherwise only writes the
    // appointment again.
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
    // `formerURL`: of the record before this write-back; null when there was none.
    [[nodiscard]] QString oldJoinURL(const vlERCalendarEventEditorViewController &editor,
                                     const QString &formerURL) const;
    void writeLocation(const vlERCalendarEventEditorViewController &editor, const QString &formerURL,
                       const QString &joinURL);

    std::shared_ptr<bool> m_listens; // to the settings sheet's commit, as long as it lives
};
