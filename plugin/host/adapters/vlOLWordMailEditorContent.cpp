#include "plugin/host/adapters/vlOLWordMailEditorContent.h"

#include "plugin/host/adapters/hostNames.h"

vlOLWordMailEditorContent::vlOLWordMailEditorContent(rt::Object *content)
    : vlDelegateBase(key_vlOLWordMailEditorContent, content) {}

QString vlOLWordMailEditorContent::bodyContent() const {
    return rt::textValue(getOLItemID(olItem_bodyContent));
}
