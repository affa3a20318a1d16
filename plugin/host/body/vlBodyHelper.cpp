#include "plugin/host/body/vlBodyHelper.h"

#include "platform/services/html/HtmlImporter.h"
#include "plugin/host/body/bookmarkRange.h"
#include "plugin/host/body/linkMaker.h"
#include "plugin/host/body/textReplace.h"
#include "plugin/util/vlOLUtils.h"

#include <utility>

namespace {

// In UTF-16 units: the distance of the end bookmark from the last word of a plain invitation. It keeps the
// invitation's last line break inside the block.
constexpr qsizetype endBookmarkOffset = 3;

QString without(const QString &text, QStringView part) {
    return replacedAll(text, part, QStringView());
}

// Edits in place if the body is not shared: the largest bodies have tens of megabytes.
QString replacedRange(QString body, const BodyRange &range, const QString &block) {
    body.replace(range.start, range.length, block);
    return body;
}

QString wrapped(const QString &html) {
    return blockMargin + html + blockMargin;
}

QString bookmarkedPlainText(const QString &invitation) {
    const QString words = vlOLUtils::trimAllSpaceAndNewLine(invitation);
    const qsizetype end = invitation.lastIndexOf(words) + words.size();
    QString text = invitation;
    text.insert(qMin(end + endBookmarkOffset, text.size()), kvl_EndBookmark);
    text.insert(invitation.indexOf(words), kvl_BeginBookmark);
    return text;
}

// The invitation in a body that was created with one.
std::optional<BodyRange> freshBlock(const QString &body) {
    const qsizetype begin = body.indexOf(kvl_InitBeginBookMark);
    if (begin < 0)
        return {};
    const qsizetype end = body.indexOf(kvl_InitEndBookMark, begin + kvl_InitBeginBookMark.size());
    if (end < 0)
        return {};
    return BodyRange{begin, end + kvl_InitEndBookMark.size() - begin};
}

QString updatedBetween(const BookmarkTexts &texts, QString body, const QString &block) {
    const std::optional<BodyRange> range = findBlock(body, texts, texts.begin, texts.end);
    return range ? replacedRange(std::move(body), *range, block) : body;
}

} // namespace

QString vlBodyHelper::convertHTMLToPlainText(const QString &html) const {
    if (html.isEmpty())
        return {};
    return platform::plainTextOfHtml(trimHTMLNBSPTags(html));
}

QString vlBodyHelper::trimHTMLNBSPTags(const QString &text) const {
    return text.contains(HTML_NBSP_TAG) ? without(text, HTML_NBSP_TAG) : text;
}

QString vlBodyHelper::convertPlainTextToHTML(const QString &text) const {
    if (text.isNull())
        return {};
    return withLinksAndBreaks(vlOLUtils::trimNewLine(text));
}

QString vlBodyHelper::insertVlBodyBookMark(const QString &invitation, bool isHTML) const {
    if (invitation.isEmpty())
        return u""_s;
    if (isHTML)
        return kvl_BeginBookmark + invitation + kvl_EndBookmark;
    return wrapped(convertPlainTextToHTML(bookmarkedPlainText(invitation)));
}

QString vlBodyHelper::newVlBodyToEnd(QString body, const QString &block) const {
    const qsizetype end = body.lastIndexOf(bodyEndTag);
    return end < 0 ? QString() : replacedRange(std::move(body), {end, 0}, block);
}

QString vlBodyHelper::updateVlBodyWithVlBookmark(QString body, const QString &block) const {
    const qsizetype begin = block.indexOf(kvl_BeginBookmark);
    const qsizetype end = block.indexOf(kvl_EndBookmark);
    if (begin < 0 || end < 0)
        return {};
    const QString headMarker = without(block.left(begin + kvl_BeginBookmark.size()), lineBreakTag);
    QString tail = block.mid(end);
    tail.removeIf([](QChar unit) { return unit == u'\r' || unit == u'\n'; });
    const BookmarkTexts texts{kvl_BeginBookmark, kvl_EndBookmark};
    const QString tailMarker = vlOLUtils::trimRLSpace(without(tail, lineBreakTag));
    if (const std::optional<BodyRange> range = findBlock(body, texts, headMarker, tailMarker))
        return replacedRange(std::move(body), *range, block);
    return updateVlBodyWithVlBookmarkEx(std::move(body), block);
}

QString vlBodyHelper::updateVlBodyWithVlBookmarkEx(QString body, const QString &block) const {
    const std::optional<BookmarkTexts> texts = bookmarksIn(body);
    return texts ? updatedBetween(*texts, std::move(body), block) : QString();
}

QString vlBodyHelper::updateVlBodyWithSrcBody(QString body, const QString &invitation, bool isHTML,
                                              const QString &) const {
    if (body.isNull())
        return {};
    const QString block = insertVlBodyBookMark(invitation, isHTML);
    // A fresh block contains the quoted bookmarks as well, so only a body with those is searched for it.
    const std::optional<BookmarkTexts> texts = bookmarksIn(body);
    if (!texts) {
        const QString extended = newVlBodyToEnd(std::move(body), block);
        return extended.isEmpty() ? block : extended;
    }
    if (texts->begin != kvl_BeginBookmark)
        return updatedBetween(*texts, std::move(body), block);
    if (const std::optional<BodyRange> fresh = freshBlock(body))
        return replacedRange(std::move(body), *fresh, block);
    return updateVlBodyWithVlBookmark(std::move(body), block);
}

QString vlBodyHelper::removeVlBodyForDelete(QString body) const {
    const std::optional<BookmarkTexts> texts = bookmarksIn(body);
    const std::optional<BodyRange> range = texts ? firstPair(body, *texts) : std::nullopt;
    return range ? replacedRange(std::move(body), *range, u""_s) : QString();
}

QString vlBodyHelper::updateBodyForPAC(QString body, const QString &text, bool isHTML) const {
    if (text.isNull())
        return {};
    return newVlBodyToEnd(std::move(body), isHTML ? text : wrapped(convertPlainTextToHTML(text)));
}
