// The line in which a tile's subject is written anew, in its place. Return and leaving it commit, Escape
// abandons. Reports once, and is gone after that.
#pragma once

#include <QLineEdit>
#include <QPointer>

namespace mailhost {

class TileRename : public QLineEdit {
    Q_OBJECT
public:
    // The keyboard goes to `returnTo` when it ends while it has it.
    TileRename(QWidget *surface, QWidget *returnTo, const QString &subject);
    // Ends it: nothing is reported any more.
    void abandon();
    void commit();
    [[nodiscard]] bool isOver() const { return m_over; }

Q_SIGNALS:
    void committed(const QString &subject);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QPointer<QWidget> m_returnTo;
    bool m_over = false;
};

} // namespace mailhost
