// Finds the block in a body that has to be replaced or removed.
#pragma once

#include <QString>
#include <optional>

struct BookmarkTexts {
    QString begin;
    QString end;
};

// A part of a body, in UTF-16 units.
struct BodyRange {
    qsizetype start;
    qsizetype length;
};

// The bookmark pair present in the body (the quoted form is preferred); none when neither pair is complete.
[[nodiscard]] std::optional<BookmarkTexts> bookmarksIn(const QString &body);
// The range that a new block replaces: from the last head marker (or, without one, from the font tag before
// the first begin bookmark) to the end of the last tail marker (or of the last closing font tag); none if one
// of the two is missing. In the wrong order they have the user's text between them: the range is then the
// last proper pair of bookmarks or, without one, the empty one before the last "</body>" or at the end.
[[nodiscard]] std::optional<BodyRange> findBlock(const QString &body, const BookmarkTexts &texts,
                                                 const QString &headMarker, const QString &tailMarker);
// The range from the first begin bookmark to the end of the first end bookmark. If that end bookmark comes
// first, the range from the last begin bookmark before the next end bookmark to the end of the latter; none
// without one. REQUIRES: the body contains both.
[[nodiscard]] std::optional<BodyRange> firstPair(const QString &body, const BookmarkTexts &texts);
