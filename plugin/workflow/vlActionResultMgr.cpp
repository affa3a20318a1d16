#include "plugin/workflow/vlActionResultMgr.h"

#include "plugin/link/meetingKeys.h"
#include "plugin/workflow/vlMeetingWindows.h"
#include "plugin/workflow/workflowPorts.h"

void vlActionResultMgr::setActionResultData(const QVariantMap &answer) {
    m_bActionSucceed = rt::textValue(answer.value(keyVLResult)) == keyVLSuccess;
}

bool vlActionResultMgr::getActionResultWithCalEventEditorViewCtrl(rt::Object *editor) const {
    const EditorStrip *strip = vlMeetingWindows::stripOfEditor(editor);
    return strip && strip->getActionResult();
}
