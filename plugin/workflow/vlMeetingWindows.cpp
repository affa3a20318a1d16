#include "plugin/workflow/vlMeetingWindows.h"

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/workflow/vlCalendarActionMgr.h"
#include "plugin/workflow/workflowPorts.h"

#include <QWidget>

QWidget *vlMeetingWindows::getPluginParentWindow(const EditorStrip *strip) {
    return strip ? windowOfEditor(editorOf(strip)) : vlCalendarActionMgr::sharedInstance().mainWindow();
}

QString vlMeetingWindows::getOLAppointmentWindowID(const EditorStrip *strip) {
    return strip ? strip->getAppointmentWindowID() : QString();
}

QString vlMeetingWindows::getApptWindowIDByWindow(QWidget *window) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    if (!strips || !window)
        return {};
    return getOLAppointmentWindowID(strips->getVlActionAdditionViewByWindow(window));
}

EditorStrip *vlMeetingWindows::stripOfEditor(rt::Object *editor) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    return strips && editor ? strips->getVlActionAdditionViewByEditorViewCtrl(editor) : nullptr;
}

EditorStrip *vlMeetingWindows::stripOfWindowID(const QString &apptWindowID) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    return strips && !apptWindowID.isEmpty() ? strips->getVlActionAdditionViewByApptWindowID(apptWindowID)
                                             : nullptr;
}

rt::Object *vlMeetingWindows::editorOf(const EditorStrip *strip) {
    return strip ? strip->editorViewController() : nullptr;
}

QWidget *vlMeetingWindows::windowOfEditor(rt::Object *editor) {
    const QWidget *view = vlERCalendarEventEditorViewController(editor).view();
    return view ? view->window() : nullptr;
}
