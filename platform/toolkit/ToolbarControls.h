// The control of an item in a tool-bar: a button, a space, or the item's own view with its label.
#pragma once

#include "platform/toolkit/ToolbarItem.h"

#include <QToolBar>
#include <QWidgetAction>

namespace platform {

// An item in one tool-bar. Triggered when the item's button is used.
class ToolbarAction : public QWidgetAction {
    Q_OBJECT
public:
    ToolbarAction(ToolbarItem *item, QToolBar *toolbar);
    // The item's button or view; nullptr while the action is not in the tool-bar.
    [[nodiscard]] QWidget *control();
    // Copies the item's image, label and tool tip to the action and its button. Call it after the action was
    // added to the tool-bar; it runs automatically when the item changes.
    void fill();

protected:
    // nullptr: the tool-bar makes a button.
    [[nodiscard]] QWidget *createWidget(QWidget *parent) override;

private:
    QPointer<ToolbarItem> m_item;
    QToolBar *m_toolbar; // the parent
};

// The view has the control name. A click on the label below it triggers the item's action as well.
class ToolbarViewCell : public QWidget {
    Q_OBJECT
public:
    ToolbarViewCell(ToolbarItem *item, QWidget *view, QToolBar *toolbar);
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
    bool m_showsLabel;
};

} // namespace platform
