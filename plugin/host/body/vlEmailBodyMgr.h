// Decides whether and how the body of an open editor is rewritten.
#pragma once

#include "platform/runtime/Object.h"
#include "plugin/util/sharedObject.h"

#include <QString>

class vlERCalendarEventEditorViewController;

// Has no state. `editor` is the host's editor view controller; with nullptr the calls do nothing.
class vlEmailBodyMgr : public SharedObject<vlEmailBodyMgr> {
public:
    // Updates the invitation in the body, or removes it if `invitation` is empty. Skips needless writes.
    void updateMailBody(rt::Object *editor, const QString &invitation, bool isDelete, bool isHTML) const;
    // Whether there is an invitation to write or to delete and the body is empty or contains another one.
    [[nodiscard]] bool needUpdateVlEmail(const vlERCalendarEventEditorViewController *editor,
                                         const QString &invitation, bool isDelete, bool isHTML) const;
    // Whether the plain invitation differs from the one recorded in the appointment's stored data.
    [[nodiscard]] bool isVlBodyChanged(const QString &plainInvitation) const;
    // Adds the text of an audio conference.
    void updateMailBodyForPAC(rt::Object *editor, const QString &text, bool isHTML) const;
    // The body with the invitation, or without one if `invitation` is empty; null if the body needs no
    // change.
    [[nodiscard]] QString getMailBodyContentWithVela(const QString &body, const QString &invitation,
                                                     bool isHTML) const;
};
