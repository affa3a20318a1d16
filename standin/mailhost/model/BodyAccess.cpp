#include "standin/mailhost/model/BodyAccess.h"

#include "platform/toolkit/WebDocument.h"
#include "standin/mailhost/model/Bind.h"

namespace mailhost {

BodyObject::BodyObject(const QString &className, BodyAccess *body)
    : rt::Object(rt::classNamed(className))
    , m_body(body) {}

rt::Object *BodyObject::part(const QString &className) const {
    return rt::temporary(std::make_unique<BodyObject>(className, m_body.data()));
}

void BodyObject::displayAndActivate(const QString &html, bool readOnly, bool, bool activate) {
    if (!m_body)
        return;
    m_body->showBodyHtml(html);
    m_body->setBodyReadOnly(readOnly);
    if (activate)
        m_body->focusBody();
}

QVariantList BodyObject::getElementsByTagName(const QString &tagName) {
    if (tagName != u"body" || innerHTML().isNull())
        return {};
    return {rt::fromObject(part(u"DOMElement"_s))};
}

QString BodyObject::outerHTML() const {
    return platform::WebDocument(bodyContent()).documentElementOuterHtml();
}

QString BodyObject::innerHTML() const {
    return platform::WebDocument(bodyContent()).bodyHtml();
}

void BodyObject::setInnerHTML(const QString &html) {
    const QString changed = platform::WebDocument(bodyContent()).withBodyHtml(html);
    if (m_body && !changed.isNull())
        m_body->showBodyHtml(changed);
}

void defineBodyClasses() {
    using B = BodyObject;
    addMethods(rt::defineClass(u"OLWordMailEditorContent"_s),
               {{"bodyContent", bind<&B::bodyContent>, "@@:"}});
    addMethods(rt::defineClass(u"OLWordMailEditor"_s),
               {{"editor", bind<&B::editor>, "@@:"},
                {"editorHost", bind<&B::editorHost>, "@@:"},
                {"editorContent", bind<&B::editorContent>, "@@:"},
                {"displayHTMLContent:readOnly:", bind<&B::display>, "v@:@B"},
                {"displayHTMLContent:readOnly:signatureEditor:", bind<&B::displayWithSignature>, "v@:@BB"},
                {"displayHTMLContent:readOnly:signatureEditor:activateEditor:", bind<&B::displayAndActivate>,
                 "v@:@BBB"}});
    addMethods(rt::defineClass(u"DOMElement"_s), {{"outerHTML", bind<&B::outerHTML>, "@@:"},
                                                  {"innerHTML", bind<&B::innerHTML>, "@@:"},
                                                  {"setInnerHTML:", bind<&B::setInnerHTML>, "v@:@"}});
    addMethods(rt::defineClass(u"DOMDocument"_s),
               {{"documentElement", bind<&B::documentElement>, "@@:"},
                {"getElementsByTagName:", bind<&B::getElementsByTagName>, "@@:@"}});
    addMethods(rt::defineClass(u"WebFrame"_s), {{"DOMDocument", bind<&B::document>, "@@:"}});
}

} // namespace mailhost
