// The texts on a tile of a given size, wrapped and shortened once.
#pragma once

#include "standin/mailhost/store/Appointment.h"
#include "standin/mailhost/windows/grid/GridStyle.h"

#include <QRect>

class QPainter;

namespace mailhost {

// Which ends of the appointment the tile shows; it is cut off at the others.
struct TileEnds {
    bool start = true;
    bool end = true;
    bool allDay = false;
    friend bool operator==(const TileEnds &a, const TileEnds &b) = default;
};

class TileTexts {
public:
    TileTexts(const Occurrence &occurrence, const TileEnds &ends, const QSize &size, const GridStyle &style,
              bool timesFirst);
    void draw(QPainter &painter, const GridStyle &style, const QColor &text, const QColor &faint) const;
    [[nodiscard]] bool isShortened() const { return m_shortened; }

    // The subject, or "Untitled".
    [[nodiscard]] static QString subjectOf(const Occurrence &occurrence);

private:
    struct Line {
        QString text;
        QRect place;
        bool strong = false;
    };
    struct Mark {
        QString name;
        QRect rect;
    };
    void placeMarks(const Occurrence &occurrence, const GridStyle &style);
    void writeOnOneLine(const QStringList &texts, const GridStyle &style);
    void writeBelowEachOther(const QStringList &texts, const GridStyle &style);
    int wrap(const QString &text, int lines, const GridStyle &style, int top);
    int add(const QString &text, const QRect &rect, bool strong, const GridStyle &style);

    QRect m_area;
    int m_firstLineEnd = 0; // right edge of the first line, left of the marks
    QList<Line> m_lines;
    QList<Mark> m_marks;
    bool m_shortened = false;
};

[[nodiscard]] QString spokenDay(const QDate &date);
// "Subject, Tuesday 24 November, 10:00 to 10:30, location, repeats, online meeting".
[[nodiscard]] QString spokenName(const Occurrence &occurrence);

} // namespace mailhost
