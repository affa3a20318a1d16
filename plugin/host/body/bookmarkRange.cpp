#include "plugin/host/body/bookmarkRange.h"

#include "plugin/host/body/bodyMarkup.h"

#include <QRegularExpression>
#include <QStringView>

namespace {

// The host puts these tags around a block when it rewrites a body with fonts.
const QString fontTag = u"<font size="_s;
const QString closedFont = u"@</font>"_s;

struct Edge {
    qsizetype position; // beginning or end of the block
    qsizetype bookmark; // position of the bookmark or marker that marks it
};

// The last position of the part, which must contain a "<"; ignores case. The toolkit's search folds every
// character of the body and takes twelve times as long. Here the "<" and the last ">" of the part are looked
// for, in strides that the compiler turns into vector instructions: half the time of a plain loop.
std::optional<qsizetype> lastIndexIn(QStringView text, QStringView part) {
    const qsizetype first = part.indexOf(u'<');
    const qsizetype last = qMax(first, part.lastIndexOf(u'>'));
    const QChar ending = part[last]; // read in the loop, it costs a fifth more time
    const auto mayBeAt = [=](qsizetype at) {
        return int(text[at + first] == u'<') & int(text[at + last] == ending);
    };
    constexpr qsizetype stride = 64;
    for (qsizetype end = text.size() - part.size() + 1; end > 0; end -= stride) {
        const qsizetype start = qMax(end - stride, qsizetype(0));
        int candidates = 0;
        for (qsizetype at = start; at < end; ++at)
            candidates += mayBeAt(at);
        for (qsizetype at = end - 1; candidates > 0 && at >= start; --at)
            if (mayBeAt(at) && text.sliced(at, part.size()).compare(part, Qt::CaseInsensitive) == 0)
                return at;
    }
    return {};
}

// Whether the HTML contains only blanks (possibly written as entities by the host) and formatting tags, so no
// content of the user.
bool isOnlyFormatting(QStringView html) {
    static const QRegularExpression formatting(
        u"\\A(?:\\s|&nbsp;|</?(?i:b|br|div|font|i|p|span|u)(?!\\p{L})[^>]*>)*+\\z"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    return formatting.match(html).hasMatch();
}

std::optional<Edge> startOfBlock(const QString &body, const QString &headMarker, const QString &begin) {
    if (const auto marker = lastIndexIn(body, headMarker))
        return Edge{*marker, *marker};
    const qsizetype bookmark = body.indexOf(begin);
    if (bookmark < 0)
        return {};
    const QStringView before = QStringView(body).first(bookmark);
    const auto font = lastIndexIn(before, fontTag);
    if (!font || !isOnlyFormatting(before.sliced(*font)))
        return {};
    return Edge{*font, bookmark};
}

std::optional<Edge> endOfBlock(const QString &body, const QString &tailMarker, const QString &end) {
    if (const auto marker = lastIndexIn(body, tailMarker))
        return Edge{*marker + tailMarker.size(), *marker};
    const auto closed = lastIndexIn(body, closedFont);
    if (!closed)
        return {};
    const qsizetype behind = lastIndexIn(body, end).value_or(*closed) + end.size();
    if (behind <= *closed && !isOnlyFormatting(QStringView(body).sliced(behind, *closed - behind)))
        return {};
    return Edge{*closed + closedFont.size(), *closed};
}

// From the last begin bookmark that is followed by an end bookmark to the end of the last end bookmark.
std::optional<BodyRange> lastProperPair(const QString &body, const BookmarkTexts &texts) {
    const auto end = lastIndexIn(body, texts.end);
    const auto begin = end ? lastIndexIn(QStringView(body).first(*end), texts.begin) : std::nullopt;
    if (!begin)
        return {};
    return BodyRange{*begin, *end + texts.end.size() - *begin};
}

} // namespace

std::optional<BookmarkTexts> bookmarksIn(const QString &body) {
    for (const BookmarkTexts &texts : {BookmarkTexts{kvl_BeginBookmark, kvl_EndBookmark},
                                       BookmarkTexts{kvl_BeginBookmarkEx, kvl_EndBookmarkEx}})
        if (body.contains(texts.begin) && body.contains(texts.end))
            return texts;
    return {};
}

std::optional<BodyRange> findBlock(const QString &body, const BookmarkTexts &texts, const QString &headMarker,
                                   const QString &tailMarker) {
    const std::optional<Edge> start = startOfBlock(body, headMarker, texts.begin);
    const std::optional<Edge> end = endOfBlock(body, tailMarker, texts.end);
    if (!start || !end)
        return {};
    if (end->bookmark >= start->bookmark)
        return BodyRange{start->position, end->position - start->position};
    if (const std::optional<BodyRange> pair = lastProperPair(body, texts))
        return pair;
    const qsizetype bodyEnd = body.lastIndexOf(bodyEndTag);
    return BodyRange{bodyEnd < 0 ? body.size() : bodyEnd, 0};
}

std::optional<BodyRange> firstPair(const QString &body, const BookmarkTexts &texts) {
    qsizetype begin = body.indexOf(texts.begin);
    const qsizetype end = body.indexOf(texts.end, begin);
    if (end < 0)
        return {};
    if (body.indexOf(texts.end) < end)
        begin = QStringView(body).first(end).lastIndexOf(texts.begin);
    return BodyRange{begin, end + texts.end.size() - begin};
}
