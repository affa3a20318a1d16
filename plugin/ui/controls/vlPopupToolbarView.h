// The view of a tool-bar item that opens a menu.
#pragma once

#include "plugin/ui/controls/bundleImage.h"

#include <QAbstractButton>
#include <QMenu>
#include <memory>

// The image fills the whole view. A press, Space, Enter and the Down key open the menu at the view's bottom
// left corner. Set a text for screen readers.
class vlPopupToolbarView : public QAbstractButton {
    Q_OBJECT
public:
    explicit vlPopupToolbarView(QWidget *parent = nullptr);

    void setImage(const BundleImage &image);
    void setMenu(std::shared_ptr<QMenu> menu); // shared with the caller; may be null
    [[nodiscard]] QMenu *menu() const { return mMenu.get(); }
    void popUpMenu(); // does nothing without a menu
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    BundleImage mImage;
    std::shared_ptr<QMenu> mMenu;
};
