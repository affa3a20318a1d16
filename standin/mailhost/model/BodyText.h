// The text that the person edits, tied to the HTML it came from.
#pragma once

#include "standin/mailhost/model/BodySource.h"

#include <QObject>
#include <QPointer>
#include <QTextCharFormat>
#include <QTextDocument>
#include <vector>

namespace mailhost {

// Shows HTML in a QTextDocument and gives it back. QTextDocument's own HTML rewrites everything and drops
// bookmarks; here only what the person changed is written anew, into the HTML as it came. What cannot be put
// into it that way (a paragraph taken out of a list, HTML whose text QTextDocument does not show as expected)
// is written by QTextDocument, bookmarks kept.
class BodyText : public QObject {
    Q_OBJECT
public:
    // The document is not owned and must outlive this.
    explicit BodyText(QTextDocument *document, QObject *parent = nullptr);

    // Replaces everything, also the undo history.
    void setHtml(const QString &html);
    // The HTML: the very text given to setHtml() while nothing is changed (or everything is undone).
    [[nodiscard]] QString html() const;
    [[nodiscard]] bool isUntouched() const;
    // The HTML of the bookmark at that place of the document, which has no width; a null text when there is
    // none.
    [[nodiscard]] QString bookmarkAt(int position) const;

Q_SIGNALS:
    void edited();

private:
    friend class BodyWriter;
    struct Style {
        bool bold = false;
        bool italic = false;
        bool underline = false;
        QString link;
        friend bool operator==(const Style &, const Style &) = default;
    };
    static Style styleOf(const QTextCharFormat &format);
    void followChange(int position);
    void placeBookmarks();
    void align();
    [[nodiscard]] std::vector<Style> styles() const;
    [[nodiscard]] std::vector<bool> listFlags() const; // of each block
    [[nodiscard]] QString rewrittenHtml() const;

    QPointer<QTextDocument> m_document;
    BodySource m_source;
    QString m_baseline;              // the document's raw text as loaded
    std::vector<Style> m_baseStyles; // of each character of m_baseline
    std::vector<bool> m_baseLists;   // of each block of m_baseline
    std::vector<int> m_solidAt;      // for each character of m_baseline its solid piece, or -1
    bool m_aligned = false;
    QString m_current;         // the document's raw text now
    std::vector<int> m_origin; // for each character of m_current its place in m_baseline, or -1
    bool m_loading = false;
    mutable QString m_cache;
    mutable bool m_cacheValid = false;
};

} // namespace mailhost
