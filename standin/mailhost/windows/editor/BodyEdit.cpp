#include "standin/mailhost/windows/editor/BodyEdit.h"

#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextList>
#include <QToolButton>
#include <QVBoxLayout>

namespace mailhost {

namespace {

class BodyTextEdit : public QTextEdit {
public:
    BodyText *body = nullptr;

protected:
    // A bookmark has no width: erasing skips it and takes the next visible character.
    void keyPressEvent(QKeyEvent *event) override {
        const bool back =
            event->matches(QKeySequence::DeleteStartOfWord) || event->key() == Qt::Key_Backspace;
        const bool forward = event->key() == Qt::Key_Delete;
        if ((back || forward) && body && !isReadOnly() && !textCursor().hasSelection()) {
            QTextCursor cursor = textCursor();
            while (!body->bookmarkAt(cursor.position() - (back ? 1 : 0)).isNull())
                if (!cursor.movePosition(back ? QTextCursor::PreviousCharacter : QTextCursor::NextCharacter))
                    break;
            setTextCursor(cursor);
        }
        QTextEdit::keyPressEvent(event);
    }
    // Pasted text gets the style at the cursor, because styles of other programs seldom fit an invitation.
    void insertFromMimeData(const QMimeData *source) override {
        if (source->hasText())
            textCursor().insertText(source->text());
    }
};

} // namespace

BodyEdit::BodyEdit(BookmarkMangling mangling, QWidget *parent)
    : BodyAccess(parent)
    , m_mangling(mangling) {
    auto *edit = new BodyTextEdit;
    m_edit = edit;
    m_edit->setObjectName(controls::bodyEditor);
    m_edit->setAccessibleName(tr("Notes"));
    m_edit->setTabChangesFocus(true);
    m_edit->setFrameShape(QFrame::NoFrame);
    m_edit->document()->setDocumentMargin(14);
    m_bar = new QWidget;
    buildButtons();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    layout->addWidget(m_edit, 1);
    m_text = new BodyText(m_edit->document(), this);
    edit->body = m_text;
    connect(m_text, &BodyText::edited, this, &BodyEdit::edited);
    connect(m_edit, &QTextEdit::cursorPositionChanged, this, &BodyEdit::showStyle);
    connect(m_edit, &QTextEdit::currentCharFormatChanged, this, &BodyEdit::showStyle);
    setFocusProxy(m_edit);
}

// `inFont` shows on the button what it does.
QToolButton *BodyEdit::addButton(const QString &text, const QString &what, const QKeySequence &keys,
                                 void (QFont::*inFont)(bool), const std::function<void(bool on)> &operation) {
    auto *button = new QToolButton(m_bar);
    button->setText(text);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setAccessibleName(what);
    button->setToolTip(what + u" ("_s + keys.toString(QKeySequence::NativeText) + u')');
    button->setShortcut(keys);
    button->setFocusPolicy(Qt::TabFocus);
    button->setFixedSize(28, 26);
    QFont font; // the parent supplies its other properties
    (font.*inFont)(true);
    button->setFont(font);
    m_bar->layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, operation](bool on) {
        operation(on);
        m_edit->setFocus();
        showStyle();
    });
    return button;
}

void BodyEdit::buildButtons() {
    auto *row = new QHBoxLayout(m_bar);
    row->setContentsMargins(12, 3, 12, 3);
    row->setSpacing(2);
    m_bold = addButton(u"B"_s, tr("Bold"), QKeySequence::Bold, &QFont::setBold,
                       [this](bool on) { m_edit->setFontWeight(on ? QFont::Bold : QFont::Normal); });
    m_italic = addButton(u"I"_s, tr("Italic"), QKeySequence::Italic, &QFont::setItalic,
                         [this](bool on) { m_edit->setFontItalic(on); });
    m_underline = addButton(u"U"_s, tr("Underline"), QKeySequence::Underline, &QFont::setUnderline,
                            [this](bool on) { m_edit->setFontUnderline(on); });
    m_list = addButton(u"•"_s, tr("List"), QKeySequence(tr("Ctrl+Shift+L")), &QFont::setBold,
                       [this](bool) { toggleList(); });
    row->addStretch(1);
}

void BodyEdit::toggleList() {
    QTextCursor cursor = m_edit->textCursor();
    cursor.beginEditBlock();
    if (QTextList *list = cursor.currentList()) {
        list->remove(cursor.block());
        QTextBlockFormat format = cursor.blockFormat();
        format.setIndent(0);
        cursor.setBlockFormat(format);
    } else {
        cursor.createList(QTextListFormat::ListDisc);
    }
    cursor.endEditBlock();
}

void BodyEdit::showStyle() {
    const QTextCharFormat format = m_edit->currentCharFormat();
    m_bold->setChecked(format.fontWeight() >= QFont::DemiBold);
    m_italic->setChecked(format.fontItalic());
    m_underline->setChecked(format.fontUnderline());
    m_list->setChecked(m_edit->textCursor().currentList() != nullptr);
}

void BodyEdit::showBodyHtml(const QString &html) {
    load(mangled(html, m_mangling));
}

void BodyEdit::load(const QString &html) {
    m_text->setHtml(asHtmlDocument(html));
    m_edit->moveCursor(QTextCursor::Start);
}

void BodyEdit::setBodyReadOnly(bool readOnly) {
    m_edit->setReadOnly(readOnly);
    m_bar->setEnabled(!readOnly);
}

ComposeView::ComposeView(BookmarkMangling mangling, QWidget *parent)
    : BodyEdit(mangling, parent)
    , rt::Object(rt::classNamed(u"ComposeView"_s))
    , m_frame(u"WebFrame"_s, this) {}

void defineComposeViewClass() {
    addMethods(rt::defineClass(u"ComposeView"_s, rt::defineClass(u"NSView"_s)),
               {{"mainFrame", bind<&ComposeView::mainFrame>, "@@:"}});
}

} // namespace mailhost
