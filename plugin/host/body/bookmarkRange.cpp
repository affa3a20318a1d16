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
// character of the body and takes five times as long.
qsizetype lastIndexIn(QStringView text, QStringView part) {
    const qsizetype mark = part.indexOf(u'<');
    for (qsizetype at = text.size() - part.size(); at >= 0; --at)
        if (text[at + mark] == u'<' && text.sliced(at, part.size()).compare(part, Qt::CaseInsensitive) == 0)
            return at;
    return -1;
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
    const qsizetype marker = lastIndexIn(body, headMarker);
    if (marker >= 0)
        return Edge{marker, marker};
    const qsizetype bookmark = body.indexOf(begin);
    if (bookmark < 0)
        return {};
    const QStringView before = QStringView(body).first(bookmark);
    const qsizetype font = lastIndexIn(before, fontTag);
    if (font < 0 || !isOnlyFormatting(before.sliced(font)))
        return {};
    return Edge{font, bookmark};
}

std::optional<Edge> endOfBlock(const QString &body, const QString &tailMarker, const QString &end) {
    const qsizetype marker = lastIndexIn(body, tailMarker);
    if (marker >= 0)
        return Edge{marker + tailMarker.size(), marker};
    const qsizetype closed = lastIndexIn(body, closedFont);
    if (closed < 0)
        return {};
    const qsizetype bookmark = lastIndexIn(body, end);
    const qsizetype behind = bookmark + end.size();
    if (bookmark >= 0 && behind <= closed &&
        !isOnlyFormatting(QStringView(body).sliced(behind, closed - behind)))
        return {};
    return Edge{closed + closedFont.size(), closed};
}

} // namespace

std::optional<BookmarkTexts> bookmarksIn(const QString &body) {
    for (const BookmarkTexts &texts : {BookmarkTexts{kvl_BeginBookmark, kvl_EndBookmark},
                                       BookmarkTexts{kvl_BeginBookmarkEx, kvl_EndBookmarkEx}})
        if (body.contains(texts.begin) && body.contains(texts.end))
            return texts;
    return {};
}

BlockSearch findBlock(const QString &body, const BookmarkTexts &texts, const QString &headMarker,
                      const QString &tailMarker) {
    const std::optional<Edge> start = startOfBlock(body, headMarker, texts.begin);
    const std::optional<Edge> end = endOfBlock(body, tailMarker, texts.end);
    if (!start || !end)
        return {};
    if (end->bookmark < start->bookmark)
        return {true, std::nullopt};
    return {true, BodyRange{start->position, end->position - start->position}};
}

std::optional<BodyRange> lastProperPair(const QString &body, const BookmarkTexts &texts) {
    const qsizetype end = lastIndexIn(body, texts.end);
    if (end < 0)
        return {};
    const qsizetype begin = lastIndexIn(QStringView(body).first(end), texts.begin);
    if (begin < 0)
        return {};
    return BodyRange{begin, end + texts.end.size() - begin};
}

std::optional<BodyRange> firstPair(const QString &body, const BookmarkTexts &texts) {
    qsizetype begin = body.indexOf(texts.begin);
    qsizetype end = body.indexOf(texts.end);
    if (begin < 0 || end < 0)
        return {};
    if (end < begin) {
        end = body.indexOf(texts.end, begin);
        if (end < 0)
            return {};
        begin = QStringView(body).first(end).lastIndexOf(texts.begin);
    }
    return BodyRange{begin, end + texts.end.size() - begin};
}
