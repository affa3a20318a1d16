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

// The result of a search for the block.
struct BlockSearch {
    bool found = false;             // both ends were found
    std::optional<BodyRange> range; // no value if they are in the wrong order and enclose nothing
};

// The bookmark pair present in the body (the quoted form is preferred); none when neither pair is complete.
[[nodiscard]] std::optional<BookmarkTexts> bookmarksIn(const QString &body);
// The range from the last head marker (or, without one, from the font tag before the first begin bookmark) to
// the end of the last tail marker (or of the last closing font tag).
[[nodiscard]] BlockSearch findBlock(const QString &body, const BookmarkTexts &texts,
                                    const QString &headMarker, const QString &tailMarker);
// The range from the last begin bookmark that is followed by an end bookmark to the end of the last end
// bookmark.
[[nodiscard]] std::optional<BodyRange> lastProperPair(const QString &body, const BookmarkTexts &texts);
// The range from the first begin bookmark to the end of the first end bookmark. If that end bookmark comes
// first, the range from the last begin bookmark before the next end bookmark to the end of the latter.
[[nodiscard]] std::optional<BodyRange> firstPair(const QString &body, const BookmarkTexts &texts);
