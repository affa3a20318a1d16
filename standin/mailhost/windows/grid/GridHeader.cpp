#include "standin/mailhost/windows/grid/GridHeader.h"

#include "platform/Literals.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int padding = 5;
constexpr int between = 6; // space between name and date
constexpr double dateScale = 1.35;

} // namespace

GridHeader::GridHeader(std::shared_ptr<const GridScene> scene)
    : m_scene(std::move(scene)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setContextMenuPolicy(Qt::PreventContextMenu);
}

QFont GridHeader::dateFont() const {
    QFont font = m_scene->style.subject;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * dateScale);
    return font;
}

void GridHeader::showScene() {
    setFixedHeight(QFontMetrics(dateFont()).height() + 2 * padding + 1);
    update();
}

void GridHeader::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), m_scene->style.base);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int day = 0; m_scene->first.isValid() && day < m_scene->days; ++day)
        paintDay(painter, day);
}

// Uses the short names for all days if one long name does not fit.
QString GridHeader::nameOf(const QDate &date, int room) const {
    const QLocale locale;
    const QFontMetrics words(m_scene->style.subject); // today's is bold
    QLocale::FormatType names = QLocale::LongFormat;
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day)
        if (words.horizontalAdvance(locale.standaloneDayName(day)) > room)
            names = QLocale::ShortFormat;
    return locale.standaloneDayName(date.dayOfWeek(), names);
}

void GridHeader::paintDay(QPainter &painter, int day) const {
    const GridStyle &style = m_scene->style;
    const QDate date = m_scene->first.addDays(day);
    const bool today = date == m_scene->today;
    painter.setFont(dateFont());
    const QFontMetrics numbers = painter.fontMetrics();
    const int pillHeight = numbers.height() + 2;
    const QRectF pill(m_scene->left(day) + padding, (height() - pillHeight) / 2.0,
                      std::max(numbers.horizontalAdvance(u"00"_s) + 10, pillHeight), pillHeight);
    if (today) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.accent);
        painter.drawRoundedRect(pill, pillHeight / 2.0, pillHeight / 2.0);
    }
    painter.setPen(today ? style.accentText : style.text);
    painter.drawText(pill, Qt::AlignCenter, QString::number(date.day()));
    const QRectF room(QPointF(pill.right() + between, 0), QPointF(m_scene->left(day + 1), height()));
    painter.setFont(today ? style.subject : style.detail);
    painter.setPen(today ? style.text : style.faint);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     nameOf(date, int(room.width()) - 1)); // columns differ by one
}

} // namespace mailhost
