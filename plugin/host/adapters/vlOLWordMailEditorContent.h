// The content of the newer body editor.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

class vlOLWordMailEditorContent : public vlDelegateBase {
public:
    explicit vlOLWordMailEditorContent(rt::Object *content)
        : vlDelegateBase(key_vlOLWordMailEditorContent, content) {}

    [[nodiscard]] QString bodyContent() const { return text(olItem_bodyContent); } // HTML or null
};
