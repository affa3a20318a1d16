// The strip's button that opens a menu.
#pragma once

#include "plugin/ui/controls/buttonFace.h"

#include <QPushButton>

// Draws nothing while it has no image or no title. A press with the pointer over it, Space, Enter, the Down
// key or its mnemonic open the menu; only the menu's items act. The menu is not owned and may die.
class vlPopupButton : public QPushButton {
    Q_OBJECT
public:
    explicit vlPopupButton(QWidget *parent = nullptr);

    void setImage(const BundleImage &image);
    // Also its accessible name; "&" marks its mnemonic.
    void setTitle(const QString &title);
    [[nodiscard]] const QString &title() const { return m_face.mLable; }
    [[nodiscard]] bool isEntered() const { return m_bEntered; }
    // The menu opens at its top left corner; in the button's coordinates, y downwards.
    [[nodiscard]] const QRectF &iconRect() const { return m_iconRect; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void updateRect();
    void popUpMenu();
    [[nodiscard]] QRectF imageRectangle() const;
    [[nodiscard]] QRectF anchorOf(const QRectF &imageRectangle) const;

    ButtonFace m_face;
    HoverHighlight m_highlight;
    QRectF m_iconRect;
    bool m_bEntered = false;
};
