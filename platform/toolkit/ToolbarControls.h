// What a tool-bar shows for one item: a button, or the item's own view with its label.
#pragma once

#include "platform/toolkit/ToolbarArrangement.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QToolButton>

namespace platform {

inline constexpr int toolbarImageSide = 32; // points

// Bears the item's control name itself.
class ToolbarButton : public QToolButton {
    Q_OBJECT
public:
    ToolbarButton(ToolbarItem *item, ToolbarDisplayMode mode);

private:
    void fill();
    QPointer<ToolbarItem> m_item;
    ToolbarDisplayMode m_mode;
};

// The view bears the control name. The label below it belongs to the item too: a click on it is its action.
class ToolbarViewCell : public QWidget {
    Q_OBJECT
public:
    ToolbarViewCell(ToolbarItem *item, QWidget *view, ToolbarDisplayMode mode);
    [[nodiscard]] QWidget *view() const { return m_view; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void fill();
    [[nodiscard]] QSize viewSize() const;
    QPointer<ToolbarItem> m_item;
    QPointer<QWidget> m_view;
    ToolbarDisplayMode m_mode;
};

} // namespace platform
