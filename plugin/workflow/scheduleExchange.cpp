#include "plugin/workflow/scheduleExchange.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlGetMeetingHelper.h"
#include "plugin/link/requests/PendingRequests.h"
#include "plugin/link/requests/vlAPICommitMeeting.h"
#include "plugin/link/requests/vlAPIMgr.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

#include <algorithm>

namespace {

// Whether the client may have made that meeting for the appointment. The client shortens a long subject and
// fills in an empty one.
bool isMeetingFor(QVariantMap appointment, const QVariantMap &loaded) {
    const QString asked = rt::textValue(appointment.value(vl_ApptInfo_Subject));
    const QString made = rt::textValue(loaded.value(vl_ApptInfo_Subject));
    if (asked.isEmpty() || asked.left(vlAPICommitMeeting::maximumSubjectLength) == made)
        appointment.insert(vl_ApptInfo_Subject, made);
    return !isAppointmentChanged(appointment, loaded);
}

std::shared_ptr<MeetingContext> ownerOfLoadedMeeting() {
    const QVariantMap info = vlGetMeetingHelper::sharedInstance().getMeetingInfo();
    const QVariantMap loaded = rt::mapValue(info.value(vl_Outlook_ApptInfo));
    const auto asked = [&loaded](const MeetingContext &context) {
        return context.isNewMeeting && isMeetingFor(context.sentAppointment, loaded);
    };
    const auto own = MeetingContext::sharedAtHand();
    if (!own->isNewMeeting || asked(*own))
        return own;
    const auto contexts = MeetingContext::all();
    const auto other = std::find_if(contexts.begin(), contexts.end(),
                                    [&](const auto &context) { return context->strip && asked(*context); });
    return other == contexts.end() ? own : *other;
}

Requester requesterOf(const std::shared_ptr<MeetingContext> &context) {
    return {context, vlMeetingWindows::getPluginParentWindow(context->strip)};
}

void show(const MeetingContext &context) {
    if (context.strip)
        context.strip->onUIChanged(context.meetingKey.isEmpty() ? StripState::NoMeeting
                                                                : StripState::MeetingAttached);
}

} // namespace

std::shared_ptr<MeetingContext> exchangeScheduleAnswers() {
    const auto own = MeetingContext::sharedAtHand();
    const auto other = ownerOfLoadedMeeting();
    if (other == own)
        return nullptr;
    std::swap(own->meetingKey, other->meetingKey);
    std::swap(own->loadedMeeting, other->loadedMeeting);
    own->setState(own->meetingKey.isEmpty() ? WorkflowState::StateCommit : WorkflowState::StateCommitDone);
    vlAPIMgr::sharedInstance().exchangeOwners(requesterOf(own), requesterOf(other));
    show(*own);
    show(*other);
    return other;
}
