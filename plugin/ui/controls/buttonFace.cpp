#include "plugin/ui/controls/buttonFace.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>

namespace {

constexpr double characterWidth = 5.8; // points for each UTF-16 unit of a title
constexpr int titleSize = 11;          // points of a frame, which are Qt's device-independent pixels
constexpr double highlightMargin = 3;
constexpr double focusRadius = 4;
constexpr int darkBelow = 128; // lightness of a window

const QString titleFamily = QStringLiteral("Lucida Grande");
const QString imageHighlightLeft = QStringLiteral("settingbg_left");
const QString imageHighlightCenter = QStringLiteral("settingbg_center");
const QString imageHighlightRight = QStringLiteral("settingbg_right");

bool isDark(const QWidget &widget) {
    return widget.palette().color(QPalette::Window).lightness() < darkBelow;
}

} // namespace

void ButtonFace::setTitle(const QString &text) {
    mLable = QLatin1String("");
    mnemonic = -1;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isMark = text[at] == u'&' && at + 1 < text.size();
        if (isMark && text[++at] != u'&' && mnemonic < 0)
            mnemonic = int(mLable.size());
        mLable += text[at];
    }
}

double ButtonFace::titleX(double width) const {
    return (width - characterWidth * double(mLable.size())) / 2;
}

QFont ButtonFace::titleFont() {
    QFont font;
    font.setFamilies({titleFamily, QApplication::font().family()});
    font.setPixelSize(titleSize);
    return font;
}

HoverHighlight::HoverHighlight()
    : mLeftBGImage(imageHighlightLeft)
    , mCenterBGImage(imageHighlightCenter)
    , mRightBGImage(imageHighlightRight) {}

void HoverHighlight::draw(QPainter &painter, const QRectF &imageRectangle) const {
    const double top = imageRectangle.top() - highlightMargin;
    const double height = imageRectangle.height() + 2 * highlightMargin;
    mLeftBGImage.draw(painter, {imageRectangle.left() - highlightMargin, top, highlightMargin, height});
    mCenterBGImage.draw(painter, {imageRectangle.left(), top, imageRectangle.width(), height});
    mRightBGImage.draw(painter, {imageRectangle.right(), top, highlightMargin, height});
}

QColor textColor(const QWidget &widget, bool enabled) {
    if (isDark(widget))
        return widget.palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    return enabled ? Qt::black : Qt::darkGray; // half way between black and white
}

void drawTitle(QPainter &painter, const QAbstractButton &button, const ButtonFace &face, double y,
               TitleAnchor anchor) {
    const QFont font = ButtonFace::titleFont();
    const QFontMetricsF metrics(font, painter.device());
    const double baseline = anchor == TitleAnchor::Top ? y + metrics.ascent() : y - metrics.descent();
    const QPointF start(face.titleX(button.width()), baseline);
    painter.setFont(font);
    painter.setPen(textColor(button, button.isEnabled()));
    painter.drawText(start, face.mLable);
    if (face.mnemonic < 0 || !button.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &button))
        return;
    const double left = start.x() + metrics.horizontalAdvance(face.mLable.left(face.mnemonic));
    const double width = metrics.horizontalAdvance(face.mLable[face.mnemonic]);
    const double line = baseline + metrics.underlinePos();
    painter.drawLine(QPointF(left, line), QPointF(left + width, line));
}

void drawFocusMark(QPainter &painter, const QAbstractButton &button, const QRectF &imageRectangle) {
    if (!button.hasFocus())
        return;
    const double margin = highlightMargin; // further out it would touch the title
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(button.palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(imageRectangle.adjusted(-margin, -margin, margin, margin), focusRadius,
                            focusRadius);
    painter.restore();
}
