#include "plugin/host/body/vlEmailBodyMgr.h"

#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/util/vlMd5Utils.h"

void vlEmailBodyMgr::updateMailBody(rt::Object *editor, const QString &invitation, bool isDelete,
                                    bool isHTML) const {
    const vlERCalendarEventEditorViewController adapter(editor);
    if (needUpdateVlEmail(&adapter, invitation, isDelete, isHTML))
        adapter.updateEmailBodyWithVelaContent(invitation, isHTML);
}

bool vlEmailBodyMgr::needUpdateVlEmail(const vlERCalendarEventEditorViewController *editor,
                                       const QString &invitation, bool isDelete, bool isHTML) const {
    if (!editor)
        return false;
    if (!isDelete && invitation.isEmpty())
        return false;
    const QString plain =
        isHTML ? vlBodyHelper::sharedInstance().convertHTMLToPlainText(invitation) : invitation;
    return isVlBodyChanged(plain) || editor->isCurrentEmailBodyEmpty();
}

bool vlEmailBodyMgr::isVlBodyChanged(const QString &plainInvitation) const {
    const BodyEditorHolder *holder = BodyPorts::instance().holder;
    const QString stored = holder ? holder->encodeMailBody() : QString();
    return stored.isEmpty() || stored != vlMd5Utils::vlMD5Hex(plainInvitation);
}

void vlEmailBodyMgr::updateMailBodyForPAC(rt::Object *editor, const QString &text, bool isHTML) const {
    vlERCalendarEventEditorViewController(editor).updateEmailBodyForPAC(text, isHTML);
}

QString vlEmailBodyMgr::getMailBodyContentWithVela(const QString &body, const QString &invitation,
                                                   bool isHTML) const {
    const vlBodyHelper &helper = vlBodyHelper::sharedInstance();
    return invitation.isEmpty() ? helper.removeVlBodyForDelete(body)
                                : helper.updateVlBodyWithSrcBody(body, invitation, isHTML, QString());
}
