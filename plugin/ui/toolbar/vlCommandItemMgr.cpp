#include "plugin/ui/toolbar/vlCommandItemMgr.h"

#include "platform/services/Services.h"
#include "platform/toolkit/Windows.h"
#include "plugin/link/vlCommon.h"
#include "plugin/workflow/vlMeetingMgr.h"

void vlCommandItemMgr::initPluginInstance() {
    m_appDelegate = std::make_unique<vlErageAppDelegate>(platform::applicationDelegate());
}

int vlCommandItemMgr::SendToolbarItemCommand(qint32 command, const QVariantMap &data) {
    switch (command) {
    case qint32(ToolbarCommand::StartInstantMeeting):
        startInstantMeeting(data);
        break;
    case qint32(ToolbarCommand::ScheduleNewMeeting):
        scheduleNewMeeting(data);
        break;
    case qint32(ToolbarCommand::ScheduleNewPACMeeting):
        scheduleNewPACMeeting(data);
        break;
    case qint32(ToolbarCommand::OpenLogFolder):
        openLogFolder(data);
        break;
    default:
        break;
    }
    return 0;
}

void vlCommandItemMgr::startInstantMeeting(const QVariantMap &data) {
    const bool withVideo = rt::boolValue(data.value(keyStartWithVideo));
    vlMeetingMgr::sharedInstance().sendVlMeetingCommand(withVideo ? MeetingCommand::CmdStartInstantVideo
                                                                  : MeetingCommand::CmdStartInstantShare);
}

void vlCommandItemMgr::scheduleNewMeeting(const QVariantMap &) {
    if (m_appDelegate)
        m_appDelegate->autoAddVelaToAppointment(rt::Value());
}

void vlCommandItemMgr::scheduleNewPACMeeting(const QVariantMap &data) {
    if (m_appDelegate)
        m_appDelegate->autoAddPACToAppointment(data);
}

void vlCommandItemMgr::openLogFolder(const QVariantMap &) {
    vlCommon::createDocumentOutlookPluginRootPath(); // missing before the first meeting
    platform::services().workspace->openInFileBrowser(vlCommon::getDocumentOutlookPluginRootPath());
}
