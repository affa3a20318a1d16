// The body editors as the host's object model shows them.
#pragma once

#include "platform/runtime/Object.h"

#include <QPointer>
#include <QWidget>

namespace mailhost {

// A widget that shows a body.
class BodyAccess {
public:
    virtual ~BodyAccess() = default;
    [[nodiscard]] virtual QString bodyHtml() const = 0;
    virtual void showBodyHtml(const QString &html) = 0;
    virtual void setBodyReadOnly(bool readOnly) = 0;
    virtual void focusBody() = 0;
};

// A reference to a body widget that turns to none with it.
class BodyReference {
public:
    BodyReference(QWidget *widget, BodyAccess *access)
        : m_widget(widget)
        , m_access(access) {}
    [[nodiscard]] BodyAccess *get() const { return m_widget ? m_access : nullptr; }
    [[nodiscard]] QWidget *widget() const { return m_widget; }

private:
    QPointer<QWidget> m_widget;
    BodyAccess *m_access;
};

class WordMailEditorContent : public rt::Object {
public:
    explicit WordMailEditorContent(BodyReference body);
    [[nodiscard]] QString bodyContent() const;

private:
    BodyReference m_body;
};

// The Word-style body editor of the newer generation.
class WordMailEditor : public rt::Object {
public:
    explicit WordMailEditor(BodyReference body);
    [[nodiscard]] rt::Object *editorContent() { return &m_content; }
    [[nodiscard]] rt::Object *editor() { return this; }
    [[nodiscard]] QWidget *editorHost() const { return m_body.widget(); }
    void displayHTMLContent(const QString &html, bool readOnly);
    void displayHTMLContentWithSignature(const QString &html, bool readOnly, bool signatureEditor);
    void displayHTMLContentAndActivate(const QString &html, bool readOnly, bool signatureEditor,
                                       bool activate);

private:
    BodyReference m_body;
    WordMailEditorContent m_content;
};

// The web document of the older generation. Each call reads or writes the body as it is then.
class DomElement : public rt::Object {
public:
    DomElement(BodyReference body, QString tagName);
    [[nodiscard]] QString outerHTML() const; // of the document element only
    [[nodiscard]] QString innerHTML() const;
    void setInnerHTML(const QString &html);

private:
    BodyReference m_body;
    QString m_tagName;
};

class DomDocument : public rt::Object {
public:
    explicit DomDocument(BodyReference body);
    [[nodiscard]] rt::Object *documentElement();
    [[nodiscard]] QVariantList getElementsByTagName(const QString &tagName); // the first one only

private:
    BodyReference m_body;
};

class WebFrame : public rt::Object {
public:
    explicit WebFrame(BodyReference body);
    [[nodiscard]] rt::Object *document() { return &m_document; }

private:
    DomDocument m_document;
};

void defineBodyClasses();

} // namespace mailhost
