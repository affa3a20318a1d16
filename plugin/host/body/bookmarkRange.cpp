#include "plugin/host/body/bookmarkRange.h"

#include "plugin/host/body/vlBodyHelper.h"

#include <QStringView>

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

std::optional<Edge> startOfBlock(const QString &body, const QString &headMarker, const QString &begin) {
    const qsizetype marker = lastIndexIn(body, headMarker);
    if (marker >= 0)
        return Edge{marker, marker};
    const qsizetype bookmark = body.indexOf(begin);
    if (bookmark < 0)
        return {};
    const qsizetype font = lastIndexIn(QStringView(body).first(bookmark), fontTag);
    return font >= 0 ? std::optional(Edge{font, bookmark}) : std::nullopt;
}

std::optional<Edge> endOfBlock(const QString &body, const QString &tailMarker) {
    for (const QString *part : {&tailMarker, &closedFont}) {
        const qsizetype at = lastIndexIn(body, *part);
        if (at >= 0)
            return Edge{at + part->size(), at};
    }
    return {};
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
    const std::optional<Edge> end = endOfBlock(body, tailMarker);
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
