#include "plugin/host/body/bookmarkRange.h"

#include "plugin/host/body/vlBodyHelper.h"

#include <QStringList>
#include <QStringView>
#include <algorithm>

namespace {

// What the host puts around a block when it rewrites a body with fonts.
const QString fontTag = QStringLiteral("<font size=");
const QString closedFont = QStringLiteral("@</font>");

struct Edge {
    qsizetype position; // where the block begins, or where it ends
    qsizetype bookmark; // where what tells of it lies
};

qsizetype lastIndexIn(QStringView text, const QString &part) {
    return text.lastIndexOf(part, -1, Qt::CaseInsensitive);
}

// Whether nothing that a person could have put there is in the HTML: blanks, which the host may have written
// as entities, and tags that only format.
bool isOnlyFormatting(QStringView html) {
    static const QStringList formatting = {"b", "br", "div", "font", "i", "p", "span", "u"};
    qsizetype at = 0;
    while (at < html.size()) {
        if (html[at].isSpace()) {
            ++at;
            continue;
        }
        if (html.sliced(at).startsWith(HTML_NBSP_TAG)) {
            at += HTML_NBSP_TAG.size();
            continue;
        }
        const qsizetype close = html.indexOf(u'>', at);
        if (html[at] != u'<' || close < 0)
            return false;
        QStringView name = html.sliced(at + 1, close - at - 1);
        if (name.startsWith(u'/'))
            name = name.sliced(1);
        const auto end = std::find_if(name.begin(), name.end(), [](QChar c) { return !c.isLetter(); });
        if (!formatting.contains(name.first(end - name.begin()), Qt::CaseInsensitive))
            return false;
        at = close + 1;
    }
    return true;
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
