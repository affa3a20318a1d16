// What editing the body needs from the floor above it.
#pragma once

#include "platform/runtime/Object.h"

#include <QString>

class vlOLWordMailEditor;

// Holds the open Word-style body editor, the last body written through it, and the digest of the invitation
// that the appointment being edited carries.
class BodyEditorHolder {
public:
    virtual ~BodyEditorHolder() = default;
    // The adapter on the body editor that belongs to the appointment editor; when it is not known to whom the
    // one in use belongs, that one. nullptr when there is none: another appointment's body is never handed
    // out. Not owned, valid until an editor opens or closes.
    [[nodiscard]] virtual vlOLWordMailEditor *bodyEditorOf(const rt::Object *editor) const = 0;
    virtual void setOLNewBody(const QString &html) = 0;
    // The body with the invitation written into it, or removed when the invitation is empty; null when it
    // stays.
    [[nodiscard]] virtual QString getMailBodyWithVelaContentFor1520(const QString &body,
                                                                    const QString &emailBody,
                                                                    bool isHTMLBody) const = 0;
    // The stored digest of the invitation in the body; null or empty when there is none.
    [[nodiscard]] virtual QString encodeMailBody() const = 0;
};

// Filled by the composition root or a test; not owned; nullptr: no body editor and no digest.
struct BodyPorts {
    BodyEditorHolder *holder = nullptr;
    static BodyPorts &instance();
};
