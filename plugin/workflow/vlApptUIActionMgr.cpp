#include "plugin/workflow/vlApptUIActionMgr.h"

#include "plugin/link/discovery/vlAppHelper.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

#include <optional>

namespace {

// The command that a save requires in this state; no value if the host may save at once.
std::optional<MeetingCommand> commandFor(DataStatus status) {
    if (status == DataStatus::DeleteMeeting)
        return MeetingCommand::CmdDeleteMeeting;
    if (status == DataStatus::UpdateMeeting)
        return MeetingCommand::CmdUpdateMeeting;
    return {};
}

} // namespace

void vlApptUIActionMgr::createVlAdditionViewOnCalHeaderContainerView(QWidget *headerView) {
    const bool isNewerHost = vlAppHelper::sharedInstance().isOutlookVersionLargeThan2016();
    WorkflowPorts::instance().createStrip(headerView,
                                          isNewerHost ? g_vlAdditionViewFrame_OL2016 : g_vlAdditionViewFrame);
}

int vlApptUIActionMgr::handleVLMeeting(rt::Object *editor, const QVariantMap &action) {
    EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    if (!strip)
        return hostMayProceed;
    const ContextScope scope(strip);
    if (!action.isEmpty())
        strip->setOLUIAction(HostAction(rt::integerValue(action.value(keyApptViewActionID))));
    const std::optional<MeetingCommand> command = commandFor(strip->getVlDataStatus());
    if (!command) {
        strip->setActionToSuccess();
        return hostMayProceed;
    }
    MeetingContext::atHand().isOperationHeld = true; // until the work ends or is denied
    const int error = vlMeetingMgr::sharedInstance().sendVlMeetingCommand(*command, editor);
    if (error) // otherwise the host would send the cancellation and the meeting would remain
        return error == hostMayProceed ? notStarted : error;
    if (EditorStrip *stillThere = vlMeetingWindows::stripOfEditor(editor))
        stillThere->setActionToSuccess();
    return heldBack;
}

int vlApptUIActionMgr::addVLMeeting(EditorStrip *strip) {
    return vlMeetingMgr::sharedInstance().sendVlMeetingCommand(MeetingCommand::CmdAddMeeting, strip);
}

int vlApptUIActionMgr::addPACMeeting(EditorStrip *strip, PACAccount account) {
    const MeetingCommand command = account == PACAccount::Second ? MeetingCommand::CmdAddAudioConference2
                                                                 : MeetingCommand::CmdAddAudioConference1;
    return vlMeetingMgr::sharedInstance().sendVlMeetingCommand(command, strip);
}

int vlApptUIActionMgr::cancelVLMeeting(EditorStrip *strip, int) {
    return vlMeetingMgr::sharedInstance().sendVlMeetingCommand(MeetingCommand::CmdCancelMeeting, strip);
}

int vlApptUIActionMgr::changeVLMeeting(EditorStrip *strip, int) {
    return vlMeetingMgr::sharedInstance().sendVlMeetingCommand(MeetingCommand::CmdChangeSettings, strip);
}

int vlApptUIActionMgr::closeOLAppointment() {
    vlMeetingMgr::sharedInstance().closeOLAppointment(nullptr);
    return 0;
}
