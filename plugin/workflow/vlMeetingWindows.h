// Which window, editor, strip and context belong together.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/workflow/MeetingContext.h"

#include <QString>

class EditorStrip;
class QWidget;

// Nothing is kept or owned; nullptr and null texts stand for what is not there.
class vlMeetingWindows {
public:
    // The window to which progress and alerts belong: that of the strip's editor; without a strip the main
    // window.
    [[nodiscard]] static QWidget *getPluginParentWindow(const EditorStrip *strip);
    [[nodiscard]] static QString getOLAppointmentWindowID(const EditorStrip *strip);
    // The identifier of the editor whose strip is in that window.
    [[nodiscard]] static QString getApptWindowIDByWindow(QWidget *window);

    [[nodiscard]] static EditorStrip *stripOfEditor(rt::Object *editor);
    [[nodiscard]] static EditorStrip *stripOfWindowID(const QString &apptWindowID);
    [[nodiscard]] static rt::Object *editorOf(const EditorStrip *strip);
    [[nodiscard]] static QWidget *windowOfEditor(rt::Object *editor);
    [[nodiscard]] static QWidget *mainWindow();
};

// Brings an editor's context to hand for as long as it lives. Without a strip, what is at hand stays there.
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
