#include "plugin/host/adapters/vlOLWordMailEditor.h"

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
