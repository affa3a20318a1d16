#include "standin/mailhost/model/BodyAccess.h"

#include "platform/toolkit/WebDocument.h"
#include "standin/mailhost/model/Bind.h"

namespace mailhost {

namespace {

QString htmlOf(const BodyAccess *body) {
    return body ? body->bodyHtml() : QString();
}

} // namespace

WordMailEditorContent::WordMailEditorContent(BodyAccess *body)
    : rt::Object(rt::classNamed(u"OLWordMailEditorContent"_s))
    , m_body(body) {}

WordMailEditor::WordMailEditor(BodyAccess *body)
    : rt::Object(rt::classNamed(u"OLWordMailEditor"_s))
    , m_body(body)
    , m_content(body) {}

void WordMailEditor::displayHTMLContent(const QString &html, bool readOnly) {
    if (!m_body)
        return;
    m_body->showBodyHtml(html);
    m_body->setBodyReadOnly(readOnly);
}

void WordMailEditor::displayHTMLContentAndActivate(const QString &html, bool readOnly, bool, bool activate) {
    displayHTMLContent(html, readOnly);
    if (activate && m_body)
        m_body->focusBody();
}

DomElement::DomElement(BodyAccess *body, QString tagName)
    : rt::Object(rt::classNamed(u"DOMElement"_s))
    , m_body(body)
    , m_tagName(std::move(tagName)) {}

QString DomElement::outerHTML() const {
    return platform::WebDocument(htmlOf(m_body)).documentElementOuterHtml();
}

QString DomElement::innerHTML() const {
    return platform::WebDocument(htmlOf(m_body)).innerHtml(m_tagName);
}

void DomElement::setInnerHTML(const QString &html) {
    const QString changed = platform::WebDocument(htmlOf(m_body)).withInnerHtml(m_tagName, html);
    if (m_body && !changed.isNull())
        m_body->showBodyHtml(changed);
}

DomDocument::DomDocument(BodyAccess *body)
    : rt::Object(rt::classNamed(u"DOMDocument"_s))
    , m_body(body) {}

rt::Object *DomDocument::documentElement() {
    return rt::temporary(std::make_unique<DomElement>(m_body, u"html"_s));
}

QVariantList DomDocument::getElementsByTagName(const QString &tagName) {
    if (platform::WebDocument(htmlOf(m_body)).innerHtml(tagName).isNull())
        return {};
    return {rt::fromObject(rt::temporary(std::make_unique<DomElement>(m_body, tagName)))};
}

WebFrame::WebFrame(BodyAccess *body)
    : rt::Object(rt::classNamed(u"WebFrame"_s))
    , m_document(body) {}

void defineBodyClasses() {
    addMethods(rt::defineClass(u"OLWordMailEditorContent"_s),
               {{"bodyContent", bind<&WordMailEditorContent::bodyContent>, "@@:"}});
    addMethods(rt::defineClass(u"OLWordMailEditor"_s),
               {{"editor", bind<&WordMailEditor::editor>, "@@:"},
                {"editorHost", bind<&WordMailEditor::editorHost>, "@@:"},
                {"editorContent", bind<&WordMailEditor::editorContent>, "@@:"},
                {"displayHTMLContent:readOnly:", bind<&WordMailEditor::displayHTMLContent>, "v@:@B"},
                {"displayHTMLContent:readOnly:signatureEditor:",
                 bind<&WordMailEditor::displayHTMLContentWithSignature>, "v@:@BB"},
                {"displayHTMLContent:readOnly:signatureEditor:activateEditor:",
                 bind<&WordMailEditor::displayHTMLContentAndActivate>, "v@:@BBB"}});
    addMethods(rt::defineClass(u"DOMElement"_s),
               {{"outerHTML", bind<&DomElement::outerHTML>, "@@:"},
                {"innerHTML", bind<&DomElement::innerHTML>, "@@:"},
                {"setInnerHTML:", bind<&DomElement::setInnerHTML>, "v@:@"}});
    addMethods(rt::defineClass(u"DOMDocument"_s),
               {{"documentElement", bind<&DomDocument::documentElement>, "@@:"},
                {"getElementsByTagName:", bind<&DomDocument::getElementsByTagName>, "@@:@"}});
    addMethods(rt::defineClass(u"WebFrame"_s), {{"DOMDocument", bind<&WebFrame::document>, "@@:"}});
}

} // namespace mailhost
