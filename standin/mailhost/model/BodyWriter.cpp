#include "standin/mailhost/model/BodyWriter.h"

#include "platform/Literals.h"

#include <algorithm>

namespace mailhost {

namespace {

bool isBlockEnd(QChar c) {
    return c == QChar::ParagraphSeparator || c == QChar(0xfdd0) || c == QChar(0xfdd1);
}

std::vector<int> blocksOf(const QString &text) {
    std::vector<int> blocks;
    blocks.reserve(std::size_t(text.size() + 1));
    int block = 0;
    for (const QChar c : text) {
        blocks.push_back(block);
        if (isBlockEnd(c))
            ++block;
    }
    blocks.push_back(block);
    return blocks;
}

struct Tags {
    QString open;
    QString close;
    void add(const QString &begin, const QString &end) {
        open += begin;
        close.prepend(end);
    }
};

QString escaped(QChar c, QChar previous) {
    if (c == QChar::LineSeparator)
        return u"<br>"_s;
    if (c == QChar::Nbsp || (isHtmlSpace(c) && (previous.isNull() || isHtmlSpace(previous))))
        return u"&nbsp;"_s;
    if (isHtmlSpace(c))
        return u" "_s;
    return QString(c).toHtmlEscaped();
}

// The tags that turn text of one style into the other.
Tags changeOf(const BodyStyle &from, const BodyStyle &to) {
    Tags tags;
    if (to.bold != from.bold)
        to.bold ? tags.add(u"<b>"_s, u"</b>"_s)
                : tags.add(u"<span style=\"font-weight:normal\">"_s, u"</span>"_s);
    if (to.italic != from.italic)
        to.italic ? tags.add(u"<i>"_s, u"</i>"_s)
                  : tags.add(u"<span style=\"font-style:normal\">"_s, u"</span>"_s);
    if (to.underline && !from.underline)
        tags.add(u"<u>"_s, u"</u>"_s);
    return tags;
}

// Writes the text in one pass.
class Writer {
public:
    Writer(const LoadedBody &before, const EditedBody &now)
        : m_before(before)
        , m_now(now)
        , m_blockAt(blocksOf(now.state.text))
        , m_baseBlockAt(blocksOf(before.state.text))
        , m_positionOfSolid(std::size_t(before.source.solids().size()), -1) {
        for (std::size_t i = 0; i < before.solidAt.size(); ++i)
            if (before.solidAt[i] >= 0)
                m_positionOfSolid[std::size_t(before.solidAt[i])] = int(i);
    }

    std::optional<QString> write() {
        if (!findNewLists())
            return std::nullopt;
        const std::vector<Kept> kept = keptCharacters();
        if (kept.size() == 2)
            return writeFresh();
        for (std::size_t i = 0; i + 1 < kept.size(); ++i) {
            if (gapUnchanged(kept[i], kept[i + 1]))
                copyGap(kept[i], kept[i + 1]);
            else if (!writeGap(kept[i], kept[i + 1]))
                return std::nullopt;
            if (i + 2 < kept.size() && !writeSolid(kept[i + 1]))
                return std::nullopt;
        }
        return m_out;
    }

private:
    struct Kept {  // an unchanged character
        int at;    // in the text now; -1 before the first, the size after the last
        int solid; // -1 before the first, the count after the last
    };

    // Returns false if a paragraph was taken out of a list.
    bool findNewLists() {
        const std::vector<bool> &lists = m_now.state.lists;
        m_newList.assign(lists.size(), false);
        std::size_t position = 0;
        for (std::size_t block = 0; block < lists.size(); ++block) {
            int origin = -1;
            for (; position < m_now.origin.size() && m_blockAt[position] == int(block); ++position)
                if (origin < 0)
                    origin = m_now.origin[position];
            if (origin < 0) {
                // A new paragraph: a further item if it follows an existing item.
                const bool follows = block > 0 && lists[block - 1] && !m_newList[block - 1];
                m_newList[block] = lists[block] && !follows;
                continue;
            }
            const bool before = m_before.state.lists[std::size_t(m_baseBlockAt[std::size_t(origin)])];
            if (before && !lists[block])
                return false;
            m_newList[block] = lists[block] && !before;
        }
        return true;
    }

    std::vector<Kept> keptCharacters() const {
        std::vector<Kept> kept{{-1, -1}};
        for (std::size_t i = 0; i < m_now.origin.size(); ++i) {
            const int origin = m_now.origin[i];
            if (origin >= 0 && m_before.solidAt[std::size_t(origin)] >= 0)
                kept.push_back({int(i), m_before.solidAt[std::size_t(origin)]});
        }
        kept.push_back({int(m_now.state.text.size()), int(m_before.source.solids().size())});
        return kept;
    }

    QString writeFresh() {
        const QString &html = m_before.source.html();
        const qsizetype from = m_before.source.emptyInsertPosition();
        qsizetype to = from;
        if (!m_before.source.solids().isEmpty()) {
            // All original text was deleted, so its paragraph tags go too.
            const qsizetype end = html.lastIndexOf(u"</body", -1, Qt::CaseInsensitive);
            to = end < from ? html.size() : end;
        }
        m_out = html.left(from);
        writeNew(0, int(m_now.state.text.size()), {}, from);
        leaveBlock();
        return m_out + html.mid(to);
    }

    qsizetype endOf(const Kept &kept) const {
        return kept.solid < 0 ? 0 : m_before.source.solids()[kept.solid].end;
    }

    qsizetype beginOf(const Kept &kept) const {
        const QList<BodyPiece> &solids = m_before.source.solids();
        return kept.solid == solids.size() ? m_before.source.html().size() : solids[kept.solid].begin;
    }

    int basePosition(const Kept &kept) const {
        if (kept.solid < 0)
            return -1;
        return kept.solid == int(m_positionOfSolid.size()) ? int(m_before.state.text.size())
                                                           : m_positionOfSolid[std::size_t(kept.solid)];
    }

    BodyStyle baseStyle(const Kept &kept) const {
        const int position = basePosition(kept);
        const bool real = position >= 0 && position < int(m_before.state.styles.size());
        return real ? m_before.state.styles[std::size_t(position)] : BodyStyle();
    }

    bool isBookmark(const Kept &kept) const {
        const QList<BodyPiece> &solids = m_before.source.solids();
        return kept.solid >= 0 && kept.solid < solids.size() && solids[kept.solid].bookmark;
    }

    bool gapUnchanged(const Kept &from, const Kept &to) const {
        const int base = basePosition(from);
        if (to.solid != from.solid + 1 || basePosition(to) - base != to.at - from.at)
            return false;
        for (int i = from.at + 1; i < to.at; ++i)
            if (m_now.origin[std::size_t(i)] != base + i - from.at)
                return false;
        return true;
    }

    bool baselineHasBoundary(const Kept &from, const Kept &to) const {
        for (int i = basePosition(from) + 1; i < basePosition(to); ++i)
            if (isBlockEnd(m_before.state.text[i]))
                return true;
        return false;
    }

    // The position of a paragraph end that still exists between the two; -1 if there is none. A paragraph end
    // that the user typed over an existing one replaces it.
    int boundaryIn(const Kept &from, const Kept &to) const {
        int typed = -1;
        for (int i = from.at + 1; i < to.at; ++i) {
            if (!isBlockEnd(m_now.state.text[i]))
                continue;
            if (m_now.origin[std::size_t(i)] >= 0)
                return i;
            if (typed < 0)
                typed = i;
        }
        return baselineHasBoundary(from, to) ? typed : -1;
    }

    bool hasBlockMarkup(const Kept &from, const Kept &to) const {
        return std::ranges::any_of(m_before.source.pieces(), [&](const BodyPiece &piece) {
            return piece.kind == BodyPiece::Kind::Markup && piece.begin >= endOf(from) &&
                   piece.end <= beginOf(to) && isBlockTag(piece.tag);
        });
    }

    // The tags between two characters. If two paragraphs were joined, leaves out the tags that ended the
    // first and began the second; no value if these do not match.
    std::optional<QString> markupBetween(const Kept &from, const Kept &to, int boundary) const {
        const bool outer = from.solid < 0 || to.solid == m_before.source.solids().size();
        const bool joined = boundary < 0 && !outer && baselineHasBoundary(from, to);
        QStringList tags;
        QList<std::pair<qsizetype, QString>> closed; // index in `tags` and name of the block tags that close
        for (const BodyPiece &piece : m_before.source.pieces()) {
            if (piece.begin < endOf(from) || piece.end > beginOf(to) || piece.kind == BodyPiece::Kind::Solid)
                continue;
            if (piece.kind == BodyPiece::Kind::Space && boundary < 0 && !outer)
                continue;
            tags.append(m_before.source.textOf(piece));
            if (!joined || !isBlockTag(piece.tag))
                continue;
            if (piece.closing) {
                closed.append({tags.size() - 1, piece.tag});
                continue;
            }
            if (closed.isEmpty() || closed.last().second != piece.tag)
                return std::nullopt;
            tags[closed.takeLast().first].clear();
            tags.last().clear();
        }
        if (!closed.isEmpty())
            return std::nullopt;
        return tags.join(QString());
    }

    void copyGap(const Kept &from, const Kept &to) {
        const QString gap = m_before.source.html().mid(endOf(from), beginOf(to) - endOf(from));
        if (gap.contains(u'<'))
            closeDelta();
        const bool last = to.at == m_now.state.text.size();
        if (last || m_blockAt[std::size_t(std::max(from.at, 0))] != m_blockAt[std::size_t(to.at)])
            leaveBlock();
        m_out += gap;
    }

    bool writeGap(const Kept &from, const Kept &to) {
        closeDelta();
        const int boundary = boundaryIn(from, to);
        const std::optional<QString> markup = markupBetween(from, to, boundary);
        if (!markup)
            return false;
        // A bookmark shown at the beginning of the following block belongs before the text typed after it.
        const bool shownAhead =
            isBookmark(from) && hasBlockMarkup(from, to) && to.solid < int(m_positionOfSolid.size());
        const bool allRight = boundary < 0 && (from.solid < 0 || shownAhead);
        const int split = boundary >= 0 ? boundary : allRight ? from.at : to.at;
        writeNew(from.at + 1, split, baseStyle(from), endOf(from));
        const bool last = to.at == m_now.state.text.size();
        if (last || boundary >= 0 ||
            m_blockAt[std::size_t(std::max(from.at, 0))] != m_blockAt[std::size_t(to.at)])
            leaveBlock();
        m_out += *markup;
        writeNew(split + 1, to.at, baseStyle(to), beginOf(to));
        return true;
    }

    void writeBreak(int position, qsizetype sourcePosition) {
        const bool wasOpen = m_listOpen;
        leaveBlock();
        const int next = m_blockAt[std::size_t(position)] + 1;
        if (wasOpen || m_newList[std::size_t(next)])
            return;
        const QString tags = m_before.source.paragraphBreakAt(sourcePosition);
        const QString &text = m_now.state.text;
        const bool emptyBefore = position == 0 || isBlockEnd(text[position - 1]);
        const bool emptyAfter = position + 1 == text.size() || isBlockEnd(text[position + 1]);
        const bool typedAfter =
            !emptyAfter || position + 1 == text.size() || m_now.origin[std::size_t(position) + 1] < 0;
        // An empty paragraph would not be shown.
        const bool paragraphs = tags != u"<br>";
        if (paragraphs && emptyBefore)
            m_out += u"&nbsp;"_s;
        m_out += tags;
        if (paragraphs && emptyAfter && (!typedAfter || position + 1 == text.size()))
            m_out += u"&nbsp;"_s;
    }

    void writeNew(int from, int to, const BodyStyle &around, qsizetype sourcePosition) {
        QChar previous = m_out.isEmpty() ? QChar() : m_out.back();
        int i = from;
        while (i < to) {
            if (isBlockEnd(m_now.state.text[i])) {
                writeBreak(i++, sourcePosition);
                previous = QChar();
                continue;
            }
            if (const QString bookmark = m_now.bookmarks.value(i); !bookmark.isNull()) {
                m_out += bookmark;
                ++i;
                continue;
            }
            const BodyStyle style = m_now.state.styles[std::size_t(i)];
            enterBlock(i);
            const Tags tags = changeOf(around, style);
            m_out += tags.open;
            for (; i < to && !isBlockEnd(m_now.state.text[i]) && m_now.state.styles[std::size_t(i)] == style;
                 ++i) {
                if (!m_now.bookmarks.value(i).isNull())
                    break;
                m_out += escaped(m_now.state.text[i], previous);
                previous = m_now.state.text[i];
            }
            m_out += tags.close;
        }
    }

    bool writeSolid(const Kept &kept) {
        enterBlock(kept.at);
        const BodyPiece &piece = m_before.source.solids()[kept.solid];
        BodyStyle wanted = m_now.state.styles[std::size_t(kept.at)];
        BodyStyle has = baseStyle(kept);
        wanted.link = has.link;
        const bool text = !piece.bookmark && piece.tag.isEmpty();
        if (text && (wanted != m_deltaWanted || has != m_deltaHas)) {
            closeDelta();
            if (wanted != has) {
                if (has.underline && !wanted.underline)
                    return false; // inner tags cannot remove the line of an underlined text
                const Tags tags = changeOf(has, wanted);
                m_out += tags.open;
                m_deltaClose = tags.close;
            }
            m_deltaWanted = wanted;
            m_deltaHas = has;
        }
        m_out += m_before.source.textOf(piece);
        return true;
    }

    void enterBlock(int position) {
        if (m_listOpen || !m_newList[std::size_t(m_blockAt[std::size_t(position)])])
            return;
        closeDelta();
        const bool continues = m_listClosedAt == m_out.size();
        if (continues)
            m_out.chop(QStringView(u"</li></ul>").size());
        m_out += continues ? u"</li><li>"_s : u"<ul><li>"_s;
        m_listOpen = true;
    }

    void leaveBlock() {
        if (!m_listOpen)
            return;
        closeDelta();
        m_out += u"</li></ul>"_s;
        m_listOpen = false;
        m_listClosedAt = m_out.size();
    }

    void closeDelta() {
        m_out += m_deltaClose;
        m_deltaClose.clear();
        m_deltaWanted = {};
        m_deltaHas = {};
    }

    const LoadedBody &m_before;
    const EditedBody &m_now;
    std::vector<int> m_blockAt;         // the block of each place, the end included
    std::vector<int> m_baseBlockAt;     // the same for the loaded text
    std::vector<bool> m_newList;        // of each block now: made a list item by the user
    std::vector<int> m_positionOfSolid; // in the loaded text
    QString m_out;
    bool m_listOpen = false;
    qsizetype m_listClosedAt = -1;
    QString m_deltaClose; // tags that end the open change of style
    BodyStyle m_deltaWanted;
    BodyStyle m_deltaHas;
};

} // namespace

std::optional<QString> writtenBody(const LoadedBody &before, const EditedBody &now) {
    return Writer(before, now).write();
}

} // namespace mailhost
