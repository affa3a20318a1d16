#include "plugin/ui/dialogs/vlAutoRemoveVelaMeetingMessage.h"

#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "plugin/util/localizedString.h"

// Each message stores its own editor, because a second editor may show its message while the first is still
// open.
void vlAutoRemoveVelaMeetingMessage::showMessage(QWidget *window) {
    const rt::Weak<> editor = m_olEditorViewCtrl;
    showAlertSheet(window, vlLocalizedString(uiKeys::removeMeetingForOther),
                   {vlLocalizedString(uiKeys::buttonOKGot), vlLocalizedString(uiKeys::buttonCancel)},
                   [editor](AlertReturn result) { alertDidEnd(result, editor.get()); });
}

void vlAutoRemoveVelaMeetingMessage::alertDidEnd(AlertReturn result, rt::Object *editor) {
    if (result != AlertReturn::Default)
        return;
    auto *strip =
        vlActionAdditionViewMonitor::sharedInstance().getVlActionAdditionViewByEditorViewCtrl(editor);
    if (strip && strip->currentIsVelaMeeting())
        strip->autoRemoveVelaMeeting();
}
