#include "plugin/load/pluginLoad.h"

#include "platform/Guarded.h"
#include "plugin/hooks/loadSteps.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/link/linkPorts.h"
#include "plugin/ui/dialogs/dialogPorts.h"
#include "plugin/ui/settings/SchSettingWndCtrlMgr.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/workflow/vlMeetingMgr.h"
#include "plugin/workflow/workflowPorts.h"

void fillPluginPorts() {
    static auto *dialogs = new DialogPorts;
    LinkPorts::instance().feedback = dialogs;
    WorkflowPorts::instance().strips = &vlActionAdditionViewMonitor::sharedInstance();
    WorkflowPorts::instance().createStrip = vlActionAdditionView::create;
    WorkflowPorts::instance().sheets = &SchSettingWndCtrlMgr::sharedInstance();
    WorkflowPorts::instance().alerts = dialogs;
    LinkPorts::instance().finishReceiver = &vlMeetingMgr::sharedInstance();
    BodyPorts::instance().holder = &vlMeetingMgr::sharedInstance();
}

void loadPlugin() {
    static bool loaded = false;
    if (loaded)
        return;
    loaded = true;
    platform::guarded("loading the plug-in", [] {
        fillPluginPorts();
        runLoadSteps();
    });
}
