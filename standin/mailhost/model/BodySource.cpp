#include "standin/mailhost/model/BodySource.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlElement.h"
#include "platform/services/html/HtmlTokenizer.h"

#include <QCache>
#include <QRegularExpression>
#include <QSet>
#include <QTextDocumentFragment>

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

// What QTextDocument shows for the entity; empty for white space that HTML collapses.
QString shownFor(const QString &entity) {
    static QCache<QString, QString> known(1000);
    if (!known.contains(entity))
        known.insert(entity, new QString(QTextDocumentFragment::fromHtml(entity).toRawText()));
    return *known.object(entity);
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
        const bool starts = token.kind == Kind::StartTag;
        BodyPiece piece{.begin = begin, .end = position, .tag = token.kind == Kind::Other ? QString() : tag};
        if (token.kind == Kind::Text) {
            addText(begin, position);
        } else if (starts && (tag == u"br" || tag == u"img")) {
            piece.kind = BodyPiece::Kind::Solid;
            piece.character = tag == u"br" ? QChar::LineSeparator : QChar::ObjectReplacementCharacter;
            add(piece);
        } else if (token.kind != Kind::EndTag || tag != u"a" || !endsBookmark(position)) {
            piece.closing = token.kind == Kind::EndTag;
            add(piece);
        }
    }
}

void BodySource::add(const BodyPiece &piece) {
    m_pieces.append(piece);
    if (piece.kind == BodyPiece::Kind::Solid)
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
    add({.kind = BodyPiece::Kind::Solid,
         .begin = opening.begin,
         .end = end,
         .tag = opening.tag,
         .character = char16_t(firstBookmarkCharacter + m_bookmarks++),
         .bookmark = true});
    return true;
}

void BodySource::addText(qsizetype begin, qsizetype end) {
    while (begin < end) {
        const qsizetype from = begin;
        begin = addEntity(from);
        if (begin > from)
            continue;
        while (begin < end && isHtmlSpace(m_html[begin]))
            ++begin;
        if (begin > from)
            add({.kind = BodyPiece::Kind::Space, .begin = from, .end = begin});
        else
            add({.kind = BodyPiece::Kind::Solid, .begin = from, .end = ++begin, .character = m_html[from]});
    }
}

qsizetype BodySource::addEntity(qsizetype begin) {
    static const QRegularExpression entity(
        u"\\G&(#[0-9]{1,7}|#[xX][0-9a-fA-F]{1,6}|[A-Za-z][A-Za-z0-9]{1,31});"_s);
    if (m_html[begin] != u'&')
        return begin;
    const QRegularExpressionMatch match = entity.match(m_html, begin);
    const QString shown = match.hasMatch() ? shownFor(match.captured()) : QString();
    if (!match.hasMatch() || shown == match.captured()) // is shown as it is written
        return begin;
    const qsizetype end = match.capturedEnd();
    if (shown.isEmpty())
        add({.kind = BodyPiece::Kind::Space, .begin = begin, .end = end});
    for (qsizetype i = 0; i < shown.size(); ++i) // one piece for each unit
        add({.kind = BodyPiece::Kind::Solid,
             .begin = i == 0 ? begin : end,
             .end = end,
             .character = shown[i]});
    return end;
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
            else if (!piece.tag.isEmpty() || piece.character == QChar::Nbsp)
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
