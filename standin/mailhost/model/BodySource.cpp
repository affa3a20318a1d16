#include "standin/mailhost/model/BodySource.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlElement.h"
#include "platform/services/html/HtmlTokenizer.h"

#include <QRegularExpression>
#include <QSet>

namespace mailhost {

namespace {

platform::HtmlElement elementOf(const QString &tag) {
    return platform::HtmlElement::named(tag.toStdString()).element;
}

// Whether a paragraph can be split by repeating its tag.
bool isSplittable(const QString &tag) {
    return tag == u"div" || elementOf(tag).isAny(platform::HtmlElement::Paragraph);
}

// Elements whose content is not text of the body.
bool isRawElement(const QString &tag) {
    using E = platform::HtmlElement;
    return tag == u"xml" || (elementOf(tag).isAny(E::Hidden) && elementOf(tag).isAny(E::RawText));
}

// Whether the tag begins a bookmark: an anchor with a name, without a target and, as found later, without
// content.
bool isBookmarkTag(const QString &text) {
    static const QRegularExpression name(u"\\bname\\s*="_s, QRegularExpression::CaseInsensitiveOption);
    return text.contains(name) && !text.contains(u"href", Qt::CaseInsensitive);
}

bool isLeftOutOfDisplay(const BodyPiece &piece) {
    static const QSet<QString> tags{u"html"_s, u"head"_s, u"body"_s, u"script"_s, u"title"_s,
                                    u"xml"_s,  u"meta"_s, u"link"_s, u"base"_s};
    return piece.tag.isEmpty() || tags.contains(piece.tag);
}

} // namespace

bool isBlockTag(const QString &tag) {
    return elementOf(tag).isAny(platform::HtmlElement::Block | platform::HtmlElement::Table);
}

bool isHtmlSpace(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

QString asHtmlDocument(const QString &html) {
    const QString bodyEnd = u"</body>"_s;
    if (html.contains(bodyEnd))
        return html;
    const qsizetype end = html.lastIndexOf(bodyEnd, -1, Qt::CaseInsensitive);
    if (end >= 0) // the form that body editors write and readers search for
        return html.left(end) + bodyEnd + html.mid(end + bodyEnd.size());
    return u"<html><body>"_s + html + u"</body></html>"_s;
}

BodySource::BodySource(const QString &html)
    : m_html(html) {
    const std::string utf8 = html.toStdString();
    platform::HtmlTokenizer tokenizer(utf8);
    qsizetype position = 0;
    for (platform::HtmlToken token; tokenizer.next(&token);) {
        using Kind = platform::HtmlToken::Kind;
        const QString tag = QString::fromUtf8(token.name.data(), qsizetype(token.name.size())).toLower();
        const bool raw = token.kind == Kind::StartTag && isRawElement(tag);
        std::size_t size = token.source.size();
        if (raw)
            size += tokenizer.takeRawText(token.name).size();
        const qsizetype begin = position;
        position += QString::fromUtf8(token.source.data(), qsizetype(size)).size();
        if (token.kind == Kind::Text)
            addText(begin, position);
        else if (token.kind == Kind::StartTag && tag == u"br")
            addSolid(begin, position, QChar::LineSeparator, tag);
        else if (token.kind == Kind::StartTag && tag == u"img")
            addSolid(begin, position, QChar::ObjectReplacementCharacter, tag);
        else if (token.kind != Kind::EndTag || tag != u"a" || !endsBookmark(position))
            m_pieces.append({BodyPiece::Kind::Markup,
                             false,
                             token.kind == Kind::EndTag,
                             {},
                             begin,
                             position,
                             token.kind == Kind::Other ? QString() : tag});
    }
}

void BodySource::addSolid(qsizetype begin, qsizetype end, QChar character, const QString &tag,
                          bool bookmark) {
    BodyPiece piece{BodyPiece::Kind::Solid, bookmark, false, character, begin, end, tag};
    m_pieces.append(piece);
    m_solids.append(piece);
}

// If the end tag completes an empty anchor, turns the anchor into a bookmark and returns true.
bool BodySource::endsBookmark(qsizetype end) {
    qsizetype start = m_pieces.size() - 1;
    if (start > 0 && m_pieces[start].kind == BodyPiece::Kind::Space)
        --start;
    if (start < 0 || m_bookmarks >= maximumBookmarks)
        return false;
    const BodyPiece opening = m_pieces[start];
    if (opening.kind != BodyPiece::Kind::Markup || opening.closing || opening.tag != u"a" ||
        !isBookmarkTag(textOf(opening)))
        return false;
    m_pieces.resize(start);
    addSolid(opening.begin, end, QChar(char16_t(firstBookmarkCharacter + m_bookmarks++)), opening.tag, true);
    return true;
}

void BodySource::addText(qsizetype begin, qsizetype end) {
    while (begin < end) {
        const qsizetype from = begin;
        if (m_html[from] == u'&') {
            addEntity(begin);
        } else if (!isHtmlSpace(m_html[from])) {
            addSolid(from, ++begin, m_html[from]);
        } else {
            while (begin < end && isHtmlSpace(m_html[begin]))
                ++begin;
            m_pieces.append({BodyPiece::Kind::Space, false, false, {}, from, begin, {}});
        }
    }
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
    const uint code = QString(u'0' + name.mid(1)).toUInt(nullptr, name[1].toLower() == u'x' ? 16 : 10);
    if (code < 0x10000 && isHtmlSpace(QChar(char16_t(code)))) {
        m_pieces.append({BodyPiece::Kind::Space, false, false, {}, begin, position, {}});
    } else if (QChar::requiresSurrogates(char32_t(code))) {
        addSolid(begin, position, QChar(QChar::highSurrogate(char32_t(code))));
        addSolid(position, position, QChar(QChar::lowSurrogate(char32_t(code))));
    } else {
        addSolid(begin, position, QChar(char16_t(code)));
    }
}

bool BodySource::isBesideBlock(qsizetype pieceIndex, int step) const {
    for (qsizetype i = pieceIndex + step; i >= 0 && i < m_pieces.size(); i += step) {
        if (m_pieces[i].kind == BodyPiece::Kind::Solid)
            return false;
        if (isBlockTag(m_pieces[i].tag))
            return true;
    }
    return false;
}

QString BodySource::displayHtml() const {
    QString shown;
    QString waiting;                 // bookmarks to insert before the next character
    qsizetype lastCharacterEnd = -1; // in `shown`
    for (qsizetype i = 0; i < m_pieces.size(); ++i) {
        const BodyPiece &piece = m_pieces[i];
        if (piece.kind == BodyPiece::Kind::Space) {
            shown += textOf(piece);
        } else if (piece.kind == BodyPiece::Kind::Markup) {
            if (!isLeftOutOfDisplay(piece))
                shown += textOf(piece);
        } else if (piece.bookmark && isBesideBlock(i, -1) && isBesideBlock(i, 1)) {
            // Between two paragraphs a bookmark would show as an empty line, so it moves to the end of the
            // block that it ends or to the beginning of the block that it begins.
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
        if (piece.kind != BodyPiece::Kind::Markup || piece.tag.isEmpty() || isRawElement(piece.tag) ||
            elementOf(piece.tag).isAny(platform::HtmlElement::Void))
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
        const bool holdsText = piece.tag == u"body" || isSplittable(piece.tag);
        if (piece.closing && holdsText)
            break;
        if (holdsText || (piece.closing && piece.tag == u"head"))
            position = piece.end;
    }
    return position;
}

} // namespace mailhost
