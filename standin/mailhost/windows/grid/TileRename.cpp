#include "standin/mailhost/windows/grid/TileRename.h"

#include "platform/Literals.h"

#include <QKeyEvent>

namespace mailhost {

namespace {

bool endsIt(const QKeyEvent *event) {
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape;
}

} // namespace

TileRename::TileRename(QWidget *surface, QWidget *returnTo, const QString &subject)
    : QLineEdit(subject, surface)
    , m_returnTo(returnTo) {
    setObjectName(u"tileRename"_s);
    setAccessibleName(tr("Subject"));
    selectAll();
}

void TileRename::abandon() {
    if (m_over)
        return;
    m_over = true;
    // Before it hides: else the keyboard would go to whatever comes next in the window.
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

bool TileRename::event(QEvent *event) {
    // Not the window's shortcuts, while it is open.
    if (event->type() == QEvent::ShortcutOverride && endsIt(static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void TileRename::keyPressEvent(QKeyEvent *event) {
    if (!endsIt(event)) {
        QLineEdit::keyPressEvent(event);
        event->accept(); // the keys that it has no use for are not the grid's either
        return;
    }
    event->accept();
    if (event->key() == Qt::Key_Escape)
        abandon();
    else
        commit();
}

void TileRename::focusOutEvent(QFocusEvent *event) {
    QLineEdit::focusOutEvent(event);
    const bool comesBack =
        event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
    if (!comesBack)
        commit();
}

} // namespace mailhost
