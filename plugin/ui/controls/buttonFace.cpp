#include "plugin/ui/controls/buttonFace.h"

#include "platform/Literals.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace {

constexpr double characterWidth = 5.8; // points per UTF-16 unit of a title
constexpr int titleSize = 11;          // points of a frame, which are Qt's device-independent pixels
constexpr double highlightMargin = 3;

const QString titleFamily = u"Lucida Grande"_s;
const QString imageHighlightLeft = u"settingbg_left"_s;
const QString imageHighlightCenter = u"settingbg_center"_s;
const QString imageHighlightRight = u"settingbg_right"_s;

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

void ButtonFace::setTitle(const QString &text) {
    mLable = text.isNull() ? QString() : u""_s;
    mnemonic.reset();
    m_measuredFor = {};
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isMark = text[at] == u'&' && at + 1 < text.size();
        if (isMark && text[++at] != u'&' && !mnemonic)
            mnemonic = mLable.size();
        mLable += text[at];
    }
}

double ButtonFace::titleX(double width) const {
    return (width - characterWidth * double(mLable.size())) / 2;
}

const TitleLine &ButtonFace::titleLine(double width) const {
    const std::pair wanted(width, QApplication::font().family());
    if (std::exchange(m_measuredFor, wanted) != wanted)
        m_line = measured(width);
    return m_line;
}

// A title that is too long for the button would begin left of it; it is drawn from the edge instead.
TitleLine ButtonFace::measured(double width) const {
    TitleLine line;
    line.font.setFamilies({titleFamily, QApplication::font().family()});
    line.font.setPixelSize(titleSize);
    line.font.setStretch(QFont::Unstretched); // otherwise one of two titles may get a condensed font
    const QFontMetricsF metrics(line.font);
    line.x = std::max(0.0, titleX(width));
    line.text = metrics.elidedText(mLable, Qt::ElideRight, width - line.x);
    line.ascent = metrics.ascent();
    line.descent = metrics.descent();
    line.underlineY = metrics.underlinePos();
    if (mnemonic && line.text.left(*mnemonic + 1) == mLable.left(*mnemonic + 1)) {
        line.underlineX = line.x + metrics.horizontalAdvance(mLable.left(*mnemonic));
        line.underlineWidth = metrics.horizontalAdvance(mLable[*mnemonic]);
    }
    return line;
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
    if (isDark(widget.palette()))
        return widget.palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    return enabled ? Qt::black : Qt::darkGray; // halfway between black and white
}

void drawTitle(QPainter &painter, const QAbstractButton &button, const ButtonFace &face, double y,
               TitleAnchor anchor) {
    const TitleLine &line = face.titleLine(button.width());
    const double baseline = anchor == TitleAnchor::Top ? y + line.ascent : y - line.descent;
    painter.setFont(line.font);
    painter.setPen(textColor(button, button.isEnabled()));
    painter.drawText(QPointF(line.x, baseline), line.text);
    if (line.underlineWidth == 0 ||
        !button.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &button))
        return;
    const double underline = baseline + line.underlineY;
    painter.drawLine(QPointF(line.underlineX, underline),
                     QPointF(line.underlineX + line.underlineWidth, underline));
}

void drawFocusMark(QPainter &painter, const QAbstractButton &button, const QRectF &imageRectangle) {
    if (!button.hasFocus())
        return;
    const double margin = highlightMargin; // a larger margin would touch the title
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(button.palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(imageRectangle.adjusted(-margin, -margin, margin, margin), margin, margin);
}
