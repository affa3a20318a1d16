#include "plugin/workflow/CalendarChanges.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/util/sharedObject.h"
#include "plugin/workflow/storedRecord.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

namespace {

constexpr int nothingWrong = 0;
constexpr int clientNotReached = 1;

// "" when the appointment carries none.
QString meetingKeyIn(const QVariantMap &snapshot) {
    const QVariantMap record = storedRecord(rt::textValue(snapshot.value(vl_ApptInfo_VlOIProperty)));
    const QString key = rt::textValue(record.value(vl_OLProperty_MeetingKey));
    return key.isNull() ? u""_s : key;
}

// What an editor has sent before the change, or sends of it while the client still has the change to come,
// does not hold any more when its work ends.
void noteInEditorsThatSave(const QString &key) {
    for (const auto &context : MeetingContext::all())
        if (context->strip && context->isOperationHeld && context->hasMeeting(key))
            context->isChangedMeanwhile = true;
}

} // namespace

CalendarChanges &CalendarChanges::sharedInstance() {
    return SharedObject<CalendarChanges>::get();
}

int CalendarChanges::send(MeetingCommand command, const QVariantMap &data) {
    const bool isUpdate = command == MeetingCommand::CmdUpdateMeeting;
    if (!isUpdate && command != MeetingCommand::CmdDeleteMeeting)
        return nothingWrong;
    QWidget *ownerWindow = rt::widgetValue(data.value(keyEventOwnerWindow));
    EditorStrip *strip = vlMeetingWindows::stripOfWindowID(rt::textValue(data.value(keyApptWindowID)));
    QWidget *parent = strip ? vlMeetingWindows::getPluginParentWindow(strip) : ownerWindow;
    if (strip && rt::boolValue(data.value(keyDragAndMoveOnCalendar)))
        strip->setOLUIAction(HostAction::ActionCalendarDrag);

    const QVariantMap snapshot = rt::mapValue(data.value(vl_Outlook_ApptInfo));
    const QString key = meetingKeyIn(snapshot);
    const RequestOwner::Scope scope(strip ? strip->context() : contextFor(key));
    vlMeetingDataMgr &store = vlMeetingDataMgr::sharedInstance();
    store.setSavedApptInfo(snapshot);
    if (!key.isEmpty())
        store.setMeetingKey(key);

    vlAPIMgr &client = vlAPIMgr::sharedInstance();
    QVariantMap request = data;
    request.insert(vl_MeetingKey, key);
    qint32 error = 0;
    if (isUpdate) {
        noteInEditorsThatSave(key);
        MeetingContext::atHand().setState(WorkflowState::StateCommit);
        error = client.getMeeting(parent, request);
    } else {
        error = client.deleteMeeting(ownerWindow, {{vl_MeetingKey, key}});
    }
    if (!error)
        return nothingWrong;
    finish(); // nothing will be answered
    return clientNotReached;
}

std::shared_ptr<MeetingContext> CalendarChanges::contextFor(const QString &meetingKey) {
    std::erase_if(m_changes, [&](const auto &change) { return change->meetingKey == meetingKey; });
    return m_changes.emplace_back(MeetingContext::make());
}

void CalendarChanges::finish() {
    std::erase(m_changes, MeetingContext::sharedAtHand());
}

void CalendarChanges::supersede() {
    const auto own = MeetingContext::sharedAtHand();
    std::erase_if(m_changes, [&own](const auto &change) {
        return change != own && !own->meetingKey.isEmpty() && change->meetingKey == own->meetingKey;
    });
}
