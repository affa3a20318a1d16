// Dates and their text form "yyyy-MM-dd HH:mm:ss".
#pragma once

#include <QDateTime>
#include <QString>
#include <QTimeZone>

class TimeUtils {
public:
    // The instant of the text in the process's time zone; an invalid date when the text does not have the
    // form or names no day or time. A time that the change to daylight saving skips is the instant just as
    // long after the change; one that the clock shows twice is the later of the two.
    [[nodiscard]] static QDateTime stringToDate(const QString &text);
    // Seconds since 1970-01-01 00:00:00 UTC, the fraction truncated toward zero; 0 for an invalid date.
    [[nodiscard]] static qint64 dateToTimestamp(const QDateTime &date);
    // The timestamp of a text in decimal; "0" when the text does not parse.
    [[nodiscard]] static QString stringToTimestamp(const QString &text);
    // In UTC; an invalid date when the toolkit cannot hold it.
    [[nodiscard]] static QDateTime timestampToDate(qint64 seconds);
    // The text form in UTC of a text read in the zone (an invalid zone: the process's); null when it does not
    // parse.
    [[nodiscard]] static QString localToGMT(const QString &text, const QTimeZone &zone);
    // The text form of the instant in UTC; null for an invalid date.
    [[nodiscard]] static QString dateToUTCString(const QDateTime &date);
};
