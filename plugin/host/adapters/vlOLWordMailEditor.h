// The newer, Word-style body editor.
#pragma once

#include "plugin/host/adapters/vlDelegateBase.h"

class vlOLWordMailEditor : public vlDelegateBase {
public:
    explicit vlOLWordMailEditor(rt::Object *editor);

    // Shows the HTML in place of what is there, through the richest method that this host has.
    void displayHTMLContent(const QString &html, bool readOnly) const;
    [[nodiscard]] rt::Object *editorContent() const;
    [[nodiscard]] rt::Value editor() const;
    [[nodiscard]] rt::Value editorHost() const;
};
