// Writes, finds, replaces and removes the invitation in an appointment's body.
#pragma once

#include "plugin/host/body/bodyMarkup.h"
#include "plugin/util/sharedObject.h"

#include <QString>

// Has no state. Bodies and blocks are HTML. A null result means that the body needs no change. The time is
// linear in the length of the texts, except for the links of a plain invitation (linkMaker.h). A body that is
// moved in is changed in place.
class vlBodyHelper : public SharedObject<vlBodyHelper> {
public:
    // The plain characters, without no-break space entities; null for a null or empty text.
    [[nodiscard]] QString convertHTMLToPlainText(const QString &html) const;
    [[nodiscard]] QString trimHTMLNBSPTags(const QString &text) const;
    // The text with line breaks as tags and clickable links; null for null. Does not escape the text, because
    // an invitation may contain markup. An address becomes a link when non-blank text precedes it and a
    // blank, a line break, a bookmark or the end of the text follows.
    [[nodiscard]] QString convertPlainTextToHTML(const QString &text) const;

    // The block: the invitation as HTML between bookmarks; "" for a null or empty invitation.
    [[nodiscard]] QString insertVlBodyBookMark(const QString &invitation, bool isHTML) const;
    // The body with the block before its last "</body>"; null if it has no such tag.
    [[nodiscard]] QString newVlBodyToEnd(QString body, const QString &block) const;
    // The body with its block replaced by the new one; null if body or block lack bookmarks. Bookmarks in the
    // wrong order enclose nothing: then the new block replaces a proper pair or is added at the end.
    [[nodiscard]] QString updateVlBodyWithVlBookmark(QString body, const QString &block) const;
    [[nodiscard]] QString updateVlBodyWithVlBookmarkEx(QString body, const QString &block) const;
    // The body with the invitation; null for a null body. Does not use the stored data.
    [[nodiscard]] QString updateVlBodyWithSrcBody(QString body, const QString &invitation, bool isHTML,
                                                  const QString &storedData) const;
    // The body without its block; null if it has no block.
    [[nodiscard]] QString removeVlBodyForDelete(QString body) const;
    // The body with the text of an audio conference before its last "</body>"; null if it has no such tag.
    [[nodiscard]] QString updateBodyForPAC(QString body, const QString &text, bool isHTML) const;
};
