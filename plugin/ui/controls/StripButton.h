// The base class of both kinds of button in the strip: picture, title and hover highlight.
#pragma once

#include "plugin/ui/controls/buttonFace.h"

#include <QPushButton>

// Draws nothing while it has no image or no title.
class StripButton : public QPushButton {
    Q_OBJECT
public:
    void setImage(const BundleImage &image);
    // Also its accessible name; "&" marks its mnemonic.
    void setTitle(const QString &title);
    [[nodiscard]] const QString &title() const { return m_face.mLable; }
    // Whether the button reacts to the pointer that is over it.
    [[nodiscard]] bool isEntered() const { return m_bEntered && canBeEntered(); }

protected:
    explicit StripButton(QWidget *parent);

    // In the button's coordinates, y downwards.
    [[nodiscard]] virtual QRectF imageRectangle() const = 0;
    virtual void paintTitle(QPainter &painter) const = 0;
    [[nodiscard]] virtual bool canBeEntered() const { return true; }
    [[nodiscard]] const ButtonFace &face() const { return m_face; }

    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setEntered(bool isEntered);
    void updateRect();

    ButtonFace m_face;
    HoverHighlight m_highlight;
    bool m_bEntered = false; // the pointer is over the button
};
