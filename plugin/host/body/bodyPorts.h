// What editing the body needs from the layer above it.
#pragma once

#include "platform/runtime/Object.h"

#include <QString>

class vlOLWordMailEditor;

// Holds the body editor of each appointment editor, the last body written through it, and the digest of the
// invitation that the appointment at hand carries.
class BodyEditorHolder {
public:
    virtual ~BodyEditorHolder() = default;
    // The adapter on the Word-style body editor of that appointment editor; nullptr when there is none. Not
    // owned, valid until an editor opens or closes.
    [[nodiscard]] virtual vlOLWordMailEditor *bodyEditorOf(rt::Object *editor) const = 0;
    virtual void setOLNewBody(const QString &html) = 0;
    // The stored digest of the invitation in the body; null or empty when there is none.
    [[nodiscard]] virtual QString encodeMailBody() const = 0;
};

// Filled by the composition root or a test; not owned; nullptr: no body editor and no digest.
struct BodyPorts {
    BodyEditorHolder *holder = nullptr;
    static BodyPorts &instance();
};
