// The controls of a tool-bar side by side, and a button for those that do not fit.
#pragma once

#include "platform/toolkit/ToolbarArrangement.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QList>
#include <QToolButton>
#include <QWidget>

namespace platform {

inline const QString toolbarOverflowButtonName = u"toolbarOverflowButton"_s;

class ToolbarRow : public QWidget {
    Q_OBJECT
public:
    explicit ToolbarRow(QWidget *parent = nullptr);

    // Controls of items that stay are kept, with the keyboard's focus.
    void show(const QList<QPointer<ToolbarItem>> &items, ToolbarDisplayMode mode);
    [[nodiscard]] QWidget *controlFor(const QString &identifier) const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    struct Cell {
        QPointer<ToolbarItem> item;
        QString identifier;
        QWidget *cell; // fills the cell; owned as a child
    };
    [[nodiscard]] QWidget *makeCell(ToolbarItem *item) const;
    [[nodiscard]] int widthOf(const Cell &cell) const;
    void retire(QWidget *cell);
    void orderFocus();
    void arrange();
    void fillOverflowMenu();

    ToolbarDisplayMode m_mode = ToolbarDisplayMode::IconAndText;
    QList<Cell> m_cells;
    qsizetype m_shown = 0; // the cells from here on do not fit
    QToolButton *m_overflow;
    QMenu *m_overflowMenu;
};

} // namespace platform
