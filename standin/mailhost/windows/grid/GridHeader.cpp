#include "standin/mailhost/windows/grid/GridHeader.h"

#include <QFontMetrics>
#include <QLocale>
#include <QPainter>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int padding = 5;
constexpr int between = 6; // space between name and date
constexpr double dateScale = 1.35;

} // namespace

GridHeader::GridHeader(QWidget *parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void GridHeader::show(const QDate &first, const QDate &today, const DayEdges &edges,
                      std::shared_ptr<const GridStyle> style) {
    m_first = first;
    m_today = today;
    m_edges = edges;
    m_style = std::move(style);
    m_dateFont = m_style->subject;
    if (m_dateFont.pointSizeF() > 0)
        m_dateFont.setPointSizeF(m_dateFont.pointSizeF() * dateScale);
    setFixedHeight(QFontMetrics(m_dateFont).height() + 2 * padding + 2);
    chooseNames();
    update();
}

// Uses the short names for all days if one long name does not fit.
void GridHeader::chooseNames() {
    const QFontMetrics words(m_style->subject); // today's is bold
    const int date = QFontMetrics(m_dateFont).horizontalAdvance(u"00"_s) + 10;
    const int room = m_edges.left(1) - m_edges.left(0) - date - between - 2 * padding;
    m_names = QLocale::LongFormat;
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day)
        if (words.horizontalAdvance(QLocale().standaloneDayName(day, QLocale::LongFormat)) > room)
            m_names = QLocale::ShortFormat;
}

void GridHeader::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), m_style->base);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int day = 0; m_first.isValid() && day < m_edges.days; ++day) {
        const int left = m_edges.left(day);
        paintDay(painter, QRect(left, 0, m_edges.left(day + 1) - left, height()), m_first.addDays(day));
    }
    painter.fillRect(0, height() - 1, width(), 1, m_style->hourLine);
}

void GridHeader::paintDay(QPainter &painter, const QRect &column, const QDate &date) const {
    const QLocale locale;
    const bool today = date == m_today;
    const bool alone = m_edges.days == 1;
    const QString number = QString::number(date.day());
    const QFontMetrics numbers(m_dateFont);
    const QFontMetrics words(m_style->detail);
    const int pill = std::max(numbers.horizontalAdvance(number) + 10, numbers.height() + 2);
    const int room = column.width() - pill - between - 2 * padding;
    const QString full = alone ? locale.toString(date, u"dddd, MMMM yyyy"_s)
                               : locale.standaloneDayName(date.dayOfWeek(), m_names);
    const QString name = words.elidedText(full, Qt::ElideRight, std::max(0, room));
    const QRectF mark(column.left() + padding, (column.height() - numbers.height() - 2) / 2, pill,
                      numbers.height() + 2);
    if (today) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_style->accent);
        painter.drawRoundedRect(mark, mark.height() / 2, mark.height() / 2);
    }
    painter.setFont(m_dateFont);
    painter.setPen(today ? m_style->accentText : m_style->text);
    painter.drawText(mark, Qt::AlignCenter, number);
    painter.setFont(today ? m_style->subject : m_style->detail);
    painter.setPen(today ? m_style->text : m_style->faint);
    painter.drawText(QRectF(mark.right() + between, 0, column.width(), column.height() - 1),
                     Qt::AlignLeft | Qt::AlignVCenter, name);
}

} // namespace mailhost
