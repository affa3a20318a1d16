// The invitation in an appointment's body: how it is written, found again, replaced and removed.
#pragma once

#include "plugin/host/body/bodyMarkup.h"
#include "plugin/util/sharedObject.h"

#include <QString>

// Keeps no state. Bodies and blocks are HTML. A null result: there is none, leave the body as it is.
// Everything is linear in the length of its texts, but for the links of a plain invitation (linkMaker.h). A
// body that is moved in is changed in place.
class vlBodyHelper : public SharedObject<vlBodyHelper> {
public:
    // The plain characters, without no-break space entities; null for a null or empty text.
    [[nodiscard]] QString convertHTMLToPlainText(const QString &html) const;
    [[nodiscard]] QString trimHTMLNBSPTags(const QString &text) const;
    // The text with its line breaks as tags and its links made clickable; null for null. Nothing is escaped:
    // an invitation may hold markup. An address becomes a link when non-blank text precedes it and a blank, a
    // line break, a bookmark or the end of the text follows.
    [[nodiscard]] QString convertPlainTextToHTML(const QString &text) const;

    // The invitation between bookmarks, as HTML: the block; "" for a null or empty invitation.
    [[nodiscard]] QString insertVlBodyBookMark(const QString &invitation, bool isHTML) const;
    // The body with the block before its last "</body>"; null when it has none.
    [[nodiscard]] QString newVlBodyToEnd(QString body, const QString &block) const;
    // The body with the block in place of the one it holds; null when the bookmarks (of body or block) are
    // missing. Bookmarks in the wrong order enclose nothing: then a proper pair is replaced, or the block
    // added at the end.
    [[nodiscard]] QString updateVlBodyWithVlBookmark(QString body, const QString &block) const;
    [[nodiscard]] QString updateVlBodyWithVlBookmarkEx(QString body, const QString &block) const;
    // The body with the invitation in it; null for a null body. The stored data is not used.
    [[nodiscard]] QString updateVlBodyWithSrcBody(QString body, const QString &invitation, bool isHTML,
                                                  const QString &storedData) const;
    // The body without its block; null when it has none.
    [[nodiscard]] QString removeVlBodyForDelete(QString body) const;
    // The body with the text of an audio conference before its last "</body>"; null when it has none.
    [[nodiscard]] QString updateBodyForPAC(QString body, const QString &text, bool isHTML) const;
};
