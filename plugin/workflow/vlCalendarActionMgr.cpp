#include "plugin/workflow/vlCalendarActionMgr.h"

#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlCCGridViewController.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/host/adapters/vlOLCalendarDate.h"
#include "plugin/host/adapters/vlOLCalendarGridViewWrapper.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double secondsPerMinute = 60.0;

// Whole minutes; both conversions truncate toward zero. Seconds beyond 32 bits are clamped.
QString minutesText(double seconds) {
    using Limits = std::numeric_limits<qint32>;
    const auto whole = qint32(std::clamp(seconds, double(Limits::min()), double(Limits::max())));
    return QString::number(whole / qint32(secondsPerMinute));
}

void moveSnapshot(QVariantMap &snapshot, const vlOLCalendarDate &start, std::optional<double> duration) {
    const double seconds =
        duration ? *duration : rt::doubleValue(snapshot.value(vl_ApptInfo_Duration)) * secondsPerMinute;
    const vlOLCalendarDate end(start.dateByAddingTimeInterval(seconds));
    snapshot.insert(vl_ApptInfo_StartTime, start.getVlMeetingData());
    snapshot.insert(vl_ApptInfo_EndTime, end.getVlMeetingData());
    snapshot.insert(vl_ApptInfo_Duration, minutesText(seconds));
}

} // namespace

void vlMeetingMgr::notifyActionResultToCalActionMgr(const QVariantMap &answer) {
    vlCalendarActionMgr::sharedInstance().setActionResultData(answer);
}

bool vlCalendarActionMgr::isCurVelaMeeting(rt::Object *event) const {
    // Sent by name and not through an adapter, because the object may be an event or its editable record.
    const QString text = rt::textValue(rt::send(event, rt::Selector(olItem_olmUCCapabilities)));
    return !rt::textValue(vlOLUtils::toNSDictionary(text).value(vl_OLProperty_MeetingKey)).isEmpty();
}

int vlCalendarActionMgr::updateSubject(rt::Object *grid, const QString &subject) {
    return updateMeeting(grid, subject, nullptr, {});
}

int vlCalendarActionMgr::updateDuration(rt::Object *grid, rt::Object *startDate, double seconds) {
    return updateMeeting(grid, QString(), startDate, seconds);
}

int vlCalendarActionMgr::updateStartTime(rt::Object *grid, rt::Object *startDate) {
    return updateMeeting(grid, QString(), startDate, {});
}

int vlCalendarActionMgr::updateMeeting(rt::Object *grid, const QString &newSubject, rt::Object *newStartDate,
                                       std::optional<double> newDuration) {
    const vlOLCalendarDate start(newStartDate); // held weakly: the host code called below may delete it
    const vlOLCalendarGridViewWrapper wrapper(grid);
    const vlCCGridViewController controller(wrapper.gridViewController());
    QVariantMap pending;
    if (!newSubject.isNull())
        pending.insert(key_vlPendingPrefix + olItem_summary, newSubject);
    const vlECCalendarEvent event(controller.ecCalendarEvent(), pending);
    QVariantMap snapshot = event.getVlMeetingData();
    if (newStartDate)
        moveSnapshot(snapshot, start, newDuration);
    return updateAppointmentOnCalendar(snapshot, controller.gridWindow(), event.isSupportVela(),
                                       MeetingCommand::CmdUpdateMeeting);
}

int vlCalendarActionMgr::deleteMeeting(rt::Object *event) {
    const vlECCalendarEvent adapter(event);
    return updateAppointmentOnCalendar(adapter.getVlMeetingData(), mainWindow(), adapter.isSupportVela(),
                                       MeetingCommand::CmdDeleteMeeting);
}

int vlCalendarActionMgr::updateAppointmentOnCalendar(const QVariantMap &snapshot, QWidget *ownWindow,
                                                     bool isSupportVela, MeetingCommand command) {
    if (!isSupportVela)
        return 0;
    QVariantMap request{{vl_Outlook_ApptInfo, snapshot}, {keyDragAndMoveOnCalendar, true}};
    if (ownWindow) {
        request.insert(keyEventOwnerWindow, rt::fromWidget(ownWindow));
        request.insert(keyApptWindowID, rt::identifier(ownWindow));
    }
    return vlMeetingMgr::sharedInstance().sendVlMeetingCommand(command, request);
}

QWidget *vlCalendarActionMgr::mainWindow() const {
    return vlMeetingWindows::mainWindow();
}
