// The text that the user edits, tied to the HTML it came from.
#pragma once

#include "standin/mailhost/model/BodyWriter.h"

#include <QObject>
#include <QPointer>
#include <QTextDocument>

namespace mailhost {

// Shows HTML in a QTextDocument and gives it back. QTextDocument's own HTML rewrites everything and drops
// bookmarks; here only what the user changed is written anew, into the HTML as it came. What cannot be put
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
    // The HTML of the bookmark at that place of the document, which has no width; a null text when there is
    // none.
    [[nodiscard]] QString bookmarkAt(int position) const;

Q_SIGNALS:
    void edited();

private:
    void followChange(int position);
    void placeBookmarks();
    void align();
    [[nodiscard]] BodyState stateNow() const;
    [[nodiscard]] QString writtenNow() const;
    [[nodiscard]] QString rewrittenHtml() const;

    QPointer<QTextDocument> m_document;
    LoadedBody m_loaded;
    bool m_aligned = false;    // the document shows the text of the HTML as expected
    QString m_current;         // the document's raw text now
    std::vector<int> m_origin; // for each character of m_current its place in the loaded text, or -1
    bool m_loading = false;
    mutable std::optional<QString> m_cache; // none: to be written anew
};

} // namespace mailhost
