#include "standin/mailhost/windows/grid/GridStyle.h"

#include "platform/Literals.h"

#include <QFontMetrics>
#include <QPalette>
#include <QRegularExpression>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace mailhost {

namespace {

constexpr int leastHourHeight = 48;
constexpr int gutterPadding = 10;
constexpr int barPadding = 6;
constexpr double leastContrast = 4.5; // between small text and its background

double linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &a, const QColor &b) {
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

// The same hue with enough contrast to the text's colour.
QColor legibleUnder(QColor color, const QColor &text) {
    const bool lightText = luminance(text) > 0.18;
    constexpr int steps = 24;
    for (int i = 0; i < steps && contrast(color, text) < leastContrast; ++i)
        color = GridStyle::mixed(color, lightText ? Qt::black : Qt::white, 0.94);
    return color;
}

QString withoutSeconds(QString format) {
    static const QRegularExpression seconds(u"[:.]ss?"_s);
    static const QRegularExpression zone(u"\\s*t+$"_s);
    return format.remove(seconds).remove(zone);
}

} // namespace

GridStyle::GridStyle(const QWidget *widget)
    : subject(widget->font())
    , detail(widget->font()) {
    takeColours(widget->palette());
    subject.setWeight(QFont::DemiBold);
    for (QFont *font : {&subject, &detail})
        if (font->pointSizeF() > 0)
            font->setPointSizeF(font->pointSizeF() * 0.92);
    const QFontMetrics metrics(detail);
    lineHeight = std::max(metrics.height(), QFontMetrics(subject).height());
    hourHeight =
        std::max(leastHourHeight, 4 * (lineHeight + 2)); // each quarter holds one line and its padding
    barHeight = lineHeight + barPadding;
    m_timeFormat = withoutSeconds(m_locale.timeFormat(QLocale::ShortFormat));
    const bool twelve = m_timeFormat.contains(u'a', Qt::CaseInsensitive);
    m_hourFormat = twelve ? u"h AP"_s : m_timeFormat;
    gutter = metrics.horizontalAdvance(QObject::tr("all day"));
    for (int hour = 0; hour < 24; ++hour)
        gutter = std::max(gutter, metrics.horizontalAdvance(hourLabel(hour)));
    gutter += 2 * gutterPadding;
}

void GridStyle::takeColours(const QPalette &palette) {
    const auto colour = [&palette](QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role);
    };
    base = colour(QPalette::Base);
    text = colour(QPalette::Text);
    dark = luminance(base) < 0.18;
    accentText = colour(QPalette::HighlightedText);
    accent = legibleUnder(colour(QPalette::Highlight), accentText);
    faint = mixed(text, base, dark ? 0.68 : 0.64);
    offHours = mixed(text, base, dark ? 0.05 : 0.035);
    // Opaque, because drawing translucent colours takes several times as long.
    today = mixed(accent, base, dark ? 0.1 : 0.045);
    todayOffHours = mixed(accent, offHours, dark ? 0.1 : 0.045);
    cursor = mixed(accent, base, dark ? 0.24 : 0.15);
    hourLine = mixed(text, base, dark ? 0.2 : 0.14);
    halfHourLine = mixed(text, base, dark ? 0.1 : 0.07);
    now = dark ? QColor(0xff, 0x6b, 0x5e) : QColor(0xd9, 0x2d, 0x20);
}

QColor GridStyle::mixed(const QColor &first, const QColor &second, double share) {
    const auto part = [share](int a, int b) { return int(std::lround(a * share + b * (1 - share))); };
    return QColor(part(first.red(), second.red()), part(first.green(), second.green()),
                  part(first.blue(), second.blue()));
}

QString GridStyle::times(const QDateTime &start, const QDateTime &end) const {
    return QObject::tr("%1 – %2", "from, to")
        .arg(time(start.toLocalTime().time()), time(end.toLocalTime().time()));
}

} // namespace mailhost
