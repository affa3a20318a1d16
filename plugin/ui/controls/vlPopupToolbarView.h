// The view of a tool-bar item that opens a menu.
#pragma once

#include "plugin/ui/controls/bundleImage.h"

#include <QAbstractButton>
#include <QMenu>
#include <memory>

// Shows its image over its whole area. A press, Space, Enter and the Down key open the menu at its bottom
// left corner. Give it a text: it is what a screen reader says.
class vlPopupToolbarView : public QAbstractButton {
    Q_OBJECT
public:
    explicit vlPopupToolbarView(QWidget *parent = nullptr);

    void setImage(const BundleImage &image);
    void setMenu(std::shared_ptr<QMenu> menu); // kept by the view too; may be null
    [[nodiscard]] QMenu *menu() const { return mMenu.get(); }
    void popUpMenu(); // nothing without a menu
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QPixmap disabledImage(qreal ratio) const;

    BundleImage mImage;
    std::shared_ptr<QMenu> mMenu;
};
