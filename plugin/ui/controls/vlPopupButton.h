// The strip's button that opens a menu.
#pragma once

#include "plugin/ui/controls/StripButton.h"

// A press with the pointer over it, Space, Enter, the Down key or its mnemonic open the menu; only the menu's
// items act. The menu is not owned and may die.
class vlPopupButton : public StripButton {
    Q_OBJECT
public:
    explicit vlPopupButton(QWidget *parent = nullptr);

    // The menu opens at its top left corner; in the button's coordinates, y downwards.
    [[nodiscard]] QRectF iconRect() const;

protected:
    [[nodiscard]] QRectF imageRectangle() const override;
    void paintTitle(QPainter &painter) const override;
    [[nodiscard]] bool canBeEntered() const override { return isVisible(); }
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void popUpMenu();
};
