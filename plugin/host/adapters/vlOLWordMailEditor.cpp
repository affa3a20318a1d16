#include "plugin/host/adapters/vlOLWordMailEditor.h"

#include "plugin/host/adapters/hostNames.h"

vlOLWordMailEditor::vlOLWordMailEditor(rt::Object *editor)
    : vlDelegateBase(key_vlOLWordMailEditor, editor) {}

void vlOLWordMailEditor::displayHTMLContent(const QString &html, bool readOnly) const {
    constexpr bool signatureEditor = true;
    constexpr bool activateEditor = true;
    const rt::Value arguments[] = {html, readOnly, signatureEditor, activateEditor};
    if (hasMember(olItem_displayHTMLContentSignatureActivate))
        callMember(olItem_displayHTMLContentSignatureActivate, rt::Args(arguments, 4));
    else if (hasMember(olItem_displayHTMLContentSignature))
        callMember(olItem_displayHTMLContentSignature, rt::Args(arguments, 3));
    else
        getOLItemID(olItem_displayHTMLContent, html, readOnly);
}

rt::Object *vlOLWordMailEditor::editorContent() const {
    return rt::objectValue(getOLItemID(olItem_editorContent));
}

rt::Value vlOLWordMailEditor::editor() const {
    return getOLItemID(olItem_editor);
}

rt::Value vlOLWordMailEditor::editorHost() const {
    return getOLItemID(olItem_editorHost);
}
