#include "standin/mailhost/model/BodyText.h"

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

// Has no size and draws nothing.
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

BodyStyle styleOf(const QTextCharFormat &format) {
    return {format.fontWeight() >= QFont::DemiBold, format.fontItalic(),
            format.fontUnderline() && !format.isAnchor(),
            format.isAnchor() ? format.anchorHref() : QString()};
}

// The toolkit writes a rule without the text typed into its line, so the text becomes a separate line above
// the rule.
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

void BodyText::setHtml(const QString &html) {
    m_loading = true;
    m_loaded.source = BodySource(html);
    m_document->setUndoRedoEnabled(false);
    m_document->setHtml(m_loaded.source.displayHtml());
    placeBookmarks();
    m_document->setUndoRedoEnabled(true);
    m_document->setModified(false);
    m_loading = false;
    m_loaded.state = stateNow();
    m_current = m_loaded.state.text;
    m_origin.resize(m_current.size());
    std::iota(m_origin.begin(), m_origin.end(), 0);
    m_cache.reset();
    align();
    Q_EMIT edited();
}

void BodyText::placeBookmarks() {
    const QString raw = m_document->toRawText();
    for (const BodyPiece &piece : m_loaded.source.solids()) {
        if (!piece.bookmark)
            continue;
        const qsizetype position = raw.indexOf(piece.character);
        if (position < 0)
            continue;
        QTextCharFormat format;
        format.setObjectType(bookmarkObject);
        format.setProperty(bookmarkHtml, m_loaded.source.textOf(piece));
        replaceCharacter(m_document, int(position), QString(QChar(QChar::ObjectReplacementCharacter)),
                         format);
    }
}

void BodyText::align() {
    const QString &text = m_loaded.state.text;
    m_loaded.solidAt = QList<int>(text.size(), -1);
    m_aligned = false;
    qsizetype next = 0;
    const QList<BodyPiece> &solids = m_loaded.source.solids();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isStructure(c))
            continue;
        if (next == solids.size())
            return;
        const BodyPiece &solid = solids[next];
        const QChar expected = solid.bookmark ? QChar(QChar::ObjectReplacementCharacter) : solid.character;
        if (expected != c)
            return;
        m_loaded.solidAt[i] = int(next++);
    }
    m_aligned = next == solids.size();
}

void BodyText::followChange(int position) {
    if (m_loading || !m_document)
        return;
    const QString now = m_document->toRawText();
    m_cache.reset();
    const qsizetype shorter = std::min(now.size(), m_current.size());
    qsizetype longestPrefix = 0;
    while (longestPrefix < shorter && now[longestPrefix] == m_current[longestPrefix])
        ++longestPrefix;
    qsizetype longestSuffix = 0;
    while (longestSuffix < shorter &&
           now[now.size() - 1 - longestSuffix] == m_current[m_current.size() - 1 - longestSuffix])
        ++longestSuffix;
    // In a run of equal characters the reported position decides which one is new. The position may be far
    // ahead of the change, because the document also counts changed formats.
    const qsizetype earliest = std::min(longestPrefix, shorter - longestSuffix);
    const qsizetype prefix = std::clamp<qsizetype>(position, earliest, longestPrefix);
    const qsizetype suffix = std::min(longestSuffix, shorter - prefix);
    m_origin.remove(prefix, m_origin.size() - suffix - prefix);
    m_origin.insert(prefix, now.size() - prefix - suffix, -1);
    m_current = now;
    Q_EMIT edited();
}

BodyState BodyText::stateNow() const {
    BodyState state{m_document->toRawText(), {}, {}};
    state.styles.resize(state.text.size());
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        state.lists.append(block.textList() != nullptr);
        for (auto it = block.begin(); !it.atEnd(); ++it)
            std::fill_n(state.styles.begin() + it.fragment().position(), it.fragment().length(),
                        styleOf(it.fragment().charFormat()));
    }
    return state;
}

QString BodyText::bookmarkAt(int position) const {
    if (!m_document || position < 0 || position >= m_document->characterCount() - 1 ||
        m_document->characterAt(position) != QChar::ObjectReplacementCharacter)
        return {};
    return formatAt(m_document, position).property(bookmarkHtml).toString();
}

QString BodyText::html() const {
    if (!m_cache)
        m_cache = m_document ? writtenNow() : m_loaded.source.html();
    return *m_cache;
}

QString BodyText::writtenNow() const {
    EditedBody now{stateNow(), m_origin, {}};
    if (now.state == m_loaded.state)
        return m_loaded.source.html();
    for (int i = 0; i < m_current.size(); ++i)
        if (const QString bookmark = bookmarkAt(i); !bookmark.isNull())
            now.bookmarks.insert(i, bookmark);
    const std::optional<QString> written = m_aligned ? writtenBody(m_loaded, now) : std::nullopt;
    return written ? *written : rewrittenHtml();
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
