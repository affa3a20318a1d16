#include "plugin/host/body/bookmarkRange.h"

#include "plugin/host/body/bodyMarkup.h"

#include <QStringList>
#include <QStringView>
#include <algorithm>

namespace {

// What the host puts around a block when it rewrites a body with fonts.
const QString fontTag = u"<font size="_s;
const QString closedFont = u"@</font>"_s;

struct Edge {
    qsizetype position; // where the block begins, or where it ends
    qsizetype bookmark; // where what tells of it lies
};

// A character that no other one is equal to, whatever the case.
bool isCaseless(QChar c) {
    return c.unicode() < 0x80 && !c.isLetter();
}

// Where the part lies last, in whatever case. The toolkit folds each character of a body for that; here only
// the places are looked at where two characters of the part stand that have no case, a few at a time.
qsizetype lastIndexIn(QStringView text, QStringView part) {
    const auto first = std::find_if(part.begin(), part.end(), isCaseless) - part.begin();
    const auto last =
        part.size() - 1 - (std::find_if(part.rbegin(), part.rend(), isCaseless) - part.rbegin());
    if (first >= last || text.size() < part.size())
        return text.lastIndexOf(part, -1, Qt::CaseInsensitive);
    const char16_t *const firsts = text.utf16() + first;
    const char16_t *const lasts = text.utf16() + last;
    const char16_t wantedFirst = part[first].unicode();
    const char16_t wantedLast = part[last].unicode();
    constexpr qsizetype stride = 64;
    for (qsizetype end = text.size() - part.size() + 1; end > 0;) {
        const qsizetype start = std::max<qsizetype>(end - stride, 0);
        unsigned candidates = 0;
        for (qsizetype at = start; at < end; ++at)
            candidates |= unsigned((firsts[at] == wantedFirst) & (lasts[at] == wantedLast));
        for (qsizetype at = end - 1; candidates && at >= start; --at)
            if (firsts[at] == wantedFirst && lasts[at] == wantedLast &&
                text.sliced(at, part.size()).compare(part, Qt::CaseInsensitive) == 0)
                return at;
        end = start;
    }
    return -1;
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
