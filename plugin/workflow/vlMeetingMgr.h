// The one controller of the meeting work: from the user's commands to requests, from answers to the
// appointment.
#pragma once

#include "platform/runtime/Value.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/link/linkPorts.h"
#include "plugin/workflow/vlMeetingState.h"

#include <QHash>
#include <QString>
#include <QVariantMap>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class EditorStrip;
class vlECCalendarEvent;
class vlERCalendarEventEditorViewController;

// `editor` is the host's editor view controller. Editors and strips are not owned, are nullptr when there is
// none, and are looked up anew for every step: they may be gone when an answer arrives. A step on something
// that is gone does nothing. Requests are asynchronous: an operation returns as soon as its request is
// posted. Main thread only.
class vlMeetingMgr : public vlMeetingState, public FinishReceiver, public BodyEditorHolder {
public:
    static vlMeetingMgr &sharedInstance();
    // Listens for the settings sheet's commit from now on.
    vlMeetingMgr();
    ~vlMeetingMgr() override;
    vlMeetingMgr(const vlMeetingMgr &) = delete;
    vlMeetingMgr &operator=(const vlMeetingMgr &) = delete;

    // Commands. Each stores the command as the last one and starts it, on the strip, on the editor, or on
    // neither. 0: started, or nothing to start; else the ClientError's number with which its request was
    // refused.
    int sendVlMeetingCommand(MeetingCommand command, EditorStrip *strip);
    int sendVlMeetingCommand(MeetingCommand command, rt::Object *editor);
    int sendVlMeetingCommand(MeetingCommand command);
    // An update or a delete from the calendar, where no editor may be open. The window in the request is used
    // within this call only. 1: the client could not be asked; else 0. The last command stays what it was.
    int sendVlMeetingCommand(MeetingCommand command, const QVariantMap &data);
    void setMeetingAction(MeetingCommand command) { m_vlMeetingAction = command; }
    [[nodiscard]] MeetingCommand getMeetingAction() const { return m_vlMeetingAction; }

    // The meeting request of an editor: {"apptInfo", "setting", "meetingKey", "keyApptWindowID",
    // "keyEventOwnerWindow"}, each but the settings only where there is one.
    [[nodiscard]] QVariantMap getVelaMeetingData(rt::Object *editor) const;

    int addVelaMeeting(EditorStrip *strip);
    int changeSettings(EditorStrip *strip);
    int executeGetMeetingForChangeSetting(EditorStrip *strip);
    // Opens the settings sheet, or goes on at once for a user who does not want to see it again.
    void prepareOpenSettings(EditorStrip *strip);
    void showSettingsWindow(EditorStrip *strip, const QVariantMap &data);
    int cancelVelaMeeting(EditorStrip *strip);
    // `command` is CmdScheduleMeeting or CmdUpdateMeeting. Always 0.
    int scheduleUpdateVelaMeeting(rt::Object *editor, MeetingCommand command);
    int deleteVelaMeeting(rt::Object *editor); // 0 also when the strip blocks it
    int startInstantMeeting(bool withVideo);
    // Reads the user's personal meeting in that state. Without a profile nothing happens.
    int getPMIMeetingInfo(EditorStrip *strip, WorkflowState state);

    // Whether the user's local profile says not to show the settings sheet again.
    [[nodiscard]] bool notShowSetting() const;
    // Whether the dictionary is the commit of a settings sheet that was left with OK.
    [[nodiscard]] bool isSettingCommitOK(const QVariantMap &data) const;
    void onInvokeSettingCommit(const QVariantMap &userInfo);

    // Finish handlers. A code outside the command codes is dropped.
    void onExcuteCommandFinished(int command, const QVariantMap &data) override;
    // A change on the calendar that was refused leaves the store as it was before it.
    void onRequestRefused() override;
    void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data);
    void onAddCancelVelaMeetingFinished(MeetingCommand command, const QVariantMap &data);
    void onChangeSettingFinished(const QVariantMap &data);
    void onSchdulerActionFinished(MeetingCommand command, const QVariantMap &data);
    void onDeleteActionFinished(const QVariantMap &data);
    void onGetUserProfileActionFinished(const QVariantMap &data);
    void onGetMeetingActionFinished(const QVariantMap &data);

    // Sends the update when the request differs from the loaded meeting; otherwise only writes the
    // appointment again.
    void commitUpdateMeeting(EditorStrip *strip, const QVariantMap &request);
    int updatePMIMeeting(EditorStrip *strip, const QVariantMap &request);
    // Runs the host operation that waited for the meeting work, or clears the saved data when the editor is
    // gone.
    void closeOLAppointment(rt::Object *editor);
    void clearAllSavedData(bool dropEditor); // dropEditor: the body editor's adapter as well
    void notifyActionResultToCalActionMgr(const QVariantMap &answer);
    [[nodiscard]] bool isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const;

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

    // What the next store of the appointment's record by the host brings into it. Null: not set.
    void cleanVlInfoForUpdApptInfo();
    // The identifier of that appointment; null for any.
    [[nodiscard]] const QString &writtenAppointment() const { return m_writtenAppointment; }
    [[nodiscard]] bool needClearLocation() const { return m_bNeedClearLocation; }
    [[nodiscard]] const QString &getJoinURL() const { return m_joinURL; }
    void setJoinURL(const QString &url) { m_joinURL = url; }
    [[nodiscard]] const QString &getOLNewLocation() const { return m_olNewLocation; }
    void setOLNewLocation(const QString &location) { m_olNewLocation = location; }
    [[nodiscard]] const QString &getVlLocation() const { return m_vlLocation; }
    void setVlLocation(const QString &location) { m_vlLocation = location; }
    [[nodiscard]] const QString &getJoinURLFromProperty() const { return m_joinURLFromProperty; }
    void setJoinURLFromProperty(const QString &url) { m_joinURLFromProperty = url; }
    [[nodiscard]] const QString &getOLNewBody() const { return m_olNewBody; }
    void setOLNewBody(const QString &html) override { m_olNewBody = html; }

    // For the body's editing.
    // Makes the adapter on the body editor that is in use from now on. With the appointment editor that it
    // belongs to, it is also remembered for that one: with several editors open, an answer for one that is
    // not in front must not be written into another's body. Neither is kept alive.
    void setOLWordMailEditor(rt::Object *bodyEditor, rt::Object *editor = nullptr);
    [[nodiscard]] vlOLWordMailEditor *olWordMailEditor() const { return m_olWordMailEditor.get(); }
    [[nodiscard]] vlOLWordMailEditor *bodyEditorOf(const rt::Object *editor) const override;
    [[nodiscard]] QString getMailBodyWithVelaContentFor1520(const QString &body, const QString &emailBody,
                                                            bool isHTMLBody) const override;
    [[nodiscard]] QString encodeMailBody() const override;

    // Scheduling for others. Whether the meeting may be sent by the organiser now chosen in the editor.
    [[nodiscard]] bool checkScheduleOwnerMatched(rt::Object *editor) const;
    // Whether the appointment has no stored meeting yet: only a meeting made in this editor is checked.
    [[nodiscard]] bool needCheckOwnerMatched(rt::Object *editor) const;
    void showWarningNotAllowScheduleForOthers(rt::Object *editor);

private:
    // What an answer is for, as far as it is still there.
    struct Work {
        EditorStrip *strip = nullptr;
        rt::Object *editor = nullptr;
        bool accountsRequested = false; // their answer goes on with the audio conference
    };
    struct Transition {
        MeetingCommand answer;
        WorkflowState state;
        void (vlMeetingMgr::*follow)(const Work &work);
    };
    static std::span<const Transition> transitions();
    [[nodiscard]] static Work workOf(const QVariantMap &data);
    void follow(MeetingCommand answer, const Work &work);
    [[nodiscard]] QVariantMap requestOf(const Work &work) const;
    [[nodiscard]] bool isAppointmentKnown(const Work &work) const;
    bool requestAccountsIfNeeded(const Work &work);
    void finishEditorLater(rt::Object *editor);
    [[nodiscard]] QString takeKeyFromSnapshot(const QVariantMap &snapshot) const;

    void profileForAdd(const Work &work);
    void profileForChangeSettings(const Work &work);
    void profileForAudioConference(const Work &work);
    void profileForUpdatePMI(const Work &work);
    void meetingForChangeSettings(const Work &work);
    void meetingForCommit(const Work &work);
    void meetingForWriteBack(const Work &work);
    void meetingForSettingsPMI(const Work &work);
    void meetingForAddPMI(const Work &work);
    void meetingForUpdatePMI(const Work &work);

    // `formerURL`: of the record before this write-back; null when there was none.
    [[nodiscard]] QString oldJoinURL(const vlERCalendarEventEditorViewController &editor,
                                     const QString &formerURL) const;
    void writeLocation(const vlERCalendarEventEditorViewController &editor, const QString &formerURL,
                       const QString &joinURL);

    struct StoreBefore {
        QString changedKey; // that the change on the calendar has put into the store
        QString meetingKey;
        QVariantMap apptInfo;
    };
    std::optional<StoreBefore> m_beforeChange; // on the calendar, for as long as it may be refused
    MeetingCommand m_vlMeetingAction = MeetingCommand::CmdNone;
    QHash<QString, MeetingCommand> m_sheetCommands; // by appointment window identifier: what opened its sheet
    QString m_writtenAppointment;                   // identifier; the fields below are for it. Null: for any
    bool m_bNeedClearLocation = false;
    QString m_joinURL;
    QString m_olNewLocation;
    QString m_vlLocation; // the meeting's part of m_olNewLocation
    struct KnownBodyEditor {
        rt::Weak<> editor;
        rt::Weak<> bodyEditor;
        std::unique_ptr<vlOLWordMailEditor> adapter;
    };
    std::unique_ptr<vlOLWordMailEditor> m_olWordMailEditor;
    bool m_bodyEditorHasOwner = false; // of m_olWordMailEditor
    std::vector<KnownBodyEditor> m_knownBodyEditors;
    QString m_olNewBody;
    QString m_joinURLFromProperty; // of the stored record before this write-back

    class CommitObserver;
    std::unique_ptr<CommitObserver> m_commitObserver;
};
