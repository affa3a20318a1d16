// The body editors in the host's object model. After their widget is deleted they have no body.
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

class WordMailEditorContent : public rt::Object {
public:
    explicit WordMailEditorContent(BodyAccess *body);
    [[nodiscard]] QString bodyContent() const { return m_body ? m_body->bodyHtml() : QString(); }

private:
    QPointer<BodyAccess> m_body;
};

// The Word-style body editor of the newer generation.
class WordMailEditor : public rt::Object {
public:
    explicit WordMailEditor(BodyAccess *body);
    [[nodiscard]] rt::Object *editorContent() { return &m_content; }
    [[nodiscard]] rt::Object *editor() { return this; }
    [[nodiscard]] QWidget *editorHost() const { return m_body; }
    void displayHTMLContent(const QString &html, bool readOnly);
    void displayHTMLContentWithSignature(const QString &html, bool readOnly, bool) {
        displayHTMLContent(html, readOnly);
    }
    void displayHTMLContentAndActivate(const QString &html, bool readOnly, bool signatureEditor,
                                       bool activate);

private:
    QPointer<BodyAccess> m_body;
    WordMailEditorContent m_content;
};

// The web document of the older generation. Each call reads or writes the present body.
class DomElement : public rt::Object {
public:
    DomElement(BodyAccess *body, QString tagName);
    [[nodiscard]] QString outerHTML() const; // of the document element only
    [[nodiscard]] QString innerHTML() const;
    void setInnerHTML(const QString &html);

private:
    QPointer<BodyAccess> m_body;
    QString m_tagName;
};

class DomDocument : public rt::Object {
public:
    explicit DomDocument(BodyAccess *body);
    [[nodiscard]] rt::Object *documentElement();
    [[nodiscard]] QVariantList getElementsByTagName(const QString &tagName); // the first one only

private:
    QPointer<BodyAccess> m_body;
};

class WebFrame : public rt::Object {
public:
    explicit WebFrame(BodyAccess *body);
    [[nodiscard]] rt::Object *document() { return &m_document; }

private:
    DomDocument m_document;
};

void defineBodyClasses();

} // namespace mailhost
