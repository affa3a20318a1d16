// The finish handlers of the meeting controller: what each answer leads to.
#include "platform/services/Services.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlAPIMgr.h"
#include "plugin/link/vlGetMeetingHelper.h"
#include "plugin/link/vlGetPACHelper.h"
#include "plugin/link/vlUserProfileHelper.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlPACMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"

using enum MeetingCommand;
using enum WorkflowState;

// Every answer that moves a workflow on. An answer whose state has no row changes nothing. The schedule's and
// the update's answer is not here: it leads to StateCommitDone from any state.
std::span<const vlMeetingMgr::Transition> vlMeetingMgr::transitions() {
    static constexpr Transition table[] = {
        {CmdGetUserProfileDone, StateAdd, &vlMeetingMgr::profileForAdd},
        {CmdGetUserProfileDone, StateChangeSettings, &vlMeetingMgr::profileForChangeSettings},
        {CmdGetUserProfileDone, StateAudioConference, &vlMeetingMgr::profileForAudioConference},
        {CmdGetUserProfileDone, StateUpdatePMI, &vlMeetingMgr::profileForUpdatePMI},
        {CmdGetMeetingDone, StateChangeSettings, &vlMeetingMgr::meetingForChangeSettings},
        {CmdGetMeetingDone, StateCommit, &vlMeetingMgr::meetingForCommit},
        {CmdGetMeetingDone, StateCommitDone, &vlMeetingMgr::meetingForWriteBack},
        {CmdGetMeetingDone, StateSettingsPMI, &vlMeetingMgr::meetingForSettingsPMI},
        {CmdGetMeetingDone, StateAddPMI, &vlMeetingMgr::meetingForAddPMI},
        {CmdGetMeetingDone, StateUpdatePMI, &vlMeetingMgr::meetingForUpdatePMI},
    };
    return table;
}

void vlMeetingMgr::onExcuteCommandFinished(int command, const QVariantMap &data) {
    if (command >= int(CmdAddMeeting) && command <= int(CmdGetAudioConferenceDone))
        onExcuteCommandFinished(MeetingCommand(command), data);
}

void vlMeetingMgr::onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) {
    switch (command) {
    case CmdAddMeeting:
    case CmdCancelMeeting:
        return onAddCancelVelaMeetingFinished(command, data);
    case CmdChangeSettings:
        return onChangeSettingFinished(data);
    case CmdScheduleMeeting:
    case CmdUpdateMeeting:
        setState(StateCommitDone);
        return onSchdulerActionFinished(command, data);
    case CmdDeleteMeeting:
        return onDeleteActionFinished(data);
    case CmdGetMeetingDone:
        return onGetMeetingActionFinished(data);
    case CmdGetUserProfileDone:
        return onGetUserProfileActionFinished(data);
    case CmdGetAudioConferenceDone:
        vlPACMeetingMgr::sharedInstance().onGetPACActionFinished(data);
        return;
    default:
        return;
    }
}

vlMeetingMgr::Work vlMeetingMgr::workOf(const QVariantMap &data) {
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    return {strip, vlMeetingWindows::editorOf(strip)};
}

void vlMeetingMgr::follow(MeetingCommand answer, const Work &work) {
    for (const Transition &transition : transitions())
        if (transition.answer == answer && transition.state == state())
            return (this->*transition.follow)(work);
}

void vlMeetingMgr::onAddCancelVelaMeetingFinished(MeetingCommand command, const QVariantMap &data) {
    const Work work = workOf(data);
    if (!work.editor)
        return;
    if (command == CmdCancelMeeting) {
        sendVlMeetingCommand(CmdDeleteMeeting, work.editor);
        return;
    }
    if (command != CmdAddMeeting)
        return;
    if (!isSettingCommitOK(data)) {
        if (!notShowSetting()) // the user has cancelled the sheet
            return;
        const QVariantMap settings = rt::mapValue(data.value(vl_Setting));
        if (rt::boolValue(settings.value(vl_Setting_IsPMI))) {
            getPMIMeetingInfo(work.strip, StateAddPMI);
            return;
        }
    }
    sendVlMeetingCommand(CmdScheduleMeeting, work.editor);
}

void vlMeetingMgr::onChangeSettingFinished(const QVariantMap &data) {
    const Work work = workOf(data);
    if (work.editor && isSettingCommitOK(data))
        sendVlMeetingCommand(CmdUpdateMeeting, work.editor);
}

void vlMeetingMgr::onSchdulerActionFinished(MeetingCommand, const QVariantMap &data) {
    const QVariantMap answer = rt::mapValue(data.value(keyVlAPIResponse));
    const Work work = workOf(data);
    if (work.strip) {
        work.strip->setActionResultData(answer);
        work.strip->onUIChanged(StripState::MeetingAttached);
    }
    notifyActionResultToCalActionMgr(answer);
    m_bNeedClearLocation = false;
    if (!work.strip)
        return finishEditorLater(nullptr);
    vlMeetingDataMgr::sharedInstance().setMeetingKey(rt::textValue(answer.value(vl_MeetingKey)));
    vlAPIMgr::sharedInstance().getMeeting(vlMeetingWindows::getPluginParentWindow(work.strip),
                                          getVelaMeetingData(work.editor));
}

// Also after a failure the meeting leaves the appointment; the result is for the strip and the calendar.
void vlMeetingMgr::onDeleteActionFinished(const QVariantMap &data) {
    const QVariantMap answer = rt::mapValue(data.value(keyVlAPIResponse));
    const Work work = workOf(data);
    if (work.strip) {
        work.strip->setActionResultData(answer);
        work.strip->onUIChanged(StripState::NoMeeting);
    }
    notifyActionResultToCalActionMgr(answer);
    const rt::Weak<> editor(work.editor);
    updateVlMeetingInfoToAppointmentForDelete(work.editor, answer);
    clearAllSavedData(false);
    finishEditorLater(editor.get());
}

void vlMeetingMgr::onGetUserProfileActionFinished(const QVariantMap &data) {
    Work work = workOf(data);
    work.accountsRequested = requestAccountsIfNeeded(work);
    follow(CmdGetUserProfileDone, work);
}

bool vlMeetingMgr::requestAccountsIfNeeded(const Work &work) {
    if (vlPACMeetingMgr::knowsTheUsersAccounts())
        return false;
    const bool showProgress = state() == StateAudioConference;
    vlAPIMgr::sharedInstance().getPAC(vlMeetingWindows::getPluginParentWindow(work.strip),
                                      {{vl_API_Call_Para_ShowCommunicationDlg, showProgress}});
    return true;
}

void vlMeetingMgr::profileForAdd(const Work &work) {
    prepareOpenSettings(work.strip);
}

void vlMeetingMgr::profileForChangeSettings(const Work &work) {
    executeGetMeetingForChangeSetting(work.strip);
}

void vlMeetingMgr::profileForAudioConference(const Work &work) {
    if (!work.accountsRequested)
        vlPACMeetingMgr::sharedInstance().schedulePACMeeting(work.strip);
}

void vlMeetingMgr::profileForUpdatePMI(const Work &work) {
    getPMIMeetingInfo(work.strip, StateUpdatePMI);
}

void vlMeetingMgr::onGetMeetingActionFinished(const QVariantMap &data) {
    follow(CmdGetMeetingDone, workOf(data));
}

// Work without a strip comes from the calendar: the appointment is the one whose snapshot was kept.
QVariantMap vlMeetingMgr::requestOf(const Work &work) const {
    if (work.strip)
        return getVelaMeetingData(work.editor);
    const vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    const QVariantMap info = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    return {{vl_Outlook_ApptInfo, store.getSavedApptInfo()},
            {vl_Setting, info.value(vl_Setting)},
            {vl_MeetingKey, store.meetingKey()}};
}

void vlMeetingMgr::meetingForChangeSettings(const Work &work) {
    showSettingsWindow(work.strip, requestOf(work));
}

void vlMeetingMgr::meetingForCommit(const Work &work) {
    if (isAppointmentKnown(work))
        commitUpdateMeeting(work.strip, requestOf(work));
}

void vlMeetingMgr::meetingForWriteBack(const Work &work) {
    const rt::Weak<> editor(work.editor);
    updateMailBodyForSchedule(editor.get());
    updateVlKeyInfoToAppointment(editor.get(), vlGetMeetingHelper::sharedInstance().getMeetingInfo(), true);
    setState(StateIdle);
    finishEditorLater(editor.get());
}

void vlMeetingMgr::meetingForSettingsPMI(const Work &work) {
    SettingsSheets *sheets = WorkflowPorts::instance().sheets;
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(work.strip);
    if (sheets && sheets->hasSchSettingWindow(apptWindowID))
        sheets->refreshSettingWindow(apptWindowID);
}

void vlMeetingMgr::meetingForAddPMI(const Work &work) {
    if (work.editor)
        sendVlMeetingCommand(CmdScheduleMeeting, work.editor);
}

void vlMeetingMgr::meetingForUpdatePMI(const Work &work) {
    if (isAppointmentKnown(work))
        vlAPIMgr::sharedInstance().updateMeeting(vlMeetingWindows::getPluginParentWindow(work.strip),
                                                 requestOf(work));
}

// Whether there is an appointment behind the work: the strip's editor, or without a strip the kept snapshot.
// Without one the editor has closed meanwhile, and an update would empty the meeting.
bool vlMeetingMgr::isAppointmentKnown(const Work &work) const {
    return work.strip ? work.editor != nullptr
                      : !vlMeetingDataMgr::sharedInstance().getSavedApptInfo().isEmpty();
}

void vlMeetingMgr::commitUpdateMeeting(EditorStrip *strip, const QVariantMap &request) {
    const QVariantMap loaded = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    if (!isMeetingChanged(request, loaded)) {
        const rt::Weak<> editor(vlMeetingWindows::editorOf(strip));
        updateMailBodyForSchedule(editor.get());
        updateVlKeyInfoToAppointment(editor.get(), loaded, false);
        return finishEditorLater(editor.get());
    }
    if (rt::boolValue(rt::mapValue(request.value(vl_Setting)).value(vl_Setting_IsPMI)))
        updatePMIMeeting(strip, request);
    else
        vlAPIMgr::sharedInstance().updateMeeting(vlMeetingWindows::getPluginParentWindow(strip), request);
}

// The request is made anew when the personal meeting has been read.
int vlMeetingMgr::updatePMIMeeting(EditorStrip *strip, const QVariantMap &) {
    if (vlUserProfileHelper::sharedInstance().hasUserProfile()) {
        getPMIMeetingInfo(strip, StateUpdatePMI);
    } else {
        setState(StateUpdatePMI);
        vlAPIMgr::sharedInstance().getUserProfile(vlMeetingWindows::getPluginParentWindow(strip));
    }
    return 0;
}

// Not from inside the answer: the host operation may close the editor and everything that belongs to it.
void vlMeetingMgr::finishEditorLater(rt::Object *editor) {
    platform::services().runLoop->callAfter(0, [editor = rt::Weak<>(editor)] {
        vlMeetingMgr::sharedInstance().closeOLAppointment(editor.get());
    });
}
