// The colours, fonts, sizes and time texts of the calendar grid, derived once from a widget's palette and
// font and from the default locale. Lengths are device-independent pixels.
#pragma once

#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QLocale>
#include <QString>

class QPalette;
class QWidget;

namespace mailhost {

struct GridStyle {
    explicit GridStyle(const QWidget *widget);

    bool dark = false;
    QColor base;
    QColor offHours; // behind the hours and days without work
    QColor today;    // behind today
    QColor todayOffHours;
    QColor cursor; // background of the keyboard cursor's place
    QColor hourLine;
    QColor halfHourLine;
    QColor text;
    QColor faint;  // secondary text
    QColor accent; // legible under accentText
    QColor accentText;
    QColor now; // the line of the current time

    QFont subject;
    QFont detail;
    int lineHeight = 0; // of the tile's texts
    int hourHeight = 0; // a tile of a quarter of an hour holds a line of text
    int gutter = 0;     // width of the hour labels at the left
    int barHeight = 0;  // one line of the all-day row

    // `share` of the first colour and the rest of the second.
    [[nodiscard]] static QColor mixed(const QColor &first, const QColor &second, double share);
    [[nodiscard]] QString hourLabel(int hour) const {
        return m_locale.toString(QTime(hour, 0), m_hourFormat);
    }
    [[nodiscard]] QString time(const QTime &time) const { return m_locale.toString(time, m_timeFormat); }
    [[nodiscard]] QString times(const QDateTime &start, const QDateTime &end) const; // from - to

private:
    void takeColours(const QPalette &palette);
    QLocale m_locale;
    QString m_timeFormat; // the locale's short one, without seconds
    QString m_hourFormat;
};

} // namespace mailhost
