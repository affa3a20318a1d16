// The image-over-title button of the strip.
#pragma once

#include "plugin/ui/controls/StripButton.h"

// It takes the focus with Tab; Space and Enter press it.
class vlSettingsButton : public StripButton {
    Q_OBJECT
public:
    explicit vlSettingsButton(QWidget *parent = nullptr)
        : StripButton(parent) {}

    [[nodiscard]] double titleX() const { return face().titleX(width()); }

protected:
    [[nodiscard]] QRectF imageRectangle() const override;
    void paintTitle(QPainter &painter) const override;
    [[nodiscard]] bool canBeEntered() const override { return isEnabled(); }
    void keyPressEvent(QKeyEvent *event) override;
};
