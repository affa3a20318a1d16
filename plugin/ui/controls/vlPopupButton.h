// The strip's button that opens a menu.
#pragma once

#include "plugin/ui/controls/StripButton.h"

// A click, Space, Enter, the Down key and the mnemonic open the menu; the button has no other action. The
// menu is not owned and may be deleted.
class vlPopupButton : public StripButton {
    Q_OBJECT
public:
    explicit vlPopupButton(QWidget *parent = nullptr)
        : StripButton(parent) {}

    // The menu opens at the top left corner of this rectangle; in the button's coordinates, y downwards.
    [[nodiscard]] QRectF iconRect() const;

protected:
    [[nodiscard]] QRectF imageRectangle() const override;
    void paintTitle(QPainter &painter) const override;
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void popUpMenu();
};
