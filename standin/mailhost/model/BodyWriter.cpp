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

} // namespace

BodyWriter::BodyWriter(const BodyText &text)
    : m_text(text)
    , m_styles(text.styles())
    , m_blockAt(blocksOf(text.m_current))
    , m_baseBlockAt(blocksOf(text.m_baseline))
    , m_positionOfSolid(std::size_t(text.m_source.solids().size()), -1) {
    for (std::size_t i = 0; i < text.m_solidAt.size(); ++i)
        if (text.m_solidAt[i] >= 0)
            m_positionOfSolid[std::size_t(text.m_solidAt[i])] = int(i);
}

std::optional<QString> BodyWriter::write() {
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

bool BodyWriter::findNewLists() {
    const std::vector<bool> lists = m_text.listFlags();
    m_newList.assign(lists.size(), false);
    std::size_t position = 0;
    for (std::size_t block = 0; block < lists.size(); ++block) {
        int origin = -1;
        for (; position < m_text.m_origin.size() && m_blockAt[position] == int(block); ++position)
            if (origin < 0)
                origin = m_text.m_origin[position];
        if (origin < 0) {
            // A paragraph of its own: a further item when it follows one that was there.
            const bool follows = block > 0 && lists[block - 1] && !m_newList[block - 1];
            m_newList[block] = lists[block] && !follows;
            continue;
        }
        const bool before = m_text.m_baseLists[std::size_t(m_baseBlockAt[std::size_t(origin)])];
        if (before && !lists[block])
            return false;
        m_newList[block] = lists[block] && !before;
    }
    return true;
}

std::vector<BodyWriter::Kept> BodyWriter::keptCharacters() const {
    std::vector<Kept> kept{{-1, -1}};
    for (std::size_t i = 0; i < m_text.m_origin.size(); ++i) {
        const int origin = m_text.m_origin[i];
        if (origin >= 0 && m_text.m_solidAt[std::size_t(origin)] >= 0)
            kept.push_back({int(i), m_text.m_solidAt[std::size_t(origin)]});
    }
    kept.push_back({int(m_text.m_current.size()), int(m_text.m_source.solids().size())});
    return kept;
}

QString BodyWriter::writeFresh() {
    const QString &html = m_text.m_source.html();
    const qsizetype from = m_text.m_source.emptyInsertPosition();
    qsizetype to = from;
    if (!m_text.m_source.solids().isEmpty()) {
        // Nothing of what was there is left: neither are its paragraphs.
        const qsizetype end = html.lastIndexOf(u"</body", -1, Qt::CaseInsensitive);
        to = end < from ? html.size() : end;
    }
    m_out = html.left(from);
    writeNew(0, int(m_text.m_current.size()), {}, from);
    leaveBlock();
    return m_out + html.mid(to);
}

qsizetype BodyWriter::endOf(const Kept &kept) const {
    return kept.solid < 0 ? 0 : m_text.m_source.solids()[kept.solid].end;
}

qsizetype BodyWriter::beginOf(const Kept &kept) const {
    const QList<BodyPiece> &solids = m_text.m_source.solids();
    return kept.solid == solids.size() ? m_text.m_source.html().size() : solids[kept.solid].begin;
}

int BodyWriter::basePosition(const Kept &kept) const {
    if (kept.solid < 0)
        return -1;
    return kept.solid == int(m_positionOfSolid.size()) ? int(m_text.m_baseline.size())
                                                       : m_positionOfSolid[std::size_t(kept.solid)];
}

BodyWriter::Style BodyWriter::baseStyle(const Kept &kept) const {
    const int position = basePosition(kept);
    const bool real = position >= 0 && position < int(m_text.m_baseStyles.size());
    return real ? m_text.m_baseStyles[std::size_t(position)] : Style();
}

bool BodyWriter::isBookmark(const Kept &kept) const {
    const QList<BodyPiece> &solids = m_text.m_source.solids();
    return kept.solid >= 0 && kept.solid < solids.size() && solids[kept.solid].bookmark;
}

bool BodyWriter::gapUnchanged(const Kept &from, const Kept &to) const {
    const int base = basePosition(from);
    if (to.solid != from.solid + 1 || basePosition(to) - base != to.at - from.at)
        return false;
    for (int i = from.at + 1; i < to.at; ++i)
        if (m_text.m_origin[std::size_t(i)] != base + i - from.at)
            return false;
    return true;
}

bool BodyWriter::baselineHasBoundary(const Kept &from, const Kept &to) const {
    for (int i = basePosition(from) + 1; i < basePosition(to); ++i)
        if (isBlockEnd(m_text.m_baseline[i]))
            return true;
    return false;
}

// Where a paragraph still ends between the two: -1 when it does not. A paragraph end that the person typed
// over one that was there stands for it.
int BodyWriter::boundaryIn(const Kept &from, const Kept &to) const {
    int typed = -1;
    for (int i = from.at + 1; i < to.at; ++i) {
        if (!isBlockEnd(m_text.m_current[i]))
            continue;
        if (m_text.m_origin[std::size_t(i)] >= 0)
            return i;
        if (typed < 0)
            typed = i;
    }
    return baselineHasBoundary(from, to) ? typed : -1;
}

bool BodyWriter::hasBlockMarkup(const Kept &from, const Kept &to) const {
    return std::ranges::any_of(m_text.m_source.pieces(), [&](const BodyPiece &piece) {
        return piece.kind == BodyPiece::Kind::Markup && piece.begin >= endOf(from) &&
               piece.end <= beginOf(to) && isBlockTag(piece.tag);
    });
}

// The tags between two characters. Where two paragraphs were joined, those that ended the one and began the
// other go; none when they do not match.
std::optional<QString> BodyWriter::markupBetween(const Kept &from, const Kept &to, int boundary) const {
    const bool outer = from.solid < 0 || to.solid == m_text.m_source.solids().size();
    const bool joined = boundary < 0 && !outer && baselineHasBoundary(from, to);
    QStringList tags;
    QList<std::pair<qsizetype, QString>> closed; // index in `tags` and name of the block tags that close
    for (const BodyPiece &piece : m_text.m_source.pieces()) {
        if (piece.begin < endOf(from) || piece.end > beginOf(to) || piece.kind == BodyPiece::Kind::Solid)
            continue;
        if (piece.kind == BodyPiece::Kind::Space && boundary < 0 && !outer)
            continue;
        tags.append(m_text.m_source.textOf(piece));
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

void BodyWriter::copyGap(const Kept &from, const Kept &to) {
    const QString gap = m_text.m_source.html().mid(endOf(from), beginOf(to) - endOf(from));
    if (gap.contains(u'<'))
        closeDelta();
    const bool last = to.at == m_text.m_current.size();
    if (last || m_blockAt[std::size_t(std::max(from.at, 0))] != m_blockAt[std::size_t(to.at)])
        leaveBlock();
    m_out += gap;
}

bool BodyWriter::writeGap(const Kept &from, const Kept &to) {
    closeDelta();
    const int boundary = boundaryIn(from, to);
    const std::optional<QString> markup = markupBetween(from, to, boundary);
    if (!markup)
        return false;
    // A bookmark that is shown at the beginning of what follows it belongs before what is typed behind it.
    const bool shownAhead =
        isBookmark(from) && hasBlockMarkup(from, to) && to.solid < int(m_positionOfSolid.size());
    const bool allRight = boundary < 0 && (from.solid < 0 || shownAhead);
    const int split = boundary >= 0 ? boundary : allRight ? from.at : to.at;
    writeNew(from.at + 1, split, baseStyle(from), endOf(from));
    const bool last = to.at == m_text.m_current.size();
    if (last || boundary >= 0 ||
        m_blockAt[std::size_t(std::max(from.at, 0))] != m_blockAt[std::size_t(to.at)])
        leaveBlock();
    m_out += *markup;
    writeNew(split + 1, to.at, baseStyle(to), beginOf(to));
    return true;
}

void BodyWriter::writeBreak(int position, qsizetype sourcePosition) {
    const bool wasOpen = m_listOpen;
    leaveBlock();
    const int next = m_blockAt[std::size_t(position)] + 1;
    if (wasOpen || m_newList[std::size_t(next)])
        return;
    const QString tags = m_text.m_source.paragraphBreakAt(sourcePosition);
    const QString &text = m_text.m_current;
    const bool emptyBefore = position == 0 || isBlockEnd(text[position - 1]);
    const bool emptyAfter = position + 1 == text.size() || isBlockEnd(text[position + 1]);
    const bool typedAfter =
        !emptyAfter || position + 1 == text.size() || m_text.m_origin[std::size_t(position) + 1] < 0;
    // A paragraph with nothing in it would not be shown.
    const bool paragraphs = tags != u"<br>";
    if (paragraphs && emptyBefore)
        m_out += u"&nbsp;"_s;
    m_out += tags;
    if (paragraphs && emptyAfter && (!typedAfter || position + 1 == text.size()))
        m_out += u"&nbsp;"_s;
}

void BodyWriter::writeNew(int from, int to, const Style &around, qsizetype sourcePosition) {
    QChar previous = m_out.isEmpty() ? QChar() : m_out.back();
    int i = from;
    while (i < to) {
        if (isBlockEnd(m_text.m_current[i])) {
            writeBreak(i++, sourcePosition);
            previous = QChar();
            continue;
        }
        if (const QString bookmark = m_text.bookmarkAt(i); !bookmark.isNull()) {
            m_out += bookmark;
            ++i;
            continue;
        }
        const Style style = m_styles[std::size_t(i)];
        enterBlock(i);
        Tags tags;
        if (style.bold != around.bold)
            style.bold ? tags.add(u"<b>"_s, u"</b>"_s)
                       : tags.add(u"<span style=\"font-weight:normal\">"_s, u"</span>"_s);
        if (style.italic != around.italic)
            style.italic ? tags.add(u"<i>"_s, u"</i>"_s)
                         : tags.add(u"<span style=\"font-style:normal\">"_s, u"</span>"_s);
        if (style.underline && !around.underline)
            tags.add(u"<u>"_s, u"</u>"_s);
        m_out += tags.open;
        for (; i < to && !isBlockEnd(m_text.m_current[i]) && m_styles[std::size_t(i)] == style; ++i) {
            if (!m_text.bookmarkAt(i).isNull())
                break;
            m_out += escaped(m_text.m_current[i], previous);
            previous = m_text.m_current[i];
        }
        m_out += tags.close;
    }
}

bool BodyWriter::writeSolid(const Kept &kept) {
    enterBlock(kept.at);
    const BodyPiece &piece = m_text.m_source.solids()[kept.solid];
    Style wanted = m_styles[std::size_t(kept.at)];
    Style has = baseStyle(kept);
    wanted.link = has.link;
    const bool text = !piece.bookmark && piece.tag.isEmpty();
    if (text && (wanted != m_deltaWanted || has != m_deltaHas)) {
        closeDelta();
        if (wanted != has) {
            if (has.underline && !wanted.underline)
                return false; // nothing inside an underlined text can take its line away
            Tags tags;
            if (wanted.bold != has.bold)
                wanted.bold ? tags.add(u"<b>"_s, u"</b>"_s)
                            : tags.add(u"<span style=\"font-weight:normal\">"_s, u"</span>"_s);
            if (wanted.italic != has.italic)
                wanted.italic ? tags.add(u"<i>"_s, u"</i>"_s)
                              : tags.add(u"<span style=\"font-style:normal\">"_s, u"</span>"_s);
            if (wanted.underline != has.underline)
                tags.add(u"<u>"_s, u"</u>"_s);
            m_out += tags.open;
            m_deltaClose = tags.close;
        }
        m_deltaWanted = wanted;
        m_deltaHas = has;
    }
    m_out += m_text.m_source.textOf(piece);
    return true;
}

void BodyWriter::enterBlock(int position) {
    if (m_listOpen || !m_newList[std::size_t(m_blockAt[std::size_t(position)])])
        return;
    closeDelta();
    const bool continues = m_listClosedAt == m_out.size();
    if (continues)
        m_out.chop(QStringView(u"</li></ul>").size());
    m_out += continues ? u"</li><li>"_s : u"<ul><li>"_s;
    m_listOpen = true;
}

void BodyWriter::leaveBlock() {
    if (!m_listOpen)
        return;
    closeDelta();
    m_out += u"</li></ul>"_s;
    m_listOpen = false;
    m_listClosedAt = m_out.size();
}

void BodyWriter::closeDelta() {
    m_out += m_deltaClose;
    m_deltaClose.clear();
    m_deltaWanted = {};
    m_deltaHas = {};
}

} // namespace mailhost
