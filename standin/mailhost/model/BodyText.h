// The text that the user edits, connected with its original HTML.
#pragma once

#include "standin/mailhost/model/BodyWriter.h"

#include <QObject>
#include <QPointer>
#include <QTextDocument>

namespace mailhost {

// Shows HTML in a QTextDocument and returns it. QTextDocument's own HTML rewrites everything and drops
// bookmarks; this class writes only the user's changes, into the original HTML. If that is not possible (a
// paragraph taken out of a list, HTML whose text QTextDocument shows differently), QTextDocument writes it,
// with the bookmarks kept.
class BodyText : public QObject {
    Q_OBJECT
public:
    // The document is not owned and must outlive this object.
    explicit BodyText(QTextDocument *document, QObject *parent = nullptr);

    // Replaces everything, also the undo history.
    void setHtml(const QString &html);
    // The HTML: exactly the text given to setHtml() if nothing is changed (or everything is undone).
    [[nodiscard]] QString html() const;
    // The HTML of the zero-width bookmark at that position of the document; null if there is none.
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
    bool m_aligned = false; // the document shows the text of the HTML as expected
    QString m_current;      // the document's raw text now
    QList<int> m_origin;    // for each character of m_current its place in the loaded text, or -1
    bool m_loading = false;
    mutable std::optional<QString> m_cache; // no value: has to be written again
};

} // namespace mailhost
