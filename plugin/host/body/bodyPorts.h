// The interface that the body's editing needs from the layer above it.
#pragma once

#include "platform/runtime/Object.h"

#include <QString>

class vlOLWordMailEditor;

// Holds the body editor of each appointment editor, the last body written through it, and the digest of the
// invitation in the current appointment.
class BodyEditorHolder {
public:
    virtual ~BodyEditorHolder() = default;
    // The adapter of that appointment editor's Word-style body editor; nullptr if there is none. Not owned by
    // the caller; valid until an editor opens or closes.
    [[nodiscard]] virtual vlOLWordMailEditor *bodyEditorOf(rt::Object *editor) const = 0;
    virtual void setOLNewBody(const QString &html) = 0;
    // The stored digest of the invitation in the body; null or empty without an invitation.
    [[nodiscard]] virtual QString encodeMailBody() const = 0;
};

// The composition root or a test fills it; not owned. nullptr: there is no body editor and no digest.
struct BodyPorts {
    BodyEditorHolder *holder = nullptr;
    static BodyPorts &instance();
};
