#include "standin/mailhost/windows/grid/TileTexts.h"

#include "platform/Literals.h"
#include "standin/mailhost/windows/LineDrawing.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

namespace mailhost {

namespace {

constexpr int barWidth = 4; // of the strip of colour at the left
constexpr int padding = 4;  // beside the texts
constexpr int narrow = 48;  // a narrower tile shows less
constexpr int markSize = 11;
constexpr int markGap = 3;
constexpr int leastText = 34; // a narrower text is left out
constexpr int mostSubjectLines = 3;
constexpr int between = 8; // texts on one line

// Start and end if they fit, else the start alone, else nothing, because a shortened time would be wrong.
QString timesFor(const Occurrence &occurrence, int width, const GridStyle &style) {
    if (style.timesWidth <= width)
        return style.times(occurrence.start, occurrence.end);
    if (style.timeWidth <= width)
        return style.time(occurrence.start.toLocalTime().time());
    return {};
}

QString spokenTimes(const Occurrence &occurrence) {
    const QDateTime start = occurrence.start.toLocalTime();
    const QDateTime end = occurrence.end.toLocalTime();
    const auto clock = [](const QDateTime &time) {
        return QLocale().toString(time.time(), QLocale::ShortFormat);
    };
    if (occurrence.allDay) {
        const QDate last = std::max(start.date(), end.date().addDays(-1));
        return last == start.date()
                   ? QObject::tr("%1, all day").arg(spokenDay(last))
                   : QObject::tr("%1 to %2, all day").arg(spokenDay(start.date()), spokenDay(last));
    }
    const QString to = end.date() == start.date() ? clock(end) : spokenDay(end.date()) + u' ' + clock(end);
    return QObject::tr("%1, %2 to %3").arg(spokenDay(start.date()), clock(start), to);
}

} // namespace

QString spokenDay(const QDate &date) {
    return QLocale().toString(date, u"dddd d MMMM"_s);
}

QString spokenName(const Occurrence &occurrence) {
    QStringList parts{TileTexts::subjectOf(occurrence), spokenTimes(occurrence),
                      occurrence.location.simplified()};
    if (occurrence.isOccurrence || occurrence.isException)
        parts.append(QObject::tr("repeats"));
    if (occurrence.hasMeetingRecord)
        parts.append(QObject::tr("online meeting"));
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

QString TileTexts::subjectOf(const Occurrence &occurrence) {
    const QString subject = occurrence.summary.simplified();
    return subject.isEmpty() ? QObject::tr("Untitled") : subject;
}

TileTexts::TileTexts(const Occurrence &occurrence, const TileEnds &ends, const QSize &size,
                     const GridStyle &style, bool timesFirst) {
    const int left = barWidth + (size.width() < narrow ? 2 : padding);
    const int lines = std::max(1, (size.height() - 1) / style.lineHeight);
    const int top = lines == 1 || ends.allDay
                        ? (size.height() - style.lineHeight) / 2
                        : std::min(padding, (size.height() - lines * style.lineHeight) / 2);
    m_area = QRect(left, top, std::max(0, size.width() - left - (size.width() < narrow ? 1 : padding)),
                   ends.allDay ? style.lineHeight : std::max(style.lineHeight, size.height() - 2 * top));
    m_firstLineEnd = m_area.right();
    placeMarks(occurrence, style);
    QStringList texts{subjectOf(occurrence)};
    const QString location = occurrence.location.simplified();
    const QString times = ends.allDay ? QString() : timesFor(occurrence, m_area.width(), style);
    if (timesFirst && !times.isEmpty())
        texts = QStringList{times, texts.first()};
    else
        texts += {location, times};
    texts.removeAll(QString());
    if (m_area.height() / style.lineHeight < 2)
        writeOnOneLine(texts, style);
    else
        writeBelowEachOther(texts, style);
}

// Places the marks at the right of the first line if the subject still has room, else at the right of the
// last line.
void TileTexts::placeMarks(const Occurrence &occurrence, const GridStyle &style) {
    QStringList marks;
    if (occurrence.hasMeetingRecord)
        marks.append(u"online"_s);
    if (occurrence.isOccurrence || occurrence.isException)
        marks.append(u"repeats"_s);
    const bool oneLine = m_area.height() / style.lineHeight < 2;
    while (oneLine && !marks.isEmpty() && m_area.width() - marks.size() * (markSize + markGap) < leastText)
        marks.removeLast();
    if (marks.isEmpty())
        return;
    const int width = int(marks.size()) * (markSize + markGap);
    const bool onFirst = oneLine || m_area.width() - width >= 2 * leastText;
    const int lineTop = onFirst ? m_area.top() : m_area.bottom() + 1 - style.lineHeight;
    int right = m_area.right() + 1;
    for (const QString &mark : std::as_const(marks)) {
        m_marks.append(
            {mark, QRect(right - markSize, lineTop + (style.lineHeight - markSize) / 2, markSize, markSize)});
        right -= markSize + markGap;
    }
    if (onFirst)
        m_firstLineEnd = right - 1;
    else
        m_area.setBottom(lineTop - 1);
}

// Returns the width of the text.
int TileTexts::add(const QString &text, const QRect &rect, bool strong, const GridStyle &style) {
    const QFontMetrics metrics(strong ? style.subject : style.detail);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, rect.width());
    m_shortened = m_shortened || shown != text;
    m_lines.append({shown, rect, strong});
    return metrics.horizontalAdvance(shown);
}

void TileTexts::writeOnOneLine(const QStringList &texts, const GridStyle &style) {
    int left = m_area.left();
    bool strong = true;
    for (const QString &text : texts) {
        const int room = m_firstLineEnd + 1 - left;
        if (!strong && room < leastText) {
            m_shortened = true;
            return;
        }
        const QRect rect(left, m_area.top(), room, style.lineHeight);
        left += add(text, rect, strong, style) + between;
        strong = false;
    }
}

void TileTexts::writeBelowEachOther(const QStringList &texts, const GridStyle &style) {
    const int lines = m_area.height() / style.lineHeight;
    const int others = int(texts.size()) - 1;
    const int used =
        wrap(texts.first(), std::clamp(lines - others, 1, mostSubjectLines), style, m_area.top());
    int top = m_area.top() + used * style.lineHeight;
    for (int i = 1; i <= others; ++i, top += style.lineHeight) {
        if (used + i > lines) {
            m_shortened = true;
            return;
        }
        add(texts[i], QRect(m_area.left(), top, m_area.width(), style.lineHeight), false, style);
    }
}

// Wraps the text over at most that number of lines and shortens the last one. Returns the number of lines.
int TileTexts::wrap(const QString &text, int lines, const GridStyle &style, int top) {
    QTextLayout layout(text, style.subject);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    int used = 0;
    for (QTextLine line = layout.createLine(); line.isValid() && used < lines; line = layout.createLine()) {
        const int right = used == 0 ? m_firstLineEnd : m_area.right();
        const QRect rect(m_area.left(), top + used * style.lineHeight, right + 1 - m_area.left(),
                         style.lineHeight);
        line.setLineWidth(rect.width());
        const bool last = ++used == lines;
        const QString part = text.mid(line.textStart(), last ? -1 : line.textLength());
        add(part.trimmed(), rect, true, style);
    }
    layout.endLayout();
    return used;
}

void TileTexts::draw(QPainter &painter, const GridStyle &style, const QColor &text,
                     const QColor &faint) const {
    for (const Line &line : m_lines) {
        painter.setFont(line.strong ? style.subject : style.detail);
        painter.setPen(line.strong ? text : faint);
        painter.drawText(line.place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line.text);
    }
    for (const auto &[name, rect] : m_marks)
        paintLineDrawing(painter, name, rect, faint);
}

} // namespace mailhost
