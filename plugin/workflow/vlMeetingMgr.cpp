#include "plugin/workflow/vlMeetingMgr.h"

#include "platform/runtime/Runtime.h"
#include "platform/services/Services.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/CalendarChanges.h"
#include "plugin/workflow/HeldOperation.h"
#include "plugin/workflow/scheduleExchange.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlPACMeetingMgr.h"
#include "plugin/workflow/vlSettingData.h"
#include "plugin/workflow/workflowPorts.h"

#include <algorithm>
#include <optional>

using enum MeetingCommand;
using enum WorkflowState;

namespace {

constexpr int nothingStarted = 0;
constexpr int clientNotReached = 1;
constexpr qint64 hostFailed = -1; // the host's save-and-close failed and left the editor open

QWidget *parentOf(const EditorStrip *strip) {
    return vlMeetingWindows::getPluginParentWindow(strip);
}

QVariantMap withProgress(QVariantMap request) {
    request.insert(vl_API_Call_Para_ShowCommunicationDlg, true);
    return request;
}

// "" if the appointment has no meeting.
QString meetingKeyIn(const QVariantMap &snapshot) {
    const QString text = rt::textValue(snapshot.value(vl_ApptInfo_VlOIProperty));
    const QVariantMap record = vlOLUtils::toNSDictionary(text);
    return rt::orEmpty(rt::textValue(record.value(vl_OLProperty_MeetingKey)));
}

// Marks the current context as a user of the profile. Returns whether the profile is loaded.
bool hasUserProfile() {
    MeetingContext::atHand().usesProfile = true;
    return vlUserProfileHelper::sharedInstance().hasUserProfile();
}

} // namespace

// The target of a command or an answer. A pointer is nullptr if its object no longer exists.
struct vlMeetingMgr::Work {
    MeetingCommand code;
    EditorStrip *strip = nullptr;
    rt::Object *editor = nullptr;
    QVariantMap data = {};
};

struct vlMeetingMgr::Transition {
    Source source;
    MeetingCommand code;
    std::optional<WorkflowState> from; // no value: any state
    std::optional<WorkflowState> to;   // no value: the state stays
    int (vlMeetingMgr::*next)(const Work &work);
};

// The step that each command or answer starts. A code without a row starts nothing. Steps that request the
// personal meeting set the state themselves, so that its answer finds the right row.
// clang-format off
const vlMeetingMgr::Transition vlMeetingMgr::transitions[] = {
    {Source::Command, CmdAddMeeting, {}, StateAdd, &vlMeetingMgr::addVelaMeeting},
    {Source::Command, CmdChangeSettings, {}, StateChangeSettings, &vlMeetingMgr::changeSettings},
    {Source::Command, CmdCancelMeeting, {}, {}, &vlMeetingMgr::cancelVelaMeeting},
    {Source::Command, CmdScheduleMeeting, {}, StateCommit, &vlMeetingMgr::scheduleUpdateVelaMeeting},
    {Source::Command, CmdUpdateMeeting, {}, StateCommit, &vlMeetingMgr::scheduleUpdateVelaMeeting},
    {Source::Command, CmdDeleteMeeting, {}, {}, &vlMeetingMgr::deleteVelaMeeting},
    {Source::Command, CmdStartInstantVideo, {}, {}, &vlMeetingMgr::startInstantMeeting},
    {Source::Command, CmdStartInstantShare, {}, {}, &vlMeetingMgr::startInstantMeeting},
    {Source::Command, CmdAddAudioConference1, {}, StateAudioConference, &vlMeetingMgr::addAudioConference},
    {Source::Command, CmdAddAudioConference2, {}, StateAudioConference, &vlMeetingMgr::addAudioConference},

    {Source::Calendar, CmdUpdateMeeting, {}, StateCommit, &vlMeetingMgr::readMeetingOnCalendar},
    {Source::Calendar, CmdDeleteMeeting, {}, {}, &vlMeetingMgr::deleteMeetingOnCalendar},

    {Source::Answer, CmdAddMeeting, {}, {}, &vlMeetingMgr::onAddCancelVelaMeetingFinished},
    {Source::Answer, CmdCancelMeeting, {}, {}, &vlMeetingMgr::onAddCancelVelaMeetingFinished},
    {Source::Answer, CmdChangeSettings, {}, {}, &vlMeetingMgr::onChangeSettingFinished},
    {Source::Answer, CmdScheduleMeeting, {}, StateCommitDone, &vlMeetingMgr::onSchdulerActionFinished},
    {Source::Answer, CmdUpdateMeeting, {}, StateCommitDone, &vlMeetingMgr::onSchdulerActionFinished},
    {Source::Answer, CmdDeleteMeeting, {}, {}, &vlMeetingMgr::onDeleteActionFinished},
    {Source::Answer, CmdGetAudioConferenceDone, {}, {}, &vlMeetingMgr::onAudioAccountsFinished},

    {Source::Answer, CmdGetUserProfileDone, StateAdd, {}, &vlMeetingMgr::prepareOpenSettings},
    {Source::Answer, CmdGetUserProfileDone, StateChangeSettings, {}, &vlMeetingMgr::executeGetMeetingForChangeSetting},
    {Source::Answer, CmdGetUserProfileDone, StateAudioConference, {}, &vlMeetingMgr::continueAudioConference},
    {Source::Answer, CmdGetUserProfileDone, StateUpdatePMI, {}, &vlMeetingMgr::readPersonalMeeting},

    {Source::Answer, CmdGetMeetingDone, StateChangeSettings, {}, &vlMeetingMgr::openSheet},
    {Source::Answer, CmdGetMeetingDone, StateCommit, {}, &vlMeetingMgr::commitAfterReading},
    {Source::Answer, CmdGetMeetingDone, StateCommitDone, StateIdle, &vlMeetingMgr::writeMeeting},
    {Source::Answer, CmdGetMeetingDone, StateSettingsPMI, {}, &vlMeetingMgr::refreshSheet},
    {Source::Answer, CmdGetMeetingDone, StateAddPMI, {}, &vlMeetingMgr::schedule},
    {Source::Answer, CmdGetMeetingDone, StateUpdatePMI, {}, &vlMeetingMgr::updateAfterReading},
};
// clang-format on

int vlMeetingMgr::follow(Source source, const Work &work) {
    const auto row =
        std::find_if(std::begin(transitions), std::end(transitions), [&](const Transition &each) {
            return each.source == source && each.code == work.code && each.from.value_or(state()) == state();
        });
    if (row == std::end(transitions))
        return nothingStarted;
    setState(row->to.value_or(state()));
    return (this->*row->next)(work);
}

vlMeetingMgr::vlMeetingMgr() {
    static_cast<void>(platform::services().notifications->addObserver(
        notify_SettingCommit, [](const QString &, const QVariantMap &userInfo) {
            sharedInstance().onInvokeSettingCommit(userInfo);
        }));
}

// Commands.

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, EditorStrip *strip) {
    return start({command, strip, vlMeetingWindows::editorOf(strip)});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, rt::Object *editor) {
    return start({command, vlMeetingWindows::stripOfEditor(editor), editor});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command) {
    return start({command});
}

int vlMeetingMgr::start(const Work &work) {
    const ContextScope scope(work.strip);
    setMeetingAction(work.code);
    return follow(Source::Command, work);
}

QVariantMap vlMeetingMgr::getVelaMeetingData(rt::Object *editor) const {
    QVariantMap request = vlMeetingDataMgr::sharedInstance().getVlSchMeetingData(editor);
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(strip);
    if (!apptWindowID.isNull())
        request.insert(keyApptWindowID, apptWindowID);
    if (QWidget *window = vlMeetingWindows::windowOfEditor(editor))
        request.insert(keyEventOwnerWindow, rt::fromWidget(window));
    return request;
}

int vlMeetingMgr::addVelaMeeting(const Work &work) {
    if (hasUserProfile())
        return prepareOpenSettings(work);
    vlAPIMgr::sharedInstance().getUserProfile(parentOf(work.strip));
    return nothingStarted;
}

int vlMeetingMgr::prepareOpenSettings(const Work &work) {
    const QVariantMap request = getVelaMeetingData(work.editor);
    if (!notShowSetting())
        return showSettingsWindow(work.strip, request);
    onExcuteCommandFinished(CmdAddMeeting, request);
    return nothingStarted;
}

int vlMeetingMgr::showSettingsWindow(EditorStrip *strip, const QVariantMap &data) {
    SettingsSheets *sheets = WorkflowPorts::instance().sheets;
    if (!sheets || !strip)
        return nothingStarted;
    MeetingContext::atHand().sheetCommand =
        state() == StateChangeSettings ? CmdChangeSettings : CmdAddMeeting;
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(strip);
    sheets->addSchSettingWindowToArray(apptWindowID, data, parentOf(strip));
    sheets->showSchSettingWindow(apptWindowID);
    return nothingStarted;
}

int vlMeetingMgr::openSheet(const Work &work) {
    return showSettingsWindow(work.strip, requestOf(work));
}

int vlMeetingMgr::refreshSheet(const Work &work) {
    SettingsSheets *sheets = WorkflowPorts::instance().sheets;
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(work.strip);
    if (sheets)
        sheets->refreshSettingWindow(apptWindowID);
    return nothingStarted;
}

int vlMeetingMgr::changeSettings(const Work &work) {
    if (hasUserProfile())
        return executeGetMeetingForChangeSetting(work);
    vlAPIMgr::sharedInstance().getUserProfile(parentOf(work.strip), withProgress({}));
    return nothingStarted;
}

int vlMeetingMgr::executeGetMeetingForChangeSetting(const Work &work) {
    const QVariantMap request = getVelaMeetingData(work.editor);
    if (vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        return showSettingsWindow(work.strip, request);
    vlAPIMgr::sharedInstance().getMeeting(parentOf(work.strip), withProgress(request));
    return nothingStarted;
}

int vlMeetingMgr::cancelVelaMeeting(const Work &work) {
    onExcuteCommandFinished(CmdCancelMeeting, getVelaMeetingData(work.editor));
    return nothingStarted;
}

int vlMeetingMgr::schedule(const Work &work) {
    return work.editor ? sendVlMeetingCommand(CmdScheduleMeeting, work.editor) : nothingStarted;
}

int vlMeetingMgr::scheduleUpdateVelaMeeting(const Work &work) {
    if (!work.editor) // otherwise the request would schedule an empty meeting
        return nothingStarted;
    const QVariantMap request = getVelaMeetingData(work.editor);
    if (work.code != CmdUpdateMeeting) {
        MeetingContext::atHand().isNewMeeting = true;
        noteSent(request);
        vlAPIMgr::sharedInstance().scheduleMeeting(parentOf(work.strip), request);
        return nothingStarted;
    }
    CalendarChanges::sharedInstance().supersede();
    if (vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        return commitUpdateMeeting(work.strip, request);
    vlAPIMgr::sharedInstance().getMeeting(parentOf(work.strip), request);
    return nothingStarted;
}

int vlMeetingMgr::deleteVelaMeeting(const Work &work) {
    if (!work.editor || (work.strip && work.strip->blockDeleteVelaMeeting()))
        return nothingStarted;
    CalendarChanges::sharedInstance().supersede();
    return vlAPIMgr::sharedInstance().deleteMeeting(parentOf(work.strip), getVelaMeetingData(work.editor));
}

int vlMeetingMgr::startInstantMeeting(const Work &work) {
    return vlAPIMgr::sharedInstance().startMeeting(work.code == CmdStartInstantVideo);
}

int vlMeetingMgr::addAudioConference(const Work &work) {
    const PACAccount account = work.code == CmdAddAudioConference1 ? PACAccount::First : PACAccount::Second;
    return vlPACMeetingMgr::sharedInstance().addPACMeeting(work.strip, account);
}

int vlMeetingMgr::continueAudioConference(const Work &work) {
    vlPACMeetingMgr::sharedInstance().executeGetPAC(work.strip);
    return nothingStarted;
}

int vlMeetingMgr::onAudioAccountsFinished(const Work &work) {
    return vlPACMeetingMgr::sharedInstance().onGetPACActionFinished(work.data);
}

int vlMeetingMgr::readPersonalMeeting(const Work &work) {
    return getPMIMeetingInfo(work.strip, StateUpdatePMI);
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, const QVariantMap &data) {
    if (command != CmdUpdateMeeting && command != CmdDeleteMeeting)
        return nothingStarted;
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    if (strip && rt::boolValue(data.value(keyDragAndMoveOnCalendar)))
        strip->setOLUIAction(HostAction::ActionCalendarDrag);
    const QVariantMap snapshot = rt::mapValue(data.value(vl_Outlook_ApptInfo));
    const QString key = meetingKeyIn(snapshot);
    CalendarChanges &changes = CalendarChanges::sharedInstance();
    const RequestOwner::Scope scope(strip ? strip->context() : changes.contextFor(key));
    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    store.setSavedApptInfo(snapshot);
    if (!key.isEmpty())
        store.setMeetingKey(key);
    QVariantMap request = data;
    request.insert(vl_MeetingKey, key);
    if (!follow(Source::Calendar, {command, strip, nullptr, request}))
        return nothingStarted;
    changes.finish(); // no answer will come
    return clientNotReached;
}

int vlMeetingMgr::readMeetingOnCalendar(const Work &work) {
    CalendarChanges::noteInEditorsThatSave(rt::textValue(work.data.value(vl_MeetingKey)));
    QWidget *ownerWindow = rt::widgetValue(work.data.value(keyEventOwnerWindow));
    return vlAPIMgr::sharedInstance().getMeeting(work.strip ? parentOf(work.strip) : ownerWindow, work.data);
}

int vlMeetingMgr::deleteMeetingOnCalendar(const Work &work) {
    QWidget *ownerWindow = rt::widgetValue(work.data.value(keyEventOwnerWindow));
    return vlAPIMgr::sharedInstance().deleteMeeting(ownerWindow, work.data);
}

int vlMeetingMgr::getPMIMeetingInfo(EditorStrip *strip, WorkflowState state) {
    const ContextScope scope(strip);
    if (!hasUserProfile())
        return nothingStarted;
    setState(state);
    return vlAPIMgr::sharedInstance().getMeeting(
        parentOf(strip), {{vl_MeetingKey, vlUserProfileHelper::sharedInstance().roomMeetingID()},
                          {vl_API_Call_Para_ShowCommunicationDlg, false},
                          {vl_API_Call_Para_ForPMI, true}});
}

bool vlMeetingMgr::notShowSetting() const {
    return rt::boolValue(vlSettingData::savedSettings().value(vl_Setting_NotShowMeAgain));
}

bool vlMeetingMgr::isSettingCommitOK(const QVariantMap &data) {
    return rt::textValue(data.value(keyVLUserOperator)) == keyVLSettingCommit &&
           rt::boolValue(data.value(keyButtonClickIsOK));
}

// Uses the command that opened the sheet, not the last one: another command may have started since then.
void vlMeetingMgr::onInvokeSettingCommit(const QVariantMap &userInfo) {
    const ContextScope scope(rt::textValue(userInfo.value(keyApptWindowID)));
    const MeetingCommand opened = MeetingContext::atHand().sheetCommand;
    onExcuteCommandFinished(opened == CmdNone ? getMeetingAction() : opened, userInfo);
}

// Answers.

void vlMeetingMgr::onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) {
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    const ContextScope scope(strip);
    if (command == CmdGetUserProfileDone && state() != StateAudioConference) // a conference does it itself
        vlPACMeetingMgr::sharedInstance().requestAccountsIfNeeded(strip);
    follow(Source::Answer, {command, strip, vlMeetingWindows::editorOf(strip), data});
}

// The user has to repeat the operation that waited. A new meeting gets its record then.
void vlMeetingMgr::onRequestDenied() {
    MeetingContext &context = MeetingContext::atHand();
    context.isOperationHeld = false;
    context.isNewMeeting = context.isNewMeeting && !context.meetingKey.isEmpty();
}

int vlMeetingMgr::onAddCancelVelaMeetingFinished(const Work &work) {
    if (!work.editor)
        return nothingStarted;
    if (work.code == CmdCancelMeeting)
        return sendVlMeetingCommand(CmdDeleteMeeting, work.editor);
    if (!isSettingCommitOK(work.data)) {
        if (!notShowSetting()) // the user has cancelled the sheet
            return nothingStarted;
        const QVariantMap settings = rt::mapValue(work.data.value(vl_Setting));
        if (rt::boolValue(settings.value(vl_Setting_IsPMI)))
            return getPMIMeetingInfo(work.strip, StateAddPMI);
    }
    return schedule(work);
}

int vlMeetingMgr::onChangeSettingFinished(const Work &work) {
    return work.editor && isSettingCommitOK(work.data) ? sendVlMeetingCommand(CmdUpdateMeeting, work.editor)
                                                       : nothingStarted;
}

// Reports the result of the action to the strip and the calendar. Returns the client's answer.
QVariantMap vlMeetingMgr::tellResult(const Work &work, StripState shown) {
    const QVariantMap answer = rt::mapValue(work.data.value(keyVlAPIResponse));
    if (work.strip) {
        work.strip->setActionResultData(answer);
        work.strip->onUIChanged(shown);
    }
    notifyActionResultToCalActionMgr(answer);
    return answer;
}

int vlMeetingMgr::onSchdulerActionFinished(const Work &work) {
    const QVariantMap answer = tellResult(work, StripState::MeetingAttached);
    if (auto &pending = MeetingContext::atHand().pendingWriteBack)
        pending->needClearLocation = false;
    if (!work.strip)
        return finishEditorLater(nullptr);
    vlMeetingDataMgr::sharedInstance().setMeetingKey(rt::textValue(answer.value(vl_MeetingKey)));
    vlAPIMgr::sharedInstance().getMeeting(parentOf(work.strip), getVelaMeetingData(work.editor));
    return nothingStarted;
}

// Removes the meeting from the appointment even after a failure; strip and calendar use the result.
int vlMeetingMgr::onDeleteActionFinished(const Work &work) {
    const rt::Weak<> editor(work.editor);
    const QVariantMap answer = tellResult(work, StripState::NoMeeting);
    forgetLoadedElsewhere();
    updateVlMeetingInfoToAppointmentForDelete(editor.get(), answer);
    clearAllSavedData(false);
    return finishEditorLater(editor.get());
}

// Work without a strip comes from the calendar and uses the kept snapshot of the appointment.
QVariantMap vlMeetingMgr::requestOf(const Work &work) const {
    if (work.strip)
        return getVelaMeetingData(work.editor);
    const vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    const QVariantMap info = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    return {{vl_Outlook_ApptInfo, store.getSavedApptInfo()},
            {vl_Setting, info.value(vl_Setting)},
            {vl_MeetingKey, store.meetingKey()}};
}

// Whether the work has an appointment: the strip's editor or, without a strip, the kept snapshot. If it has
// none, the editor has closed in the meantime, and an update would empty the meeting.
bool vlMeetingMgr::isAppointmentKnown(const Work &work) const {
    return work.strip ? work.editor != nullptr
                      : !vlMeetingDataMgr::sharedInstance().getSavedApptInfo().isEmpty();
}

int vlMeetingMgr::commitAfterReading(const Work &work) {
    if (const auto other = exchangeScheduleAnswers())
        return writeMeetingOf(other);
    return isAppointmentKnown(work) ? commitUpdateMeeting(work.strip, requestOf(work)) : nothingStarted;
}

int vlMeetingMgr::updateAfterReading(const Work &work) {
    return isAppointmentKnown(work) ? sendUpdate(work.strip, requestOf(work)) : nothingStarted;
}

int vlMeetingMgr::commitUpdateMeeting(EditorStrip *strip, const QVariantMap &request) {
    if (isMeetingChanged(request, vlGetMeetingHelper::sharedInstance().getMeetingInfo())) {
        const QVariantMap settings = rt::mapValue(request.value(vl_Setting));
        return rt::boolValue(settings.value(vl_Setting_IsPMI)) ? updatePMIMeeting(strip)
                                                               : sendUpdate(strip, request);
    }
    noteSent(request);
    // The record of a new meeting is also written if a save came before the meeting was read.
    return writeLoadedMeeting(vlMeetingWindows::editorOf(strip), MeetingContext::atHand().isNewMeeting);
}

int vlMeetingMgr::sendUpdate(EditorStrip *strip, const QVariantMap &request) {
    noteSent(request);
    forgetLoadedElsewhere();
    vlAPIMgr::sharedInstance().updateMeeting(parentOf(strip), request);
    return nothingStarted;
}

// Builds the request again after the personal meeting was read.
int vlMeetingMgr::updatePMIMeeting(EditorStrip *strip) {
    setState(StateUpdatePMI);
    if (hasUserProfile())
        getPMIMeetingInfo(strip, StateUpdatePMI);
    else
        vlAPIMgr::sharedInstance().getUserProfile(parentOf(strip));
    return nothingStarted;
}

// Other contexts that have loaded the meeting changed here must read it again before they compare with it.
void vlMeetingMgr::forgetLoadedElsewhere() {
    const auto own = MeetingContext::sharedAtHand();
    for (const auto &context : MeetingContext::all())
        if (context != own && context->meetingKey == own->meetingKey)
            context->loadedMeeting = {};
}

int vlMeetingMgr::writeMeeting(const Work &work) {
    if (const auto other = exchangeScheduleAnswers())
        return writeMeetingOf(other);
    return writeLoadedMeeting(work.editor, true);
}

int vlMeetingMgr::writeMeetingOf(const std::shared_ptr<MeetingContext> &context) {
    const RequestOwner::Scope scope(context);
    setState(StateIdle);
    return writeLoadedMeeting(vlMeetingWindows::editorOf(context->strip), true);
}

void vlMeetingMgr::noteSent(const QVariantMap &request) {
    MeetingContext::atHand().sentAppointment = rt::mapValue(request.value(vl_Outlook_ApptInfo));
}

// Changes made since the last request must reach the client before the host stores them.
void vlMeetingMgr::noteChangeBeforeOperation(rt::Object *editor) {
    MeetingContext &context = MeetingContext::atHand();
    if (!operationToRun(editor))
        return;
    const QVariantMap request = vlMeetingDataMgr::sharedInstance().getVlSchMeetingData(editor);
    const QVariantMap appointment = rt::mapValue(request.value(vl_Outlook_ApptInfo));
    for (const QString &key :
         {vl_ApptInfo_Subject, vl_ApptInfo_StartTime, vl_ApptInfo_Duration, vl_ApptInfo_Recurrence})
        if (appointment.value(key) != context.sentAppointment.value(key))
            context.isOperationHeld = context.isChangedMeanwhile = true;
}

// Writes into the appointment and, with `commit`, into its stored record.
int vlMeetingMgr::writeLoadedMeeting(rt::Object *openEditor, bool commit) {
    noteChangeBeforeOperation(openEditor);
    MeetingContext::atHand().isNewMeeting = false;
    const rt::Weak<> editor(openEditor);
    updateMailBodyForSchedule(editor.get());
    updateVlKeyInfoToAppointment(editor.get(), vlGetMeetingHelper::sharedInstance().getMeetingInfo(), commit);
    return finishEditorLater(editor.get());
}

// The end of the work.

// Runs after the answer was handled, because the host operation may close the editor and delete everything
// that belongs to it. Several answers in one turn finish the editor only once.
int vlMeetingMgr::finishEditorLater(rt::Object *editor) {
    const auto context = MeetingContext::sharedAtHand();
    const bool isChanged = std::exchange(context->isChangedMeanwhile, false);
    if (isChanged && editor && context->isOperationHeld && !context->meetingKey.isEmpty()) {
        context->loadedMeeting = {};
        return sendVlMeetingCommand(CmdUpdateMeeting, editor); // compares with the client's present state
    }
    if (std::exchange(context->isFinishing, true))
        return nothingStarted;
    platform::services().runLoop->callAfter(0, [context, editor = rt::Weak<>(editor)] {
        context->isFinishing = false;
        const RequestOwner::Scope scope(context);
        vlMeetingMgr::sharedInstance().closeOLAppointment(editor.get());
    });
    return nothingStarted;
}

// The operation to run when the work ends, for the editor of the current context; nullptr if there is none.
const HeldOperation *vlMeetingMgr::operationToRun(rt::Object *editor) {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    const bool hasAttendees = !rt::listValue(rt::send(editor, "attendeeList")).isEmpty();
    const HeldOperation *operation = strip ? heldOperation(strip->getOLUIAction(), hasAttendees) : nullptr;
    const bool isHeld = MeetingContext::atHand().isOperationHeld;
    return operation && (!operation->endsEditor || isHeld) ? operation : nullptr;
}

void vlMeetingMgr::closeOLAppointment(rt::Object *editor) {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (!strip)
        return clearAllSavedData(true);
    const ContextScope scope(strip);
    const HeldOperation *operation = operationToRun(editor);
    MeetingContext::atHand().isOperationHeld = false;
    if (!operation)
        return;
    const rt::Weak<> windowController(strip->editorWindowController());
    if (rt::integerValue(operation->run(editor)) == hostFailed)
        return; // the host has reported the reason; the editor stays open
    if (operation->forgets)
        clearAllSavedData(true);
    if (operation->closesWindow) // unless the host has closed it already
        rt::send(windowController.get(), "close");
}

void vlMeetingMgr::clearAllSavedData(bool dropEditor) {
    MeetingContext &context = MeetingContext::atHand();
    if (dropEditor)
        context.olWordMailEditor.reset();
    vlMeetingDataMgr::sharedInstance().clearSavedMeetingData();
    vlGetMeetingHelper::sharedInstance().setMeetingData({{vl_MeetingKey, u""_s}});
    context.isNewMeeting = false;
    context.sentAppointment.clear();
    context.usesProfile = false;
    const auto contexts = MeetingContext::all();
    if (std::none_of(contexts.begin(), contexts.end(), [](const auto &c) { return c->usesProfile; }))
        vlUserProfileHelper::sharedInstance().clearUserProfile();
    CalendarChanges::sharedInstance().finish();
}

// Services for the link, the calendar and the body.

bool vlMeetingMgr::isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const {
    return vlMeetingDataMgr::sharedInstance().isMeetingChanged(request, loadedMeeting);
}

QString vlMeetingMgr::getApptWindowIDByWindow(QWidget *window) const {
    return vlMeetingWindows::getApptWindowIDByWindow(window);
}

void vlMeetingMgr::setScheduleForEmail(const QString &email) {
    vlMeetingDataMgr::sharedInstance().setScheduleForEmail(email);
}

void vlMeetingMgr::setOLWordMailEditor(rt::Object *bodyEditor, rt::Object *editor) {
    const ContextScope scope(editor);
    MeetingContext::atHand().olWordMailEditor = std::make_unique<vlOLWordMailEditor>(bodyEditor);
}

vlOLWordMailEditor *vlMeetingMgr::bodyEditorOf(rt::Object *editor) const {
    const ContextScope scope(editor);
    return olWordMailEditor();
}

QString vlMeetingMgr::getMailBodyWithVelaContentFor1520(const QString &body, const QString &emailBody,
                                                        bool isHTMLBody) const {
    return vlEmailBodyMgr::sharedInstance().getMailBodyContentWithVela(body, emailBody, isHTMLBody);
}

QString vlMeetingMgr::encodeMailBody() const {
    return vlMeetingDataMgr::sharedInstance().encodeMailBody();
}
