// Writes what the person changed in a body into its HTML.
#pragma once

#include "standin/mailhost/model/BodyText.h"

#include <optional>

namespace mailhost {

// One pass over the text of a BodyText. Lives no longer than the call in which it is made.
class BodyWriter {
public:
    explicit BodyWriter(const BodyText &text);
    // None when a change has no place in the HTML as it came.
    [[nodiscard]] std::optional<QString> write();

private:
    using Style = BodyText::Style;
    struct Kept {  // a character that is still there
        int at;    // in the text now; -1 before the first, the size after the last
        int solid; // -1 before the first, the count after the last
    };
    [[nodiscard]] bool findNewLists(); // false: a paragraph was taken out of a list
    [[nodiscard]] std::vector<Kept> keptCharacters() const;
    QString writeFresh();
    [[nodiscard]] qsizetype endOf(const Kept &kept) const;
    [[nodiscard]] qsizetype beginOf(const Kept &kept) const;
    [[nodiscard]] int basePosition(const Kept &kept) const;
    [[nodiscard]] Style baseStyle(const Kept &kept) const;
    [[nodiscard]] bool isBookmark(const Kept &kept) const;
    [[nodiscard]] bool gapUnchanged(const Kept &from, const Kept &to) const;
    [[nodiscard]] bool baselineHasBoundary(const Kept &from, const Kept &to) const;
    [[nodiscard]] int boundaryIn(const Kept &from, const Kept &to) const;
    [[nodiscard]] std::optional<QString> markupBetween(const Kept &from, const Kept &to, int boundary) const;
    [[nodiscard]] bool hasBlockMarkup(const Kept &from, const Kept &to) const;
    bool writeSolid(const Kept &kept);
    void copyGap(const Kept &from, const Kept &to);
    bool writeGap(const Kept &from, const Kept &to);
    void writeNew(int from, int to, const Style &around, qsizetype sourcePosition);
    void writeBreak(int position, qsizetype sourcePosition);
    void enterBlock(int position);
    void leaveBlock();
    void closeDelta();

    const BodyText &m_text;
    std::vector<Style> m_styles;
    std::vector<int> m_blockAt;         // the block of each place, the end included
    std::vector<int> m_baseBlockAt;     // likewise of the baseline
    std::vector<bool> m_newList;        // of each block now: made a list item by the person
    std::vector<int> m_positionOfSolid; // in the baseline
    QString m_out;
    bool m_listOpen = false;
    qsizetype m_listClosedAt = -1;
    QString m_deltaClose; // tags that end the open change of style
    Style m_deltaWanted;
    Style m_deltaHas;
};

} // namespace mailhost
