#include "standin/mailhost/windows/grid/TileRename.h"

#include <QKeyEvent>

namespace mailhost {

TileRename::TileRename(QWidget *surface, QWidget *returnTo, const QString &subject)
    : QLineEdit(subject, surface)
    , m_returnTo(returnTo) {
    setAccessibleName(tr("Subject"));
    selectAll();
    connect(this, &QLineEdit::editingFinished, this, &TileRename::commit);
}

void TileRename::abandon() {
    if (m_over)
        return;
    m_over = true;
    // Done before hiding; otherwise the focus would move to the next control in the window.
    if (hasFocus() && m_returnTo)
        m_returnTo->setFocus(Qt::OtherFocusReason);
    hide();
    deleteLater();
}

void TileRename::commit() {
    if (m_over)
        return;
    const QString subject = text();
    abandon();
    Q_EMIT committed(subject);
}

void TileRename::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape)
        abandon();
    else
        QLineEdit::keyPressEvent(event);
    event->accept(); // unused keys must not reach the grid
}

} // namespace mailhost
