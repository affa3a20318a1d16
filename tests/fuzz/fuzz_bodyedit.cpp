// A user edits the body: the changes are written into the original HTML, and all of them can be undone.
#include "platform/Literals.h"
#include "standin/mailhost/model/BodyText.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QRegularExpression>
#include <QTextCursor>
#include <QTextDocument>

using namespace fuzz;

namespace {

const QString word = u"Zyzzyva"_s;
const QString bookmark = u"<a name=\"MacVlBookmarkBegin\"></a>"_s;

// Whether the HTML is undamaged, so that the toolkit shows all of it.
bool isSimple(const QString &html) {
    static const QRegularExpression whole(QRegularExpression::anchoredPattern(
        u"([^<&]|&[a-z]+;|</?(p|b|i|u|div|br|hr|ul|ol|li|span|html|body|pre|h1)>|"
        "<a name=\"MacVlBookmark(Begin|End)\"></a>)*"_s));
    return whole.match(html).hasMatch();
}

// Makes one change at a position of the text.
void change(QTextDocument &document, quint8 place, quint8 action) {
    QTextCursor cursor(&document);
    cursor.setPosition(document.characterCount() * place / 256);
    switch (action % 4) {
    case 0:
        cursor.insertText(word);
        break;
    case 1:
        cursor.insertBlock();
        break;
    case 2:
        cursor.deleteChar();
        break;
    default:
        cursor.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        cursor.mergeCharFormat(bold);
    }
}

void open(const QByteArray &bytes) {
    Pieces pieces(bytes);
    const QByteArray changes = pieces.next();
    const QString html = u""_s + QString::fromUtf8(pieces.rest()); // never null
    QTextDocument document;
    mailhost::BodyText body(&document);
    body.setHtml(html);
    claimSame(body.html(), html, "a body that is not edited comes back unchanged");

    QTextCursor typing(&document);
    typing.setPosition((document.characterCount() - 1) * (changes.isEmpty() ? 1 : quint8(changes[0])) / 256);
    typing.insertText(word);
    const QString typed = body.html();
    if (!typed.contains(word))
        claimSame(typed, html, "a typed word is in the body");
    claim(!isSimple(html) || typed.count(bookmark) == html.count(bookmark),
          "typing neither loses nor repeats a bookmark");
    QTextDocument shown;
    mailhost::BodyText again(&shown);
    again.setHtml(typed);
    claim(!isSimple(html) || shown.toPlainText().contains(word), "a typed word is shown");
    document.undo();
    claimSame(body.html(), html, "undoing restores the body");

    for (qsizetype i = 1; i + 1 < changes.size() && i < 12; i += 2) {
        change(document, quint8(changes[i]), quint8(changes[i + 1]));
        claim(!body.html().isNull(), "there is always a body");
    }
    while (document.isUndoAvailable())
        document.undo();
    claimSame(body.html(), html, "undoing everything restores the body");
}

const AddFuzzTarget target("bodyedit", open);

} // namespace
