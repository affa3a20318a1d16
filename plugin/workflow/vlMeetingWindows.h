// Finds the window, editor, strip and context that belong together.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/workflow/MeetingContext.h"

#include <QString>

class EditorStrip;
class QWidget;

// Keeps and owns nothing. A missing object is nullptr, a missing text is null.
class vlMeetingWindows {
public:
    // The parent window of progress and alerts: the window of the strip's editor or, without a strip, the
    // main window.
    [[nodiscard]] static QWidget *getPluginParentWindow(const EditorStrip *strip);
    [[nodiscard]] static QString getOLAppointmentWindowID(const EditorStrip *strip);
    // The identifier of the editor whose strip that window contains.
    [[nodiscard]] static QString getApptWindowIDByWindow(QWidget *window);

    [[nodiscard]] static EditorStrip *stripOfEditor(rt::Object *editor);
    [[nodiscard]] static EditorStrip *stripOfWindowID(const QString &apptWindowID);
    [[nodiscard]] static rt::Object *editorOf(const EditorStrip *strip);
    [[nodiscard]] static QWidget *windowOfEditor(rt::Object *editor);
    [[nodiscard]] static QWidget *mainWindow();
};

// Makes an editor's context the current one during its lifetime. Without a strip the current context stays.
class ContextScope {
public:
    explicit ContextScope(const EditorStrip *strip);
    explicit ContextScope(rt::Object *editor)
        : ContextScope(vlMeetingWindows::stripOfEditor(editor)) {}
    explicit ContextScope(const QString &apptWindowID)
        : ContextScope(vlMeetingWindows::stripOfWindowID(apptWindowID)) {}

private:
    RequestOwner::Scope m_scope;
};
