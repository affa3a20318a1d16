// Opening of a control's menu.
#pragma once

#include <QMenu>

// Whether the key opens the menu of a control.
[[nodiscard]] inline bool opensMenu(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Select || key == Qt::Key_Return || key == Qt::Key_Enter ||
           key == Qt::Key_Down;
}

// Opens the menu at the view's lower left corner, because a key press has no position. Does nothing if either
// is nullptr.
inline void popUpBelow(QMenu *menu, const QWidget *view) {
    if (menu && view)
        menu->popup(view->mapToGlobal(QPoint(0, view->height())));
}
