// What a button of the strip looks like: image, title, highlight and focus mark.
#pragma once

#include "plugin/ui/controls/bundleImage.h"

#include <QAbstractButton>
#include <QFont>

// A title as it is drawn on a button of one width.
struct TitleLine {
    QFont font;
    QString text; // ends in an ellipsis when the title does not fit
    double x = 0;
    double ascent = 0;
    double descent = 0;
    double underlineX = 0;
    double underlineWidth = 0; // 0: no mnemonic, or it does not show
    double underlineY = 0;     // below the baseline
};

// A button's face in Qt's coordinates: y grows downwards, the rectangles are inside the button's own.
struct ButtonFace {
    BundleImage mImage;
    QString mLable;    // the title, without the mark of its mnemonic; null: missing
    int mnemonic = -1; // position of the underlined character; -1: none

    // Nothing is drawn while either is missing.
    [[nodiscard]] bool isComplete() const { return !mImage.isNull() && !mLable.isNull(); }
    void setTitle(const QString &text); // "&" marks the mnemonic, "&&" stands for "&"

    // Where the title begins on a button of that width: a fixed width for each UTF-16 unit, not measured.
    [[nodiscard]] double titleX(double width) const;
    // Measured once, until the title, the width or the desktop's font changes.
    [[nodiscard]] const TitleLine &titleLine(double width) const;

private:
    [[nodiscard]] TitleLine measured(double width) const;
    mutable TitleLine m_line;
    mutable double m_lineWidth = -1;
    mutable QString m_lineFamily;
};

// The highlight behind the image while the pointer is over the button.
struct HoverHighlight {
    HoverHighlight();
    void draw(QPainter &painter, const QRectF &imageRectangle) const;

    BundleImage mLeftBGImage;
    BundleImage mCenterBGImage;
    BundleImage mRightBGImage;
};

enum class TitleAnchor { Top, Bottom }; // which edge of the line of text `y` names

void drawTitle(QPainter &painter, const QAbstractButton &button, const ButtonFace &face, double y,
               TitleAnchor anchor);
void drawFocusMark(QPainter &painter, const QAbstractButton &button, const QRectF &imageRectangle);
// Black and gray, or the palette's own colours where black would not be seen.
[[nodiscard]] QColor textColor(const QWidget &widget, bool enabled);
