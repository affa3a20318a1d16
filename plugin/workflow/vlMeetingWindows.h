// Which window, editor and strip belong together.
#pragma once

#include "platform/runtime/Object.h"

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
};
