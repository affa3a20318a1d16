// What is in the newer body editor.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

class vlOLWordMailEditorContent : public vlDelegateBase {
public:
    explicit vlOLWordMailEditorContent(rt::Object *content);

    [[nodiscard]] QString bodyContent() const; // HTML; null when there is none
};
