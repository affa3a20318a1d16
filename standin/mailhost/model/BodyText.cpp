#include "standin/mailhost/model/BodyText.h"

#include "standin/mailhost/model/BodyWriter.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextList>
#include <QTextObjectInterface>
#include <algorithm>
#include <numeric>

namespace mailhost {

namespace {

constexpr int bookmarkObject = QTextFormat::UserObject + 1;
constexpr int bookmarkHtml = QTextFormat::UserProperty + 1;

// Takes no room and draws nothing.
class BookmarkObject : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    using QObject::QObject;
    QSizeF intrinsicSize(QTextDocument *, int, const QTextFormat &) override { return {0, 0}; }
    void drawObject(QPainter *, const QRectF &, QTextDocument *, int, const QTextFormat &) override {}
};

bool isStructure(QChar c) {
    return isHtmlSpace(c) || c == QChar::ParagraphSeparator || c == QChar(0xfdd0) || c == QChar(0xfdd1);
}

QTextCharFormat formatAt(QTextDocument *document, int position) {
    QTextCursor cursor(document);
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

void replaceCharacter(QTextDocument *document, int position, const QString &text,
                      const QTextCharFormat &format) {
    QTextCursor cursor(document);
    cursor.setPosition(position);
    cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
    cursor.insertText(text, format);
}

// The toolkit writes a rule without what was typed into its line: that line becomes one of its own, above the
// rule.
void parkTextOfRules(QTextDocument *document) {
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat rule = block.blockFormat();
        if (!rule.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth) || block.length() <= 1)
            continue;
        QTextBlockFormat plain = rule;
        plain.clearProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
        QTextCursor cursor(block);
        cursor.setBlockFormat(plain);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertBlock(rule);
    }
}

} // namespace

BodyText::BodyText(QTextDocument *document, QObject *parent)
    : QObject(parent)
    , m_document(document) {
    document->documentLayout()->registerHandler(bookmarkObject, new BookmarkObject(this));
    connect(document, &QTextDocument::contentsChange, this, &BodyText::followChange);
}

BodyText::Style BodyText::styleOf(const QTextCharFormat &format) {
    return {format.fontWeight() >= QFont::DemiBold, format.fontItalic(),
            format.fontUnderline() && !format.isAnchor(),
            format.isAnchor() ? format.anchorHref() : QString()};
}

void BodyText::setHtml(const QString &html) {
    m_loading = true;
    m_source = BodySource(html);
    m_document->setUndoRedoEnabled(false);
    m_document->setHtml(m_source.displayHtml());
    placeBookmarks();
    m_document->setUndoRedoEnabled(true);
    m_document->setModified(false);
    m_loading = false;
    m_baseline = m_document->toRawText();
    m_current = m_baseline;
    m_baseStyles = styles();
    m_baseLists = listFlags();
    m_origin.resize(std::size_t(m_baseline.size()));
    std::iota(m_origin.begin(), m_origin.end(), 0);
    m_cacheValid = false;
    align();
    Q_EMIT edited();
}

void BodyText::placeBookmarks() {
    const QString raw = m_document->toRawText();
    for (const BodyPiece &piece : m_source.solids()) {
        if (!piece.bookmark)
            continue;
        const qsizetype position = raw.indexOf(piece.character);
        if (position < 0)
            continue;
        QTextCharFormat format;
        format.setObjectType(bookmarkObject);
        format.setProperty(bookmarkHtml, m_source.textOf(piece));
        replaceCharacter(m_document, int(position), QString(QChar(QChar::ObjectReplacementCharacter)),
                         format);
    }
}

void BodyText::align() {
    m_solidAt.assign(std::size_t(m_baseline.size()), -1);
    m_aligned = false;
    qsizetype next = 0;
    const QList<BodyPiece> &solids = m_source.solids();
    for (qsizetype i = 0; i < m_baseline.size(); ++i) {
        const QChar c = m_baseline[i];
        if (isStructure(c))
            continue;
        if (next == solids.size())
            return;
        const BodyPiece &solid = solids[next];
        const QChar expected = solid.bookmark ? QChar(QChar::ObjectReplacementCharacter) : solid.character;
        if (!expected.isNull() && expected != c)
            return;
        m_solidAt[std::size_t(i)] = int(next++);
    }
    m_aligned = next == solids.size();
}

void BodyText::followChange(int position) {
    if (m_loading || !m_document)
        return;
    const QString now = m_document->toRawText();
    m_cacheValid = false;
    const qsizetype shorter = std::min(now.size(), m_current.size());
    qsizetype longestPrefix = 0;
    while (longestPrefix < shorter && now[longestPrefix] == m_current[longestPrefix])
        ++longestPrefix;
    qsizetype longestSuffix = 0;
    while (longestSuffix < shorter &&
           now[now.size() - 1 - longestSuffix] == m_current[m_current.size() - 1 - longestSuffix])
        ++longestSuffix;
    // Among equal characters side by side the place of the change tells which one is new. It may also lie far
    // ahead of the change, since the document counts the formats that it touches.
    const qsizetype earliest = std::min(longestPrefix, shorter - longestSuffix);
    const qsizetype prefix = std::clamp<qsizetype>(position, earliest, longestPrefix);
    const qsizetype suffix = std::min(longestSuffix, shorter - prefix);
    const auto begin = m_origin.begin() + prefix;
    m_origin.erase(begin, m_origin.end() - suffix);
    m_origin.insert(m_origin.begin() + prefix, std::size_t(now.size() - prefix - suffix), -1);
    m_current = now;
    Q_EMIT edited();
}

std::vector<BodyText::Style> BodyText::styles() const {
    std::vector<Style> all(std::size_t(m_document->characterCount() - 1));
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const Style style = styleOf(it.fragment().charFormat());
            const auto from = std::size_t(it.fragment().position());
            std::fill_n(all.begin() + std::ptrdiff_t(from), it.fragment().length(), style);
        }
    }
    return all;
}

std::vector<bool> BodyText::listFlags() const {
    std::vector<bool> flags;
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next())
        flags.push_back(block.textList() != nullptr);
    return flags;
}

bool BodyText::isUntouched() const {
    return !m_document || (m_current == m_baseline && styles() == m_baseStyles && listFlags() == m_baseLists);
}

QString BodyText::bookmarkAt(int position) const {
    if (!m_document || position < 0 || position >= m_document->characterCount() - 1 ||
        m_document->characterAt(position) != QChar::ObjectReplacementCharacter)
        return {};
    return formatAt(m_document, position).property(bookmarkHtml).toString();
}

QString BodyText::html() const {
    if (m_cacheValid)
        return m_cache;
    if (isUntouched()) {
        m_cache = m_source.html();
    } else {
        const std::optional<QString> written = m_aligned ? BodyWriter(*this).write() : std::nullopt;
        m_cache = written ? *written : rewrittenHtml();
    }
    m_cacheValid = true;
    return m_cache;
}

QString BodyText::rewrittenHtml() const {
    const std::unique_ptr<QTextDocument> copy(m_document->clone());
    parkTextOfRules(copy.get());
    QStringList bookmarks;
    for (int i = 0; i < copy->characterCount() - 1; ++i) {
        if (copy->characterAt(i) != QChar::ObjectReplacementCharacter)
            continue;
        const QTextCharFormat format = formatAt(copy.get(), i);
        if (format.objectType() != bookmarkObject)
            continue;
        replaceCharacter(copy.get(), i, QString(QChar(char16_t(firstBookmarkCharacter + bookmarks.size()))),
                         {});
        bookmarks.append(format.property(bookmarkHtml).toString());
    }
    QString html = copy->toHtml();
    for (qsizetype i = 0; i < bookmarks.size(); ++i)
        html.replace(QChar(char16_t(firstBookmarkCharacter + i)), bookmarks[i]);
    return html;
}

} // namespace mailhost

#include "BodyText.moc"
