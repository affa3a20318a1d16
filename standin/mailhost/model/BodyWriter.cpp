#include "standin/mailhost/model/BodyWriter.h"

#include "platform/Literals.h"

#include <algorithm>

namespace mailhost {

namespace {

bool isBlockEnd(QChar c) {
    return c == QChar::ParagraphSeparator || c == QChar(0xfdd0) || c == QChar(0xfdd1);
}

// The block of each place in the text, the end included.
QList<int> blocksOf(const QString &text) {
    QList<int> blocks{0};
    for (const QChar c : text)
        blocks.append(blocks.last() + (isBlockEnd(c) ? 1 : 0));
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
        , m_text(now.state.text)
        , m_blockAt(blocksOf(m_text))
        , m_baseBlockAt(blocksOf(before.state.text)) {}

    std::optional<QString> write() {
        if (!findNewLists())
            return std::nullopt;
        const QList<Kept> kept = keptCharacters();
        if (kept.size() == 2)
            return writeFresh();
        for (qsizetype i = 1; i < kept.size(); ++i) {
            const bool written = gapUnchanged(kept[i - 1], kept[i]) ? copyGap(kept[i - 1], kept[i])
                                                                    : writeGap(kept[i - 1], kept[i]);
            if (!written || !writeSolid(kept[i]))
                return std::nullopt;
        }
        return m_out;
    }

private:
    // An unchanged character; at the ends of the list the places before the first and after the last one.
    struct Kept {
        int at;    // in the text now
        int base;  // in the loaded text
        int solid; // number of its piece
        BodyPiece piece;
    };

    [[nodiscard]] static bool isFirst(const Kept &kept) { return kept.at < 0; }
    [[nodiscard]] bool isLast(const Kept &kept) const { return kept.at == m_text.size(); }

    // Returns false if a paragraph was taken out of a list.
    bool findNewLists() {
        const QList<bool> &lists = m_now.state.lists;
        qsizetype position = 0;
        for (qsizetype block = 0; block < lists.size(); ++block) {
            int origin = -1;
            for (; position < m_text.size() && m_blockAt[position] == block; ++position)
                if (origin < 0)
                    origin = m_now.origin[position];
            // A new paragraph that follows an existing item is a further item.
            const bool isItem = origin >= 0 ? m_before.state.lists[m_baseBlockAt[origin]]
                                            : block > 0 && lists[block - 1] && !m_newList[block - 1];
            if (origin >= 0 && isItem && !lists[block])
                return false;
            m_newList.append(lists[block] && !isItem);
        }
        return true;
    }

    [[nodiscard]] QList<Kept> keptCharacters() const {
        const QList<BodyPiece> &solids = m_before.source.solids();
        QList<Kept> kept{{-1, -1, -1, {}}};
        for (int i = 0; i < m_text.size(); ++i) {
            const int origin = m_now.origin[i];
            const int solid = m_before.solidAt.value(origin, -1);
            if (solid >= 0)
                kept.append({i, origin, solid, solids[solid]});
        }
        BodyPiece end;
        end.begin = end.end = m_before.source.html().size();
        kept.append({int(m_text.size()), int(m_before.state.text.size()), int(solids.size()), end});
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
        writeNew(0, int(m_text.size()), {}, from);
        leaveBlock();
        return m_out + html.mid(to);
    }

    [[nodiscard]] BodyStyle baseStyle(const Kept &kept) const {
        return m_before.state.styles.value(kept.base);
    }

    [[nodiscard]] bool gapUnchanged(const Kept &from, const Kept &to) const {
        if (to.solid != from.solid + 1 || to.base - from.base != to.at - from.at)
            return false;
        for (int i = from.at + 1; i < to.at; ++i)
            if (m_now.origin[i] != from.base + i - from.at)
                return false;
        return true;
    }

    [[nodiscard]] bool baselineHasBoundary(const Kept &from, const Kept &to) const {
        const auto begin = m_before.state.text.begin();
        return std::any_of(begin + from.base + 1, begin + to.base, isBlockEnd);
    }

    // The position of a paragraph end that still exists between the two; -1 if there is none. A paragraph end
    // that the user typed over an existing one replaces it.
    [[nodiscard]] int boundaryIn(const Kept &from, const Kept &to) const {
        int typed = -1;
        for (int i = from.at + 1; i < to.at; ++i) {
            if (!isBlockEnd(m_text[i]))
                continue;
            if (m_now.origin[i] >= 0)
                return i;
            if (typed < 0)
                typed = i;
        }
        return baselineHasBoundary(from, to) ? typed : -1;
    }

    // What stands between the two, without text that was deleted.
    [[nodiscard]] QList<BodyPiece> piecesBetween(const Kept &from, const Kept &to) const {
        QList<BodyPiece> pieces;
        for (const BodyPiece &piece : m_before.source.pieces())
            if (piece.begin >= from.piece.end && piece.end <= to.piece.begin &&
                piece.kind != BodyPiece::Kind::Solid)
                pieces.append(piece);
        return pieces;
    }

    // The tags between two characters. If two paragraphs were joined, leaves out the tags that ended the
    // first and began the second; no value if these do not match.
    [[nodiscard]] std::optional<QString> markupBetween(const Kept &from, const Kept &to, int boundary) const {
        const bool outer = isFirst(from) || isLast(to);
        const bool joined = boundary < 0 && !outer && baselineHasBoundary(from, to);
        QStringList tags;
        QList<std::pair<qsizetype, QString>> closed; // index in `tags` and name of the block tags that close
        for (const BodyPiece &piece : piecesBetween(from, to)) {
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
        return closed.isEmpty() ? std::optional(tags.join(QString())) : std::nullopt;
    }

    [[nodiscard]] bool endsBlock(const Kept &from, const Kept &to) const {
        return isLast(to) || m_blockAt[std::max(from.at, 0)] != m_blockAt[to.at];
    }

    bool copyGap(const Kept &from, const Kept &to) {
        const QString gap = m_before.source.html().mid(from.piece.end, to.piece.begin - from.piece.end);
        if (gap.contains(u'<') || isLast(to))
            closeStyle();
        if (endsBlock(from, to))
            leaveBlock();
        m_out += gap;
        return true;
    }

    bool writeGap(const Kept &from, const Kept &to) {
        closeStyle();
        const int boundary = boundaryIn(from, to);
        const std::optional<QString> markup = markupBetween(from, to, boundary);
        if (!markup)
            return false;
        // A bookmark shown at the beginning of the following block belongs before the text typed after it.
        const bool shownAhead = from.piece.bookmark && !isLast(to) &&
                                std::ranges::any_of(piecesBetween(from, to), isBlockTag, &BodyPiece::tag);
        const bool allRight = boundary < 0 && (isFirst(from) || shownAhead);
        const int split = boundary >= 0 ? boundary : allRight ? from.at : to.at;
        writeNew(from.at + 1, split, baseStyle(from), from.piece.end);
        if (boundary >= 0 || endsBlock(from, to))
            leaveBlock();
        m_out += *markup;
        writeNew(split + 1, to.at, baseStyle(to), to.piece.begin);
        return true;
    }

    void writeBreak(int position, qsizetype sourcePosition) {
        const bool wasOpen = m_listOpen;
        leaveBlock();
        if (wasOpen || m_newList[m_blockAt[position] + 1])
            return;
        const QString tags = m_before.source.paragraphBreakAt(sourcePosition);
        const int next = position + 1;
        const bool atEnd = next == m_text.size();
        const bool emptyBefore = position == 0 || isBlockEnd(m_text[position - 1]);
        const bool emptyAfter = atEnd || (isBlockEnd(m_text[next]) && m_now.origin[next] >= 0);
        // An empty paragraph would not be shown.
        const bool paragraphs = tags != u"<br>";
        if (paragraphs && emptyBefore)
            m_out += u"&nbsp;"_s;
        m_out += tags;
        if (paragraphs && emptyAfter)
            m_out += u"&nbsp;"_s;
    }

    void writeNew(int from, int to, const BodyStyle &around, qsizetype sourcePosition) {
        QChar previous = m_out.isEmpty() ? QChar() : m_out.back();
        for (int i = from; i < to; ++i) {
            const QString bookmark = m_now.bookmarks.value(i);
            if (isBlockEnd(m_text[i])) {
                closeStyle();
                writeBreak(i, sourcePosition);
                previous = QChar();
            } else if (!bookmark.isNull()) {
                closeStyle();
                m_out += bookmark;
            } else {
                enterBlock(i);
                openStyle(around, m_now.state.styles[i]);
                m_out += escaped(m_text[i], previous);
                previous = m_text[i];
            }
        }
        closeStyle();
    }

    // Returns false if the style of the character cannot be written.
    bool writeSolid(const Kept &kept) {
        if (isLast(kept))
            return true;
        enterBlock(kept.at);
        if (!kept.piece.bookmark && kept.piece.tag.isEmpty()) {
            const BodyStyle has = baseStyle(kept);
            BodyStyle wanted = m_now.state.styles[kept.at];
            if (has.underline && !wanted.underline)
                return false; // inner tags cannot remove the line of an underlined text
            wanted.link = has.link;
            openStyle(has, wanted);
        }
        m_out += m_before.source.textOf(kept.piece);
        return true;
    }

    void enterBlock(int position) {
        if (m_listOpen || !m_newList[m_blockAt[position]])
            return;
        closeStyle();
        const bool continues = m_listClosedAt == m_out.size();
        if (continues)
            m_out.chop(QStringView(u"</li></ul>").size());
        m_out += continues ? u"</li><li>"_s : u"<ul><li>"_s;
        m_listOpen = true;
    }

    void leaveBlock() {
        if (!m_listOpen)
            return;
        closeStyle();
        m_out += u"</li></ul>"_s;
        m_listOpen = false;
        m_listClosedAt = m_out.size();
    }

    // Opens the tags that make text of one style look like the other, unless they are open.
    void openStyle(const BodyStyle &has, const BodyStyle &wanted) {
        if (has == m_has && wanted == m_wanted)
            return;
        closeStyle();
        const Tags tags = changeOf(has, wanted);
        m_out += tags.open;
        m_styleClose = tags.close;
        m_has = has;
        m_wanted = wanted;
    }

    void closeStyle() {
        m_out += m_styleClose;
        m_styleClose.clear();
        m_has = {};
        m_wanted = {};
    }

    const LoadedBody &m_before;
    const EditedBody &m_now;
    const QString &m_text;
    QList<int> m_blockAt;
    QList<int> m_baseBlockAt; // of the loaded text
    QList<bool> m_newList;    // of each block now: made a list item by the user
    QString m_out;
    bool m_listOpen = false;
    qsizetype m_listClosedAt = -1;
    QString m_styleClose; // the end tags of what openStyle() has opened
    BodyStyle m_has;
    BodyStyle m_wanted;
};

} // namespace

std::optional<QString> writtenBody(const LoadedBody &before, const EditedBody &now) {
    return Writer(before, now).write();
}

} // namespace mailhost
