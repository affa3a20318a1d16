// The commands of the meeting controller: what each of them starts.
#include "plugin/link/meetingKeys.h"
#include "plugin/link/vlAPIMgr.h"
#include "plugin/link/vlGetMeetingHelper.h"
#include "plugin/link/vlUserProfileHelper.h"
#include "plugin/workflow/storedRecord.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlPACMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"

#include <optional>

namespace {

using enum MeetingCommand;
using enum WorkflowState;

constexpr int nothingStarted = 0;
constexpr int clientNotReached = 1;
constexpr qint64 firstAccount = 1;
constexpr qint64 secondAccount = 2;

struct Target {
    EditorStrip *strip;
    rt::Object *editor;
};

struct CommandRow {
    MeetingCommand command;
    std::optional<WorkflowState> state; // none: the state stays
    int (*start)(vlMeetingMgr &manager, const Target &target);
};

// What is not here (answers, and numbers that are no command) starts nothing.
constexpr CommandRow commandTable[] = {
    {CmdAddMeeting, StateAdd, [](vlMeetingMgr &m, const Target &t) { return m.addVelaMeeting(t.strip); }},
    {CmdChangeSettings, StateChangeSettings,
     [](vlMeetingMgr &m, const Target &t) { return m.changeSettings(t.strip); }},
    {CmdCancelMeeting, {}, [](vlMeetingMgr &m, const Target &t) { return m.cancelVelaMeeting(t.strip); }},
    {CmdScheduleMeeting, StateCommit,
     [](vlMeetingMgr &m, const Target &t) {
         return m.scheduleUpdateVelaMeeting(t.editor, CmdScheduleMeeting);
     }},
    {CmdUpdateMeeting, StateCommit,
     [](vlMeetingMgr &m, const Target &t) {
         return m.scheduleUpdateVelaMeeting(t.editor, CmdUpdateMeeting);
     }},
    {CmdDeleteMeeting, {}, [](vlMeetingMgr &m, const Target &t) { return m.deleteVelaMeeting(t.editor); }},
    {CmdStartInstantVideo, {}, [](vlMeetingMgr &m, const Target &) { return m.startInstantMeeting(true); }},
    {CmdStartInstantShare, {}, [](vlMeetingMgr &m, const Target &) { return m.startInstantMeeting(false); }},
    {CmdAddAudioConference1, StateAudioConference,
     [](vlMeetingMgr &, const Target &t) {
         return vlPACMeetingMgr::sharedInstance().addPACMeeting(t.strip, firstAccount);
     }},
    {CmdAddAudioConference2, StateAudioConference,
     [](vlMeetingMgr &, const Target &t) {
         return vlPACMeetingMgr::sharedInstance().addPACMeeting(t.strip, secondAccount);
     }},
};

int startCommand(vlMeetingMgr &manager, MeetingCommand command, const Target &target) {
    manager.setMeetingAction(command);
    for (const CommandRow &row : commandTable) {
        if (row.command != command)
            continue;
        if (row.state)
            manager.setState(*row.state);
        return row.start(manager, target);
    }
    return nothingStarted;
}

QVariantMap withProgress(QVariantMap request) {
    request.insert(vl_API_Call_Para_ShowCommunicationDlg, true);
    return request;
}

} // namespace

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, EditorStrip *strip) {
    return startCommand(*this, command, {strip, vlMeetingWindows::editorOf(strip)});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, rt::Object *editor) {
    return startCommand(*this, command, {vlMeetingWindows::stripOfEditor(editor), editor});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command) {
    return startCommand(*this, command, {nullptr, nullptr});
}

int vlMeetingMgr::sendVlMeetingCommand(MeetingCommand command, const QVariantMap &data) {
    if (command != CmdUpdateMeeting && command != CmdDeleteMeeting)
        return nothingStarted;
    QWidget *ownerWindow = rt::widgetValue(data.value(keyEventOwnerWindow));
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    QWidget *parent = strip ? vlMeetingWindows::getPluginParentWindow(strip) : ownerWindow;
    if (strip && rt::boolValue(data.value(keyDragAndMoveOnCalendar)))
        strip->setOLUIAction(HostAction::CalendarDrag);

    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    const QString formerKey = store.meetingKey();
    const QVariantMap formerInfo = store.getSavedApptInfo();
    const QVariantMap snapshot = rt::mapValue(data.value(vl_Outlook_ApptInfo));
    store.setSavedApptInfo(snapshot);
    const QString key = takeKeyFromSnapshot(snapshot);

    vlAPIMgr &client = vlAPIMgr::sharedInstance();
    qint32 error = 0;
    if (command == CmdDeleteMeeting) {
        error = client.deleteMeeting(ownerWindow, {{vl_MeetingKey, key}});
    } else {
        setState(StateCommit);
        QVariantMap request = data;
        request.insert(vl_MeetingKey, key);
        request.remove(keyEventOwnerWindow); // the request stays with the client link, the window need not
        error = client.getMeeting(parent, request);
    }
    m_beforeChange = StoreBefore{key, formerKey, formerInfo};
    if (!error)
        return nothingStarted;
    onRequestRefused(); // nothing will be answered
    return clientNotReached;
}

// An editor that is open, or opened next, is not to take the meeting of the calendar for its own. One that
// has loaded its own meeting since keeps that.
void vlMeetingMgr::onRequestRefused() {
    if (!m_beforeChange)
        return;
    const StoreBefore before = *m_beforeChange;
    m_beforeChange.reset();
    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    if (store.meetingKey() != before.changedKey)
        return;
    store.setMeetingKey(before.meetingKey.isNull() ? QStringLiteral("") : before.meetingKey);
    store.setSavedApptInfo(before.apptInfo);
}

QString vlMeetingMgr::takeKeyFromSnapshot(const QVariantMap &snapshot) const {
    const QVariantMap record = storedRecord(rt::textValue(snapshot.value(vl_ApptInfo_VlOIProperty)));
    const QString key = rt::textValue(record.value(vl_OLProperty_MeetingKey));
    if (key.isNull())
        return QStringLiteral("");
    vlMeetingDataMgr::sharedInstance().setMeetingKey(key);
    return key;
}

int vlMeetingMgr::addVelaMeeting(EditorStrip *strip) {
    if (vlUserProfileHelper::sharedInstance().hasUserProfile())
        prepareOpenSettings(strip);
    else
        vlAPIMgr::sharedInstance().getUserProfile(vlMeetingWindows::getPluginParentWindow(strip));
    return nothingStarted;
}

void vlMeetingMgr::prepareOpenSettings(EditorStrip *strip) {
    const QVariantMap request = getVelaMeetingData(vlMeetingWindows::editorOf(strip));
    if (notShowSetting())
        onExcuteCommandFinished(CmdAddMeeting, request);
    else
        showSettingsWindow(strip, request);
}

void vlMeetingMgr::showSettingsWindow(EditorStrip *strip, const QVariantMap &data) {
    SettingsSheets *sheets = WorkflowPorts::instance().sheets;
    if (!sheets || !strip)
        return;
    const QString apptWindowID = vlMeetingWindows::getOLAppointmentWindowID(strip);
    m_sheetCommands.insert(apptWindowID, state() == StateChangeSettings ? CmdChangeSettings : CmdAddMeeting);
    sheets->addSchSettingWindowToArray(apptWindowID, data, vlMeetingWindows::getPluginParentWindow(strip));
    sheets->showSchSettingWindow(apptWindowID);
}

int vlMeetingMgr::changeSettings(EditorStrip *strip) {
    if (vlUserProfileHelper::sharedInstance().hasUserProfile())
        return executeGetMeetingForChangeSetting(strip);
    vlAPIMgr::sharedInstance().getUserProfile(vlMeetingWindows::getPluginParentWindow(strip),
                                              withProgress({}));
    return nothingStarted;
}

int vlMeetingMgr::executeGetMeetingForChangeSetting(EditorStrip *strip) {
    const QVariantMap request = getVelaMeetingData(vlMeetingWindows::editorOf(strip));
    if (vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        showSettingsWindow(strip, request);
    else
        vlAPIMgr::sharedInstance().getMeeting(vlMeetingWindows::getPluginParentWindow(strip),
                                              withProgress(request));
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
    QWidget *parent = vlMeetingWindows::getPluginParentWindow(strip);
    if (command != CmdUpdateMeeting)
        vlAPIMgr::sharedInstance().scheduleMeeting(parent, request);
    else if (vlGetMeetingHelper::sharedInstance().hasMeetingInfo())
        commitUpdateMeeting(strip, request);
    else
        vlAPIMgr::sharedInstance().getMeeting(parent, request);
    return nothingStarted;
}

int vlMeetingMgr::deleteVelaMeeting(rt::Object *editor) {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (!editor || (strip && strip->blockDeleteVelaMeeting()))
        return nothingStarted;
    return vlAPIMgr::sharedInstance().deleteMeeting(vlMeetingWindows::getPluginParentWindow(strip),
                                                    getVelaMeetingData(editor));
}

int vlMeetingMgr::startInstantMeeting(bool withVideo) {
    return vlAPIMgr::sharedInstance().startMeeting(withVideo);
}

int vlMeetingMgr::getPMIMeetingInfo(EditorStrip *strip, WorkflowState state) {
    const vlUserProfileHelper &profile = vlUserProfileHelper::sharedInstance();
    if (!profile.hasUserProfile())
        return nothingStarted;
    setState(state);
    return vlAPIMgr::sharedInstance().getMeeting(vlMeetingWindows::getPluginParentWindow(strip),
                                                 {{vl_MeetingKey, profile.roomMeetingID()},
                                                  {vl_API_Call_Para_ShowCommunicationDlg, false},
                                                  {vl_API_Call_Para_ForPMI, true}});
}
