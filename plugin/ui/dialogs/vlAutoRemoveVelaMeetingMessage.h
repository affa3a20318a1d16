// The alert that the meeting cannot be sent for another organiser, which offers to remove it.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

class vlAutoRemoveVelaMeetingMessage : public SharedObject<vlAutoRemoveVelaMeetingMessage> {
public:
    // The editor that the next message is about; held weakly.
    void setEditorViewCtrl(rt::Object *editor) { m_olEditorViewCtrl = rt::Weak<>(editor); }
    void showMessage(QWidget *window);
    // Removes the meeting, when the editor still has one.
    static void alertDidEnd(AlertReturn result, rt::Object *editor);

private:
    rt::Weak<> m_olEditorViewCtrl;
};
