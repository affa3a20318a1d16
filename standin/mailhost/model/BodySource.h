// The HTML of a body, cut into pieces whose places in the text are known.
#pragma once

#include <QList>
#include <QString>

namespace mailhost {

// A piece of HTML text from `begin` up to, not including, `end` (UTF-16 units).
struct BodyPiece {
    enum class Kind {
        Solid, // one character that a reader sees, a line break, an image, or a bookmark
        Space, // white space between
        Markup // a tag, a comment, or an element that shows nothing
    };
    Kind kind = Kind::Markup;
    bool bookmark = false;
    bool closing = false; // of a tag
    QChar character;      // of a solid piece; U+0000: an entity whose character is not known here
    qsizetype begin = 0;
    qsizetype end = 0;
    QString tag; // lower-case name; empty for comments and text
};

// Bookmarks are empty named anchors. QTextDocument has no place for them, so that they are carried through it
// as these characters, one for each, and turned back.
constexpr char16_t firstBookmarkCharacter = u'\uE000';
constexpr int maximumBookmarks = 4096;

class BodySource {
public:
    BodySource() = default;
    explicit BodySource(const QString &html);

    [[nodiscard]] const QString &html() const { return m_html; }
    [[nodiscard]] const QList<BodyPiece> &pieces() const { return m_pieces; }
    // The pieces of kind Solid, in order.
    [[nodiscard]] const QList<BodyPiece> &solids() const { return m_solids; }
    [[nodiscard]] QString textOf(const BodyPiece &piece) const {
        return m_html.mid(piece.begin, piece.end - piece.begin);
    }
    // HTML for QTextDocument: the same solids in the same order, bookmarks as their characters.
    [[nodiscard]] QString displayHtml() const;
    // What begins a new paragraph at that place: the tags that close and open the paragraph again, or a line
    // break.
    [[nodiscard]] QString paragraphBreakAt(qsizetype position) const;
    // Where text goes into a body that shows nothing.
    [[nodiscard]] qsizetype emptyInsertPosition() const;

private:
    void addText(qsizetype begin, qsizetype end);
    void addSolid(qsizetype begin, qsizetype end, QChar character, const QString &tag = {},
                  bool bookmark = false);
    void addEntity(qsizetype &position);
    bool endsBookmark(qsizetype end);
    // A block begins or ends before the next solid piece in that direction (-1 or 1).
    [[nodiscard]] bool isBesideBlock(qsizetype pieceIndex, int step) const;

    QString m_html;
    QList<BodyPiece> m_pieces;
    QList<BodyPiece> m_solids;
    int m_bookmarks = 0;
};

[[nodiscard]] bool isBlockTag(const QString &tag);
// White space that HTML collapses.
[[nodiscard]] bool isHtmlSpace(QChar c);
// The HTML as a whole document: with html and body tags around it when it has no "</body>"; one in other
// letters becomes that.
[[nodiscard]] QString asHtmlDocument(const QString &html);

} // namespace mailhost
