// The editor of an appointment's body.
#pragma once

#include "standin/mailhost/model/BodyAccess.h"
#include "standin/mailhost/model/BodyText.h"
#include "standin/mailhost/model/HostOptions.h"

#include <QTextEdit>
#include <functional>

class QToolButton;

namespace mailhost {

// Rich text with a row of style buttons. Keeps the given text as HTML (see BodyText).
class BodyEdit : public BodyAccess {
    Q_OBJECT
public:
    explicit BodyEdit(BookmarkMangling mangling, QWidget *parent = nullptr);

    // The body as a whole HTML document.
    [[nodiscard]] QString bodyHtml() const override { return m_text->html(); }
    // Replaces the body with the text of another program. Counts as a change, and may change the bookmarks
    // (see BookmarkMangling).
    void showBodyHtml(const QString &html) override;
    void setBodyReadOnly(bool readOnly) override;
    void focusBody() override { m_edit->setFocus(); }

    // Shows the stored body. The text of bodyHtml() is then asHtmlDocument(html).
    void load(const QString &html);
    [[nodiscard]] QTextEdit *textEdit() const { return m_edit; }

Q_SIGNALS:
    void edited();

private:
    QToolButton *addButton(const QString &text, const QString &what, const QKeySequence &keys,
                           void (QFont::*inFont)(bool), const std::function<void(bool on)> &operation);
    void buildButtons();
    void toggleList();
    void showStyle();

    BookmarkMangling m_mangling;
    QTextEdit *m_edit;
    QWidget *m_bar;
    QToolButton *m_bold = nullptr;
    QToolButton *m_italic = nullptr;
    QToolButton *m_underline = nullptr;
    QToolButton *m_list = nullptr;
    BodyText *m_text;
};

// The body editor of the older generation, based on a web document.
class ComposeView : public BodyEdit, public rt::Object {
    Q_OBJECT
public:
    explicit ComposeView(BookmarkMangling mangling, QWidget *parent = nullptr);
    [[nodiscard]] rt::Object *mainFrame() { return &m_frame; }

private:
    BodyObject m_frame;
};

void defineComposeViewClass();

} // namespace mailhost
