// The body editors in the host's object model.
#pragma once

#include "platform/runtime/Object.h"

#include <QPointer>
#include <QWidget>

namespace mailhost {

// A widget that shows a body.
class BodyAccess : public QWidget {
public:
    using QWidget::QWidget;
    [[nodiscard]] virtual QString bodyHtml() const = 0;
    virtual void showBodyHtml(const QString &html) = 0;
    virtual void setBodyReadOnly(bool readOnly) = 0;
    virtual void focusBody() = 0;
};

// An object through which other code reads and writes the present body. After the widget is deleted it has no
// body. The newer generation has an "OLWordMailEditor" with its content; the older one has a "WebFrame",
// whose document has elements.
class BodyObject : public rt::Object {
public:
    BodyObject(const QString &className, BodyAccess *body);

    // The Word-style editor.
    [[nodiscard]] rt::Object *editor() { return this; }
    [[nodiscard]] QWidget *editorHost() const { return m_body; }
    [[nodiscard]] rt::Object *editorContent() { return part(u"OLWordMailEditorContent"_s); }
    [[nodiscard]] QString bodyContent() const { return m_body ? m_body->bodyHtml() : QString(); }
    void display(const QString &html, bool readOnly) { displayAndActivate(html, readOnly, false, false); }
    void displayWithSignature(const QString &html, bool readOnly, bool) { display(html, readOnly); }
    void displayAndActivate(const QString &html, bool readOnly, bool signatureEditor, bool activate);

    // The web document.
    [[nodiscard]] rt::Object *document() { return part(u"DOMDocument"_s); }
    [[nodiscard]] rt::Object *documentElement() { return part(u"DOMElement"_s); }
    [[nodiscard]] QVariantList getElementsByTagName(const QString &tagName); // finds the body only
    [[nodiscard]] QString outerHTML() const;                                 // of the document element only
    [[nodiscard]] QString innerHTML() const;                                 // of the body only
    void setInnerHTML(const QString &html);

private:
    // Lives until the next turn of the event loop.
    [[nodiscard]] rt::Object *part(const QString &className) const;
    QPointer<BodyAccess> m_body;
};

void defineBodyClasses();

} // namespace mailhost
