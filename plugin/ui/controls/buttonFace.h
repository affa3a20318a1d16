// The look of a button in the strip: image, title, highlight and focus mark.
#pragma once

#include "plugin/ui/controls/bundleImage.h"

#include <QAbstractButton>
#include <QFont>
#include <optional>
#include <utility>

// The layout of a title on a button of one width.
struct TitleLine {
    QFont font;
    QString text; // ends with an ellipsis if the title does not fit
    double x = 0;
    double ascent = 0;
    double descent = 0;
    double underlineX = 0;
    double underlineWidth = 0; // 0: no visible mnemonic
    double underlineY = 0;     // distance below the baseline
};

// A button's face in Qt's coordinates: y grows downwards, the rectangles are inside the button's own.
struct ButtonFace {
    BundleImage mImage;
    QString mLable;                    // the title without the "&" of its mnemonic; null: missing
    std::optional<qsizetype> mnemonic; // position of the underlined character

    // The button draws nothing unless it has both.
    [[nodiscard]] bool isComplete() const { return !mImage.isNull() && !mLable.isNull(); }
    void setTitle(const QString &text); // "&" marks the mnemonic, "&&" stands for "&"

    // The x position of the title on a button of that width. It assumes a fixed width for each UTF-16 unit
    // and does not measure.
    [[nodiscard]] double titleX(double width) const;
    // Measured again only if the title, the width or the desktop's font has changed.
    [[nodiscard]] const TitleLine &titleLine(double width) const;

private:
    [[nodiscard]] TitleLine measured(double width) const;
    mutable TitleLine m_line;
    mutable std::pair<double, QString> m_measuredFor; // width and font family; empty: not measured
};

// The highlight behind the image while the pointer is over the button.
struct HoverHighlight {
    HoverHighlight();
    void draw(QPainter &painter, const QRectF &imageRectangle) const;

    BundleImage mLeftBGImage;
    BundleImage mCenterBGImage;
    BundleImage mRightBGImage;
};

enum class TitleAnchor { Top, Bottom }; // the edge of the line of text at `y`

void drawTitle(QPainter &painter, const QAbstractButton &button, const ButtonFace &face, double y,
               TitleAnchor anchor);
void drawFocusMark(QPainter &painter, const QAbstractButton &button, const QRectF &imageRectangle);
// Black or gray, or the palette's colours if black would not be visible.
[[nodiscard]] QColor textColor(const QWidget &widget, bool enabled);
