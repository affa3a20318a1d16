// The in-place editor of a tile's subject. Return and the loss of focus commit, Escape cancels. Reports once
// and then deletes itself.
#pragma once

#include <QLineEdit>
#include <QPointer>

namespace mailhost {

class TileRename : public QLineEdit {
    Q_OBJECT
public:
    // If it has the focus at its end, `returnTo` gets the focus.
    TileRename(QWidget *surface, QWidget *returnTo, const QString &subject);
    // Ends the editor without a report.
    void abandon();
    void commit();

Q_SIGNALS:
    void committed(const QString &subject);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QPointer<QWidget> m_returnTo;
    bool m_over = false;
};

} // namespace mailhost
