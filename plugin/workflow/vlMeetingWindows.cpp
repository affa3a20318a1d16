#include "plugin/workflow/vlMeetingWindows.h"

#include "platform/toolkit/Windows.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/workflowPorts.h"

#include <QWidget>
#include <algorithm>

QWidget *vlMeetingWindows::getPluginParentWindow(const EditorStrip *strip) {
    return strip ? windowOfEditor(editorOf(strip)) : mainWindow();
}

QString vlMeetingWindows::getOLAppointmentWindowID(const EditorStrip *strip) {
    return strip ? strip->getAppointmentWindowID() : QString();
}

QString vlMeetingWindows::getApptWindowIDByWindow(QWidget *window) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    return getOLAppointmentWindowID(strips ? strips->getVlActionAdditionViewByWindow(window) : nullptr);
}

EditorStrip *vlMeetingWindows::stripOfEditor(rt::Object *editor) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    return strips && editor ? strips->getVlActionAdditionViewByEditorViewCtrl(editor) : nullptr;
}

EditorStrip *vlMeetingWindows::stripOfWindowID(const QString &apptWindowID) {
    const EditorStrips *strips = WorkflowPorts::instance().strips;
    return strips ? strips->getVlActionAdditionViewByApptWindowID(apptWindowID) : nullptr;
}

rt::Object *vlMeetingWindows::editorOf(const EditorStrip *strip) {
    return strip ? strip->editorViewController() : nullptr;
}

QWidget *vlMeetingWindows::windowOfEditor(rt::Object *editor) {
    const QWidget *view = vlERCalendarEventEditorViewController(editor).view();
    return view ? view->window() : nullptr;
}

QWidget *vlMeetingWindows::mainWindow() {
    const QList<QWidget *> windows = platform::orderedWindows();
    const auto main = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return vlOLUtils::kindofClass(platform::windowController(window), key_vlERageMainWindowController);
    });
    return main == windows.end() ? nullptr : *main;
}

ContextScope::ContextScope(const EditorStrip *strip)
    : m_scope(strip ? strip->context() : RequestOwner::atHand()) {}
