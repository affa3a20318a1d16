#include "standin/mailhost/model/BodySource.h"

#include "platform/Literals.h"

#include <QRegularExpression>
#include <QSet>

namespace mailhost {

namespace {

const QSet<QString> &blockTags() {
    static const QSet<QString> tags{u"p"_s,  u"div"_s,        u"li"_s,  u"ul"_s,    u"ol"_s,
                                    u"h1"_s, u"h2"_s,         u"h3"_s,  u"h4"_s,    u"h5"_s,
                                    u"h6"_s, u"hr"_s,         u"td"_s,  u"table"_s, u"tr"_s,
                                    u"th"_s, u"blockquote"_s, u"pre"_s, u"dl"_s,    u"dd"_s};
    return tags;
}

// A paragraph that may be ended and begun again by repeating its tag.
bool isSplittable(const QString &tag) {
    static const QSet<QString> tags{u"p"_s,  u"div"_s, u"li"_s, u"h1"_s, u"h2"_s,
                                    u"h3"_s, u"h4"_s,  u"h5"_s, u"h6"_s};
    return tags.contains(tag);
}

bool isVoidTag(const QString &tag) {
    static const QSet<QString> tags{u"br"_s,   u"img"_s,   u"hr"_s,  u"meta"_s,
                                    u"link"_s, u"input"_s, u"col"_s, u"base"_s};
    return tags.contains(tag);
}

// Elements whose content is not text of the body.
bool isRawElement(const QString &tag) {
    return tag == u"script" || tag == u"style" || tag == u"title" || tag == u"xml";
}

bool isLeftOutOfDisplay(const BodyPiece &piece) {
    static const QSet<QString> tags{u"html"_s, u"head"_s, u"body"_s, u"script"_s, u"title"_s,
                                    u"xml"_s,  u"meta"_s, u"link"_s, u"base"_s};
    return piece.tag.isEmpty() || tags.contains(piece.tag);
}

} // namespace

bool isBlockTag(const QString &tag) {
    return blockTags().contains(tag);
}

bool isHtmlSpace(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

QString asHtmlDocument(const QString &html) {
    const QString bodyEnd = u"</body>"_s;
    if (html.contains(bodyEnd))
        return html;
    const qsizetype end = html.lastIndexOf(bodyEnd, -1, Qt::CaseInsensitive);
    if (end >= 0) // as body editors write it, and as those who read from them look for it
        return html.left(end) + bodyEnd + html.mid(end + bodyEnd.size());
    return u"<html><body>"_s + html + u"</body></html>"_s;
}

BodySource::BodySource(const QString &html)
    : m_html(html) {
    qsizetype position = 0;
    while (position < m_html.size()) {
        const bool tag = m_html[position] == u'<' && position + 1 < m_html.size() &&
                         (m_html[position + 1].isLetter() || u"/!?"_s.contains(m_html[position + 1]));
        if (tag)
            readTag(position);
        else
            readText(position);
    }
}

qsizetype BodySource::tagEnd(qsizetype position) const {
    QChar quote;
    for (qsizetype i = position + 1; i < m_html.size(); ++i) {
        const QChar c = m_html[i];
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if ((c == u'"' || c == u'\'') && m_html[i - 1] == u'=') {
            quote = c;
        } else if (c == u'>') {
            return i + 1;
        }
    }
    return m_html.size();
}

void BodySource::addSolid(qsizetype begin, qsizetype end, QChar character, const QString &tag,
                          bool bookmark) {
    BodyPiece piece{BodyPiece::Kind::Solid, bookmark, false, character, begin, end, tag};
    m_pieces.append(piece);
    m_solids.append(piece);
}

void BodySource::readTag(qsizetype &position) {
    const qsizetype begin = position;
    if (QStringView(m_html).mid(begin).startsWith(u"<!--")) {
        const qsizetype close = m_html.indexOf(u"-->", begin + 4);
        position = close < 0 ? m_html.size() : close + 3;
        m_pieces.append({BodyPiece::Kind::Markup, false, false, {}, begin, position, {}});
        return;
    }
    position = tagEnd(begin);
    const bool closing = m_html[begin + 1] == u'/';
    qsizetype nameEnd = begin + (closing ? 2 : 1);
    while (nameEnd < position && (m_html[nameEnd].isLetterOrNumber() || m_html[nameEnd] == u':'))
        ++nameEnd;
    const qsizetype nameBegin = begin + (closing ? 2 : 1);
    const QString tag = m_html.mid(nameBegin, nameEnd - nameBegin).toLower();
    if (tag == u"br" && !closing)
        return addSolid(begin, position, QChar::LineSeparator, tag);
    if (tag == u"img" && !closing)
        return addSolid(begin, position, QChar::ObjectReplacementCharacter, tag);
    if (tag == u"a" && !closing && m_bookmarks < maximumBookmarks) {
        static const QRegularExpression empty(u"\\G<a\\s[^>]*\\bname\\s*=[^>]*>\\s*</a\\s*>"_s,
                                              QRegularExpression::CaseInsensitiveOption);
        const QRegularExpressionMatch match = empty.match(m_html, begin);
        if (match.hasMatch() && !match.captured().contains(u"href", Qt::CaseInsensitive)) {
            position = match.capturedEnd();
            return addSolid(begin, position, QChar(char16_t(firstBookmarkCharacter + m_bookmarks++)), tag,
                            true);
        }
    }
    if (isRawElement(tag) && !closing) {
        const qsizetype close = m_html.indexOf(u"</"_s + tag, position, Qt::CaseInsensitive);
        position = close < 0 ? m_html.size() : tagEnd(close);
    }
    m_pieces.append({BodyPiece::Kind::Markup, false, closing, {}, begin, position, tag});
}

void BodySource::addEntity(qsizetype &position) {
    static const QRegularExpression entity(
        u"\\G&(#[0-9]{1,7}|#[xX][0-9a-fA-F]{1,6}|[A-Za-z][A-Za-z0-9]{1,31});"_s);
    const QRegularExpressionMatch match = entity.match(m_html, position);
    const qsizetype begin = position;
    position = match.hasMatch() ? match.capturedEnd() : position + 1;
    if (!match.hasMatch())
        return addSolid(begin, position, u'&');
    const QString name = match.captured(1);
    if (!name.startsWith(u'#')) {
        static const QHash<QString, QChar> known{{u"amp"_s, u'&'},   {u"lt"_s, u'<'},
                                                 {u"gt"_s, u'>'},    {u"quot"_s, u'"'},
                                                 {u"apos"_s, u'\''}, {u"nbsp"_s, QChar::Nbsp}};
        return addSolid(begin, position, known.value(name));
    }
    const bool hex = name[1] == u'x' || name[1] == u'X';
    const uint code = hex ? name.mid(2).toUInt(nullptr, 16) : name.mid(1).toUInt();
    if (code < 0x10000 && isHtmlSpace(QChar(char16_t(code)))) {
        m_pieces.append({BodyPiece::Kind::Space, false, false, {}, begin, position, {}});
    } else if (QChar::requiresSurrogates(char32_t(code))) {
        addSolid(begin, position, QChar(QChar::highSurrogate(char32_t(code))));
        addSolid(position, position, QChar(QChar::lowSurrogate(char32_t(code))));
    } else {
        addSolid(begin, position, QChar(char16_t(code)));
    }
}

void BodySource::readText(qsizetype &position) {
    if (m_html[position] == u'&')
        return addEntity(position);
    const qsizetype begin = position;
    if (!isHtmlSpace(m_html[position])) {
        ++position;
        return addSolid(begin, position, m_html[begin]);
    }
    while (position < m_html.size() && isHtmlSpace(m_html[position]))
        ++position;
    m_pieces.append({BodyPiece::Kind::Space, false, false, {}, begin, position, {}});
}

bool BodySource::blockBoundaryBefore(qsizetype pieceIndex) const {
    for (qsizetype i = pieceIndex - 1; i >= 0 && m_pieces[i].kind != BodyPiece::Kind::Solid; --i)
        if (isBlockTag(m_pieces[i].tag))
            return true;
    return false;
}

bool BodySource::blockBoundaryAfter(qsizetype pieceIndex) const {
    for (qsizetype i = pieceIndex + 1; i < m_pieces.size() && m_pieces[i].kind != BodyPiece::Kind::Solid; ++i)
        if (isBlockTag(m_pieces[i].tag))
            return true;
    return false;
}

QString BodySource::displayHtml() const {
    QString shown;
    QString waiting;                 // bookmarks that go before the next character
    qsizetype lastCharacterEnd = -1; // in `shown`
    for (qsizetype i = 0; i < m_pieces.size(); ++i) {
        const BodyPiece &piece = m_pieces[i];
        if (piece.kind == BodyPiece::Kind::Space) {
            shown += textOf(piece);
        } else if (piece.kind == BodyPiece::Kind::Markup) {
            if (!isLeftOutOfDisplay(piece))
                shown += textOf(piece);
        } else if (piece.bookmark && blockBoundaryBefore(i) && blockBoundaryAfter(i)) {
            // Between two paragraphs it would show as an empty line: it goes to the end of what it ends, or
            // to the beginning of what it begins.
            const bool ends = textOf(piece).contains(
                QRegularExpression(u"end[\"']?\\s*>"_s, QRegularExpression::CaseInsensitiveOption));
            if (ends && waiting.isEmpty() && lastCharacterEnd >= 0) {
                shown.insert(lastCharacterEnd, piece.character);
                ++lastCharacterEnd;
            } else {
                waiting += piece.character;
            }
        } else {
            shown += waiting;
            waiting.clear();
            if (piece.bookmark)
                shown += piece.character;
            else if (!piece.tag.isEmpty() || piece.character.isNull() || piece.character == QChar::Nbsp)
                shown += textOf(piece);
            else
                shown += QString(piece.character).toHtmlEscaped();
            lastCharacterEnd = shown.size();
        }
    }
    return shown + waiting;
}

QString BodySource::paragraphBreakAt(qsizetype position) const {
    QList<BodyPiece> open;
    for (const BodyPiece &piece : m_pieces) {
        if (piece.end > position)
            break;
        if (piece.kind != BodyPiece::Kind::Markup || piece.tag.isEmpty() || isVoidTag(piece.tag) ||
            isRawElement(piece.tag))
            continue;
        if (!piece.closing) {
            open.append(piece);
            continue;
        }
        for (qsizetype i = open.size() - 1; i >= 0; --i) {
            if (open[i].tag != piece.tag)
                continue;
            open.resize(i);
            break;
        }
    }
    QString closing, opening;
    while (!open.isEmpty()) {
        const BodyPiece piece = open.takeLast();
        if (isBlockTag(piece.tag) && !isSplittable(piece.tag))
            break;
        closing += u"</"_s + piece.tag + u'>';
        opening.prepend(textOf(piece));
        if (isSplittable(piece.tag))
            return closing + opening;
    }
    return u"<br>"_s;
}

qsizetype BodySource::emptyInsertPosition() const {
    qsizetype position = 0;
    for (const BodyPiece &piece : m_pieces) {
        if (piece.kind != BodyPiece::Kind::Markup || piece.tag.isEmpty())
            continue;
        if (!piece.closing && (piece.tag == u"body" || isSplittable(piece.tag)))
            position = piece.end;
        if (piece.closing && (piece.tag == u"body" || isSplittable(piece.tag)))
            break;
        if (piece.closing && piece.tag == u"head")
            position = piece.end;
    }
    return position;
}

} // namespace mailhost
