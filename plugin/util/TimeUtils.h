// Dates and their text form "yyyy-MM-dd HH:mm:ss".
#pragma once

#include <QDateTime>
#include <QString>
#include <QTimeZone>

class TimeUtils {
public:
    // The instant of the text in the process's time zone; an invalid date if the text does not have the form
    // or names no existing day or time. A time skipped by the change to daylight saving is moved past the
    // change by the skipped amount. Of a time that occurs twice the later instant is used.
    [[nodiscard]] static QDateTime stringToDate(const QString &text);
    // Seconds since 1970-01-01 00:00:00 UTC, the fraction truncated toward zero; 0 for an invalid date.
    [[nodiscard]] static qint64 dateToTimestamp(const QDateTime &date);
    // The timestamp of a text in decimal; "0" when the text does not parse.
    [[nodiscard]] static QString stringToTimestamp(const QString &text);
    // In UTC; an invalid date if it is outside the toolkit's range.
    [[nodiscard]] static QDateTime timestampToDate(qint64 seconds);
    // Converts a text from the zone (if invalid: the process's zone) to UTC; null if it does not parse.
    [[nodiscard]] static QString localToGMT(const QString &text, const QTimeZone &zone);
    // The text form of the instant in UTC; null for an invalid date.
    [[nodiscard]] static QString dateToUTCString(const QDateTime &date);
};
