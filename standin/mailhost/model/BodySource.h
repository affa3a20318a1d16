// The HTML of a body, split into pieces with known positions.
#pragma once

#include <QList>
#include <QString>

namespace mailhost {

// A piece of HTML text from `begin` up to, not including, `end` (UTF-16 units).
struct BodyPiece {
    enum class Kind {
        Solid, // one character that a reader sees, a line break, an image, or a bookmark
        Space, // white space between
        Markup // a tag, a comment, or an invisible element
    };
    Kind kind = Kind::Markup;
    qsizetype begin = 0;
    qsizetype end = 0;
    QString tag = {};     // lower-case name; empty for comments and text
    QChar character = {}; // of a solid piece, as QTextDocument shows it
    bool bookmark = false;
    bool closing = false; // of a tag
};

// Bookmarks are empty named anchors. QTextDocument cannot represent them, so each is replaced by one of these
// characters and restored afterwards.
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
    // The markup for a new paragraph at that position: the tags that close and reopen the paragraph, or a
    // line break.
    [[nodiscard]] QString paragraphBreakAt(qsizetype position) const;
    // The position for the first text in an empty body.
    [[nodiscard]] qsizetype emptyInsertPosition() const;

private:
    void add(const BodyPiece &piece);
    void addText(qsizetype begin, qsizetype end);
    // Returns its end; `begin` if the text there is no entity.
    qsizetype addEntity(qsizetype begin);
    bool endsBookmark(qsizetype end);
    // Whether a block begins or ends before the next solid piece in that direction (-1 or 1).
    [[nodiscard]] bool isBesideBlock(qsizetype pieceIndex, int step) const;

    QString m_html;
    QList<BodyPiece> m_pieces;
    QList<BodyPiece> m_solids;
    int m_bookmarks = 0;
};

[[nodiscard]] bool isBlockTag(const QString &tag);
// White space that HTML collapses.
[[nodiscard]] bool isHtmlSpace(QChar c);
// The HTML as a whole document: adds html and body tags if it has no "</body>", and writes an existing end
// tag in lower case.
[[nodiscard]] QString asHtmlDocument(const QString &html);

} // namespace mailhost
