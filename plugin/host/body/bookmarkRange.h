// Where in a body the block lies that is to be replaced or removed.
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

// What a search for the block came to.
struct BlockSearch {
    bool found = false;             // both ends were found
    std::optional<BodyRange> range; // none when they lie in the wrong order: nothing is enclosed
};

// The bookmark pair present in the body (the quoted form is preferred); none when neither pair is complete.
[[nodiscard]] std::optional<BookmarkTexts> bookmarksIn(const QString &body);
// From the last head marker (or, where there is none, from the font tag before the first begin bookmark)
// through the last tail marker (or the last closed font).
[[nodiscard]] BlockSearch findBlock(const QString &body, const BookmarkTexts &texts,
                                    const QString &headMarker, const QString &tailMarker);
// The last begin bookmark that has an end bookmark behind it, through the last end bookmark.
[[nodiscard]] std::optional<BodyRange> lastProperPair(const QString &body, const BookmarkTexts &texts);
// From the first begin bookmark through the first end bookmark. Where that end lies first: the last begin
// bookmark before the next end bookmark, through it.
[[nodiscard]] std::optional<BodyRange> firstPair(const QString &body, const BookmarkTexts &texts);
