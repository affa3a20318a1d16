#include "plugin/workflow/ScheduleOwner.h"

#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/util/vlPluginBuildMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/vlOnbehalfData.h"

bool isScheduleOwnerMatched(const ScheduleOwner &owner) {
    if (owner.isOnBehalf && !owner.onbehalfEmail.isEmpty() && !owner.mayScheduleForOther)
        return true;
    if (owner.scheduleForEmail.isEmpty())
        return !owner.isOnBehalf;
    return owner.isOnBehalf && owner.currentEmail.compare(owner.scheduleForEmail, Qt::CaseInsensitive) == 0;
}

bool vlMeetingMgr::checkScheduleOwnerMatched(rt::Object *editor) const {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    const ContextScope scope(strip);
    if (!strip || !strip->currentIsVelaMeeting())
        return true;
    if (!vlPluginBuildMgr::supportScheduleFor() || !needCheckOwnerMatched(editor))
        return true;
    const vlERCalendarEventEditorViewController adapter(editor);
    const QString onbehalfEmail = adapter.onbehalfEmailAddress();
    return isScheduleOwnerMatched(
        {.isOnBehalf = adapter.isOnBehalf(),
         .onbehalfEmail = onbehalfEmail,
         .currentEmail = adapter.currentEmailAddress(),
         .mayScheduleForOther = vlOnbehalfData::sharedInstance().hasSchedulePermission(onbehalfEmail),
         .scheduleForEmail = vlMeetingDataMgr::sharedInstance().scheduleForEmail()});
}

bool vlMeetingMgr::needCheckOwnerMatched(rt::Object *editor) const {
    const vlERCalendarEventEditorViewController adapter(editor);
    const QVariantMap record = vlOLUtils::toNSDictionary(adapter.ecCalendarEvent()->olmUCCapabilities());
    return !rt::isPresent(record.value(vl_OLProperty_MeetingKey));
}

void vlMeetingMgr::showWarningNotAllowScheduleForOthers(rt::Object *editor) {
    if (WorkflowAlerts *alerts = WorkflowPorts::instance().alerts)
        alerts->showRemoveMeetingWarning(editor, vlMeetingWindows::windowOfEditor(editor));
}
