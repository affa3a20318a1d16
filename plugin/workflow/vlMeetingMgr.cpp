#include "plugin/workflow/vlMeetingMgr.h"

#include "platform/runtime/Runtime.h"
#include "platform/services/Services.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/requests/PendingRequests.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/CalendarChanges.h"
#include "plugin/workflow/HeldOperation.h"
#include "plugin/workflow/ScheduleOwner.h"
#include "plugin/workflow/savedSettings.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlPACMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"

#include <algorithm>
#include <optional>

using enum MeetingCommand;
using enum WorkflowState;

namespace {

constexpr int nothingStarted = 0;
constexpr qint64 firstAccount = 1;
constexpr qint64 secondAccount = 2;
constexpr qint64 hostFailed = -1; // a host's save-and-close that left the editor open

QWidget *parentOf(const EditorStrip *strip) {
    return vlMeetingWindows::getPluginParentWindow(strip);
}

QVariantMap withProgress(QVariantMap request) {
    request.insert(vl_API_Call_Para_ShowCommunicationDlg, true);
    return request;
}

vlPACMeetingMgr &conferences() {
    return vlPACMeetingMgr::sharedInstance();
}

int refreshSheet(const EditorStrip *strip) {
    SettingsSheets *sheets = WorkflowPorts::instance().sheets;
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(strip);
    if (sheets && sheets->hasSchSettingWindow(apptWindowID))
        sheets->refreshSettingWindow(apptWindowID);
    return nothingStarted;
}

// Says that the work of the context at hand goes by the user's profile, and whether that is there.
bool hasUserProfile() {
    MeetingContext::atHand().usesProfile = true;
    return vlUserProfileHelper::sharedInstance().hasUserProfile();
}

} // namespace

// What a command or an answer is for, as far as it is still there.
struct vlMeetingMgr::Work {
    EditorStrip *strip = nullptr;
    rt::Object *editor = nullptr;
    QVariantMap data = {};
    bool accountsRequested = false; // their answer goes on with the audio conference
};

struct vlMeetingMgr::Transition {
    enum { Command, Answer } kind;
    MeetingCommand code;
    std::optional<WorkflowState> from; // none: any
    std::optional<WorkflowState> to;   // none: the state stays
    int (*next)(vlMeetingMgr &manager, const Work &work);
};

// All that moves the work on an appointment. What has no row changes nothing. A change on the calendar begins
// in StateCommit (CalendarChanges).
// clang-format off
const vlMeetingMgr::Transition vlMeetingMgr::transitions[] = {
    {Transition::Command, CmdAddMeeting, {}, StateAdd,
     [](auto &m, const Work &w) { return m.addVelaMeeting(w.strip); }},
    {Transition::Command, CmdChangeSettings, {}, StateChangeSettings,
     [](auto &m, const Work &w) { return m.changeSettings(w.strip); }},
    {Transition::Command, CmdCancelMeeting, {}, {},
     [](auto &m, const Work &w) { return m.cancelVelaMeeting(w.strip); }},
    {Transition::Command, CmdScheduleMeeting, {}, StateCommit,
     [](auto &m, const Work &w) { return m.scheduleUpdateVelaMeeting(w.editor, CmdScheduleMeeting); }},
    {Transition::Command, CmdUpdateMeeting, {}, StateCommit,
     [](auto &m, const Work &w) { return m.scheduleUpdateVelaMeeting(w.editor, CmdUpdateMeeting); }},
    {Transition::Command, CmdDeleteMeeting, {}, {},
     [](auto &m, const Work &w) { return m.deleteVelaMeeting(w.editor); }},
    {Transition::Command, CmdStartInstantVideo, {}, {},
     [](auto &m, const Work &) { return m.startInstantMeeting(true); }},
    {Transition::Command, CmdStartInstantShare, {}, {},
     [](auto &m, const Work &) { return m.startInstantMeeting(false); }},
    {Transition::Command, CmdAddAudioConference1, {}, StateAudioConference,
     [](auto &, const Work &w) { return conferences().addPACMeeting(w.strip, firstAccount); }},
    {Transition::Command, CmdAddAudioConference2, {}, StateAudioConference,
     [](auto &, const Work &w) { return conferences().addPACMeeting(w.strip, secondAccount); }},

    {Transition::Answer, CmdAddMeeting, {}, {},
     [](auto &m, const Work &w) { return m.onAddCancelVelaMeetingFinished(CmdAddMeeting, w.data); }},
    {Transition::Answer, CmdCancelMeeting, {}, {},
     [](auto &m, const Work &w) { return m.onAddCancelVelaMeetingFinished(CmdCancelMeeting, w.data); }},
    {Transition::Answer, CmdChangeSettings, {}, {},
     [](auto &m, const Work &w) { return m.onChangeSettingFinished(w.data); }},
    {Transition::Answer, CmdScheduleMeeting, {}, StateCommitDone,
     [](auto &m, const Work &w) { return m.onSchdulerActionFinished(CmdScheduleMeeting, w.data); }},
    {Transition::Answer, CmdUpdateMeeting, {}, StateCommitDone,
     [](auto &m, const Work &w) { return m.onSchdulerActionFinished(CmdUpdateMeeting, w.data); }},
    {Transition::Answer, CmdDeleteMeeting, {}, {},
     [](auto &m, const Work &w) { return m.onDeleteActionFinished(w.data); }},
    {Transition::Answer, CmdGetAudioConferenceDone, {}, {},
     [](auto &, const Work &w) { return conferences().onGetPACActionFinished(w.data); }},

    {Transition::Answer, CmdGetUserProfileDone, StateAdd, {},
     [](auto &m, const Work &w) { return m.prepareOpenSettings(w.strip); }},
    {Transition::Answer, CmdGetUserProfileDone, StateChangeSettings, {},
     [](auto &m, const Work &w) { return m.executeGetMeetingForChangeSetting(w.strip); }},
    {Transition::Answer, CmdGetUserProfileDone, StateAudioConference, {},
     [](auto &, const Work &w) { return w.accountsRequested ? 0 : conferences().schedulePACMeeting(w.strip); }},
    {Transition::Answer, CmdGetUserProfileDone, StateUpdatePMI, {},
     [](auto &m, const Work &w) { return m.getPMIMeetingInfo(w.strip, StateUpdatePMI); }},

    {Transition::Answer, CmdGetMeetingDone, StateChangeSettings, {},
     [](auto &m, const Work &w) { return m.showSettingsWindow(w.strip, m.requestOf(w)); }},
    {Transition::Answer, CmdGetMeetingDone, StateCommit, {},
     [](auto &m, const Work &w) {
         return m.isAppointmentKnown(w) ? m.commitUpdateMeeting(w.strip, m.requestOf(w)) : 0;
     }},
    {Transition::Answer, CmdGetMeetingDone, StateCommitDone, StateIdle,
     [](auto &m, const Work &w) { return m.writeMeeting(w); }},
    {Transition::Answer, CmdGetMeetingDone, StateSettingsPMI, {},
     [](auto &, const Work &w) { return refreshSheet(w.strip); }},
    {Transition::Answer, CmdGetMeetingDone, StateAddPMI, {},
     [](auto &m, const Work &w) { return w.editor ? m.sendVlMeetingCommand(CmdScheduleMeeting, w.editor) : 0; }},
    {Transition::Answer, CmdGetMeetingDone, StateUpdatePMI, {},
     [](auto &m, const Work &w) { return m.isAppointmentKnown(w) ? m.sendUpdate(w.strip, m.requestOf(w)) : 0; }},
};
// clang-format on

int vlMeetingMgr::follow(bool isAnswer, MeetingCommand code, const Work &work) {
    for (const Transition &row : transitions) {
        if ((row.kind == Transition::Answer) != isAnswer || row.code != code)
            continue;
        if (row.from && *row.from != state())
            continue;
        if (row.to)
            setState(*row.to);
        return row.next(*this, work);
    }
    return nothingStarted;
}

// The registration for the sheet's commit. It may outlive the services that it was made on.
class vlMeetingMgr::CommitObserver {
public:
    explicit CommitObserver(vlMeetingMgr &manager) {
        auto registered = std::make_shared<bool>(true);
        m_registered = registered;
        m_id = platform::services().notifications->addObserver(
            notify_SettingCommit, [registered, &manager](const QString &, const QVariantMap &userInfo) {
                manager.onInvokeSettingCommit(userInfo);
            });
    }
    ~CommitObserver() {
        // The id of a centre that is gone may be another observer's in the one that took its place.
        if (!m_registered.expired())
            platform::services().notifications->removeObserver(m_id);
    }
    CommitObserver(const CommitObserver &) = delete;
    CommitObserver &operator=(const CommitObserver &) = delete;

private:
    std::weak_ptr<bool> m_registered; // expires together with the centre that holds the registration
    platform::ObserverId m_id = 0;
};

vlMeetingMgr &vlMeetingMgr::sharedInstance() {
    return SharedObject<vlMeetingMgr>::get();
}

vlMeetingMgr::vlMeetingMgr()
    : m_commitObserver(std::make_unique<CommitObserver>(*this)) {}

vlMeetingMgr::~vlMeetingMgr() {
    if (LinkPorts::instance().finishReceiver == this)
        LinkPorts::instance().finishReceiver = nullptr;
    if (BodyPorts::instance().holder == this)
        BodyPorts::instance().holder = nullptr;
}

// Commands.

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, EditorStrip *strip) {
    const ContextScope scope(strip);
    setMeetingAction(command);
    return follow(false, command, {strip, vlMeetingWindows::editorOf(strip), {}});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, rt::Object *editor) {
    EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    const ContextScope scope(strip);
    setMeetingAction(command);
    return follow(false, command, {strip, editor, {}});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command) {
    setMeetingAction(command);
    return follow(false, command, {});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, const QVariantMap &data) {
    return CalendarChanges::sharedInstance().send(command, data);
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

int vlMeetingMgr::addVelaMeeting(EditorStrip *strip) {
    if (hasUserProfile())
        return prepareOpenSettings(strip);
    vlAPIMgr::sharedInstance().getUserProfile(parentOf(strip));
    return nothingStarted;
}

int vlMeetingMgr::prepareOpenSettings(EditorStrip *strip) {
    const QVariantMap request = getVelaMeetingData(vlMeetingWindows::editorOf(strip));
    if (!notShowSetting())
        return showSettingsWindow(strip, request);
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

int vlMeetingMgr::changeSettings(EditorStrip *strip) {
    if (hasUserProfile())
        return executeGetMeetingForChangeSetting(strip);
    vlAPIMgr::sharedInstance().getUserProfile(parentOf(strip), withProgress({}));
    return nothingStarted;
}

int vlMeetingMgr::executeGetMeetingForChangeSetting(EditorStrip *strip) {
    const QVariantMap request = getVelaMeetingData(vlMeetingWindows::editorOf(strip));
    if (vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        return showSettingsWindow(strip, request);
    vlAPIMgr::sharedInstance().getMeeting(parentOf(strip), withProgress(request));
    return nothingStarted;
}

int vlMeetingMgr::cancelVelaMeeting(EditorStrip *strip) {
    onExcuteCommandFinished(CmdCancelMeeting, getVelaMeetingData(vlMeetingWindows::editorOf(strip)));
    return nothingStarted;
}

int vlMeetingMgr::scheduleUpdateVelaMeeting(rt::Object *editor, MeetingCommand command) {
    if (!editor) // without an appointment a request would schedule an empty one
        return nothingStarted;
    const QVariantMap request = getVelaMeetingData(editor);
    EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (command != CmdUpdateMeeting) {
        MeetingContext::atHand().sentAppointment = rt::mapValue(request.value(vl_Outlook_ApptInfo));
        vlAPIMgr::sharedInstance().scheduleMeeting(parentOf(strip), request);
        return nothingStarted;
    }
    CalendarChanges::sharedInstance().supersede();
    if (vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        return commitUpdateMeeting(strip, request);
    vlAPIMgr::sharedInstance().getMeeting(parentOf(strip), request);
    return nothingStarted;
}

int vlMeetingMgr::deleteVelaMeeting(rt::Object *editor) {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (!editor || (strip && strip->blockDeleteVelaMeeting()))
        return nothingStarted;
    CalendarChanges::sharedInstance().supersede();
    return vlAPIMgr::sharedInstance().deleteMeeting(parentOf(strip), getVelaMeetingData(editor));
}

int vlMeetingMgr::startInstantMeeting(bool withVideo) {
    return vlAPIMgr::sharedInstance().startMeeting(withVideo);
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
    return rt::boolValue(savedSettings().value(vl_Setting_NotShowMeAgain));
}

bool vlMeetingMgr::isSettingCommitOK(const QVariantMap &data) const {
    return rt::textValue(data.value(keyVLUserOperator)) == keyVLSettingCommit &&
           rt::boolValue(data.value(keyButtonClickIsOK));
}

// Not the last command: another one may have been begun since the sheet was opened.
void vlMeetingMgr::onInvokeSettingCommit(const QVariantMap &userInfo) {
    const ContextScope scope(rt::textValue(userInfo.value(keyApptWindowID)));
    const MeetingCommand opened = MeetingContext::atHand().sheetCommand;
    onExcuteCommandFinished(opened == CmdNone ? getMeetingAction() : opened, userInfo);
}

// Answers.

vlMeetingMgr::Work vlMeetingMgr::workOf(const QVariantMap &data) {
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    return {strip, vlMeetingWindows::editorOf(strip), data};
}

void vlMeetingMgr::onExcuteCommandFinished(int command, const QVariantMap &data) {
    if (command >= int(CmdAddMeeting) && command <= int(CmdGetAudioConferenceDone))
        onExcuteCommandFinished(MeetingCommand(command), data);
}

void vlMeetingMgr::onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) {
    const Work work = workOf(data);
    const ContextScope scope(work.strip);
    if (command == CmdGetUserProfileDone)
        onGetUserProfileActionFinished(data);
    else if (command == CmdGetMeetingDone)
        onGetMeetingActionFinished(data);
    else
        follow(true, command, work);
}

// What waited for it is off: the user asks again.
void vlMeetingMgr::onRequestDenied() {
    MeetingContext &context = MeetingContext::atHand();
    context.isOperationHeld = false;
    context.sentAppointment.clear();
}

int vlMeetingMgr::onAddCancelVelaMeetingFinished(MeetingCommand command, const QVariantMap &data) {
    const Work work = workOf(data);
    if (!work.editor)
        return nothingStarted;
    if (command == CmdCancelMeeting)
        return sendVlMeetingCommand(CmdDeleteMeeting, work.editor);
    if (!isSettingCommitOK(data)) {
        if (!notShowSetting()) // the user has cancelled the sheet
            return nothingStarted;
        const QVariantMap settings = rt::mapValue(data.value(vl_Setting));
        if (rt::boolValue(settings.value(vl_Setting_IsPMI)))
            return getPMIMeetingInfo(work.strip, StateAddPMI);
    }
    return sendVlMeetingCommand(CmdScheduleMeeting, work.editor);
}

int vlMeetingMgr::onChangeSettingFinished(const QVariantMap &data) {
    const Work work = workOf(data);
    return work.editor && isSettingCommitOK(data) ? sendVlMeetingCommand(CmdUpdateMeeting, work.editor)
                                                  : nothingStarted;
}

int vlMeetingMgr::onSchdulerActionFinished(MeetingCommand, const QVariantMap &data) {
    const QVariantMap answer = rt::mapValue(data.value(keyVlAPIResponse));
    const Work work = workOf(data);
    if (work.strip) {
        work.strip->setActionResultData(answer);
        work.strip->onUIChanged(StripState::MeetingAttached);
    }
    notifyActionResultToCalActionMgr(answer);
    if (auto &pending = MeetingContext::atHand().pendingWriteBack)
        pending->needClearLocation = false;
    if (!work.strip)
        return finishEditorLater(nullptr);
    vlMeetingDataMgr::sharedInstance().setMeetingKey(rt::textValue(answer.value(vl_MeetingKey)));
    vlAPIMgr::sharedInstance().getMeeting(parentOf(work.strip), getVelaMeetingData(work.editor));
    return nothingStarted;
}

// Also after a failure the meeting leaves the appointment; the result is for the strip and the calendar.
int vlMeetingMgr::onDeleteActionFinished(const QVariantMap &data) {
    const QVariantMap answer = rt::mapValue(data.value(keyVlAPIResponse));
    const Work work = workOf(data);
    if (work.strip) {
        work.strip->setActionResultData(answer);
        work.strip->onUIChanged(StripState::NoMeeting);
    }
    notifyActionResultToCalActionMgr(answer);
    const rt::Weak<> editor(work.editor);
    forgetLoadedElsewhere();
    updateVlMeetingInfoToAppointmentForDelete(work.editor, answer);
    clearAllSavedData(false);
    return finishEditorLater(editor.get());
}

int vlMeetingMgr::onGetUserProfileActionFinished(const QVariantMap &data) {
    Work work = workOf(data);
    work.accountsRequested = requestAccountsIfNeeded(work);
    return follow(true, CmdGetUserProfileDone, work);
}

int vlMeetingMgr::onGetMeetingActionFinished(const QVariantMap &data) {
    return follow(true, CmdGetMeetingDone, workOf(data));
}

bool vlMeetingMgr::requestAccountsIfNeeded(const Work &work) {
    if (vlPACMeetingMgr::knowsTheUsersAccounts())
        return false;
    vlUserProfileHelper::sharedInstance().setAccountChangedFlag(false);
    const bool showProgress = state() == StateAudioConference;
    vlAPIMgr::sharedInstance().getPAC(parentOf(work.strip),
                                      {{vl_API_Call_Para_ShowCommunicationDlg, showProgress}});
    return true;
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

// Whether there is an appointment behind the work: the strip's editor, or without a strip the kept snapshot.
// Without one the editor has closed meanwhile, and an update would empty the meeting.
bool vlMeetingMgr::isAppointmentKnown(const Work &work) const {
    return work.strip ? work.editor != nullptr
                      : !vlMeetingDataMgr::sharedInstance().getSavedApptInfo().isEmpty();
}

int vlMeetingMgr::commitUpdateMeeting(EditorStrip *strip, const QVariantMap &request) {
    const QVariantMap loaded = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    if (!isMeetingChanged(request, loaded)) {
        // A save that overtook the reading of a new meeting brings its record too.
        const bool isNew = !std::exchange(MeetingContext::atHand().sentAppointment, {}).isEmpty();
        const rt::Weak<> editor(vlMeetingWindows::editorOf(strip));
        updateMailBodyForSchedule(editor.get());
        updateVlKeyInfoToAppointment(editor.get(), loaded, isNew);
        return finishEditorLater(editor.get());
    }
    if (rt::boolValue(rt::mapValue(request.value(vl_Setting)).value(vl_Setting_IsPMI)))
        return updatePMIMeeting(strip, request);
    return sendUpdate(strip, request);
}

int vlMeetingMgr::sendUpdate(EditorStrip *strip, const QVariantMap &request) {
    forgetLoadedElsewhere();
    vlAPIMgr::sharedInstance().updateMeeting(parentOf(strip), request);
    return nothingStarted;
}

// The request is made anew when the personal meeting has been read.
int vlMeetingMgr::updatePMIMeeting(EditorStrip *strip, const QVariantMap &) {
    if (hasUserProfile())
        return getPMIMeetingInfo(strip, StateUpdatePMI);
    setState(StateUpdatePMI);
    vlAPIMgr::sharedInstance().getUserProfile(parentOf(strip));
    return nothingStarted;
}

// Whoever else has read the meeting that is changed here reads it again before comparing with it.
void vlMeetingMgr::forgetLoadedElsewhere() {
    const auto own = MeetingContext::sharedAtHand();
    for (const auto &context : MeetingContext::all())
        if (context != own && context->meetingKey == own->meetingKey)
            context->loadedMeeting = {};
}

int vlMeetingMgr::writeMeeting(const Work &work) {
    if (const auto other = ownerOfLoadedMeeting()) {
        exchangeAnswers(other);
        const RequestOwner::Scope scope(other);
        setState(StateIdle);
        return writeMeeting({other->strip, vlMeetingWindows::editorOf(other->strip), {}});
    }
    MeetingContext::atHand().sentAppointment.clear();
    const rt::Weak<> editor(work.editor);
    updateMailBodyForSchedule(editor.get());
    updateVlKeyInfoToAppointment(editor.get(), vlGetMeetingHelper::sharedInstance().getMeetingInfo(), true);
    return finishEditorLater(editor.get());
}

// The answer to a schedule request does not tell whose it is. With several under way, the client may have
// answered in another order than it was asked: the meeting that was read back then is the one that another
// appointment has asked for. nullptr: it is the own one.
std::shared_ptr<MeetingContext> vlMeetingMgr::ownerOfLoadedMeeting() const {
    const QVariantMap info = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    const QVariantMap loaded = rt::mapValue(info.value(vl_Outlook_ApptInfo));
    const auto asked = [&loaded](const MeetingContext &context) {
        return !isAppointmentChanged(context.sentAppointment, loaded);
    };
    const MeetingContext &own = MeetingContext::atHand();
    if (own.sentAppointment.isEmpty() || asked(own))
        return nullptr;
    for (const auto &context : MeetingContext::all())
        if (context->strip && !context->sentAppointment.isEmpty() && asked(*context))
            return context;
    return nullptr;
}

void vlMeetingMgr::exchangeAnswers(const std::shared_ptr<MeetingContext> &other) {
    const auto own = MeetingContext::sharedAtHand();
    std::swap(own->meetingKey, other->meetingKey);
    std::swap(own->loadedMeeting, other->loadedMeeting);
    const WorkflowState otherState = other->state();
    own->setState(otherState);
    vlAPIMgr::sharedInstance().exchangeOwners(Requester{own, parentOf(own->strip)},
                                              Requester{other, parentOf(other->strip)});
    const auto show = [](const MeetingContext &context) {
        if (context.strip)
            context.strip->onUIChanged(context.meetingKey.isEmpty() ? StripState::NoMeeting
                                                                    : StripState::MeetingAttached);
    };
    show(*own);
    show(*other);
}

// The end of the work.

// Not from inside the answer: the host operation may close the editor and everything that belongs to it.
// Answers that come together end it once.
int vlMeetingMgr::finishEditorLater(rt::Object *editor) {
    const auto context = MeetingContext::sharedAtHand();
    const bool isChanged = std::exchange(context->isChangedMeanwhile, false);
    if (isChanged && editor && context->isOperationHeld && !context->meetingKey.isEmpty()) {
        context->loadedMeeting = {};
        return sendVlMeetingCommand(CmdUpdateMeeting, editor); // compares with what the client has by now
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

void vlMeetingMgr::closeOLAppointment(rt::Object *editor) {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (!strip)
        return clearAllSavedData(true);
    const ContextScope scope(strip);
    const bool hasAttendees = !rt::listValue(rt::send(editor, "attendeeList")).isEmpty();
    const HeldOperation *operation = heldOperation(strip->getOLUIAction(), hasAttendees);
    const bool isHeld = std::exchange(MeetingContext::atHand().isOperationHeld, false);
    if (!operation || (operation->endsEditor && !isHeld))
        return;
    const rt::Weak<> windowController(strip->editorWindowController());
    if (rt::integerValue(operation->run(editor)) == hostFailed)
        return; // the host has said why; the editor stays as it was
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
    constexpr bool forPMI = false;
    vlGetMeetingHelper::sharedInstance().setMeetingData({{vl_MeetingKey, u""_s}}, forPMI);
    context.sentAppointment.clear();
    context.usesProfile = false;
    const auto contexts = MeetingContext::all();
    if (std::none_of(contexts.begin(), contexts.end(), [](const auto &c) { return c->usesProfile; }))
        vlUserProfileHelper::sharedInstance().clearUserProfile();
    CalendarChanges::sharedInstance().finish();
}

void vlMeetingMgr::notifyActionResultToCalActionMgr(const QVariantMap &answer) {
    vlCalendarActionMgr::sharedInstance().setActionResultData(answer);
}

bool vlMeetingMgr::isMeetingChanged(const QVariantMap &request, const QVariantMap &loadedMeeting) const {
    return vlMeetingDataMgr::sharedInstance().isMeetingChanged(request, loadedMeeting);
}

// For the link, the body and the owner's check.

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

bool vlMeetingMgr::checkScheduleOwnerMatched(rt::Object *editor) const {
    return isScheduleOwnerMatched(editor);
}

bool vlMeetingMgr::needCheckOwnerMatched(rt::Object *editor) const {
    return isNewMeeting(editor);
}

void vlMeetingMgr::showWarningNotAllowScheduleForOthers(rt::Object *editor) {
    if (WorkflowAlerts *alerts = WorkflowPorts::instance().alerts)
        alerts->showRemoveMeetingWarning(editor, vlMeetingWindows::windowOfEditor(editor));
}
