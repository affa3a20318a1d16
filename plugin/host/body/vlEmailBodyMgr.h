// Whether and how the body of an open editor is rewritten.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/util/sharedObject.h"

#include <QString>

class vlERCalendarEventEditorViewController;

// Keeps no state. `editor` is the host's editor view controller; with nullptr nothing happens.
class vlEmailBodyMgr : public SharedObject<vlEmailBodyMgr> {
public:
    // Brings the invitation in the body up to date, or removes it when it is empty, if that is needed.
    void updateMailBody(rt::Object *editor, const QString &invitation, bool isDelete, bool isHTML) const;
    // Whether there is something to write or to delete, and the body is empty or holds another invitation.
    [[nodiscard]] bool needUpdateVlEmail(const vlERCalendarEventEditorViewController *editor,
                                         const QString &invitation, bool isDelete, bool isHTML) const;
    // Whether the plain invitation is another one than the appointment's stored data tells of.
    [[nodiscard]] bool isVlBodyChanged(const QString &plainInvitation) const;
    // Adds the text of an audio conference.
    void updateMailBodyForPAC(rt::Object *editor, const QString &text, bool isHTML) const;
    // The body with the invitation, or without one when it is empty; null: leave it as it is.
    [[nodiscard]] QString getMailBodyContentWithVela(const QString &body, const QString &invitation,
                                                     bool isHTML) const;
};
