// The image-over-title button of the strip.
#pragma once

#include "plugin/ui/controls/buttonFace.h"

#include <QPushButton>

// Draws nothing while it has no image or no title. Tab focuses it; Space and Enter press it.
class vlSettingsButton : public QPushButton {
    Q_OBJECT
public:
    explicit vlSettingsButton(QWidget *parent = nullptr);

    void setImage(const BundleImage &image);
    // Also its accessible name; "&" marks its mnemonic.
    void setTitle(const QString &title);
    [[nodiscard]] const QString &title() const { return m_face.mLable; }
    [[nodiscard]] bool isEntered() const { return m_bEntered; }
    [[nodiscard]] double titleX() const { return m_face.titleX(width()); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void updateRect();
    [[nodiscard]] QRectF imageRectangle() const;

    ButtonFace m_face;
    HoverHighlight m_highlight;
    bool m_bEntered = false;
};
