// The newer, Word-style body editor.
#pragma once

#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlDelegateBase.h"

class vlOLWordMailEditor : public vlDelegateBase {
public:
    explicit vlOLWordMailEditor(rt::Object *editor)
        : vlDelegateBase(key_vlOLWordMailEditor, editor) {}

    // Replaces the shown content with the HTML, through the most capable method that this host has.
    void displayHTMLContent(const QString &html, bool readOnly) const;
    [[nodiscard]] rt::Object *editorContent() const { return object(olItem_editorContent); }
    [[nodiscard]] rt::Value editor() const { return getOLItemID(olItem_editor); }
    [[nodiscard]] rt::Value editorHost() const { return getOLItemID(olItem_editorHost); }
};
