// The alert that the meeting cannot be sent for another organiser. It offers to remove the meeting.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

class vlAutoRemoveVelaMeetingMessage : public SharedObject<vlAutoRemoveVelaMeetingMessage> {
public:
    // Sets the editor for the next message; held weakly.
    void setEditorViewCtrl(rt::Object *editor) { m_olEditorViewCtrl = rt::Weak<>(editor); }
    void showMessage(QWidget *window);
    // Removes the meeting if the editor still has one.
    static void alertDidEnd(AlertReturn result, rt::Object *editor);

private:
    rt::Weak<> m_olEditorViewCtrl;
};
