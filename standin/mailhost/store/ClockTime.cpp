#include "standin/mailhost/store/ClockTime.h"

#include <array>
#include <cstdio>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;

int number(const QByteArray &text, qsizetype at, qsizetype digits) {
    int value = 0;
    for (qsizetype i = at; i < at + digits; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return -1;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

std::optional<Seconds> secondOfDay(const QByteArray &text) {
    const int hour = number(text, 9, 2);
    const int minute = number(text, 11, 2);
    const int second = number(text, 13, 2);
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60)
        return std::nullopt;
    return hour * 3600 + minute * 60 + qMin(second, 59); // 60 is a leap second
}

} // namespace

std::optional<ClockTime> parseClock(const QByteArray &untrimmed) {
    const QByteArray text = untrimmed.trimmed();
    const bool dateOnly = text.size() == 8;
    if (!dateOnly && text.size() != 15 && text.size() != 16)
        return std::nullopt;
    const QDate date(number(text, 0, 4), number(text, 4, 2), number(text, 6, 2));
    if (!date.isValid() || date.year() < 1)
        return std::nullopt;
    if (dateOnly)
        return ClockTime{Kind::Date, secondsOf(date)};
    const auto second = secondOfDay(text);
    const bool utc = text.size() == 16;
    if (!second || (text[8] != 'T' && text[8] != 't') || (utc && text[15] != 'Z' && text[15] != 'z'))
        return std::nullopt;
    return ClockTime{utc ? Kind::Utc : Kind::Floating, secondsOf(date) + *second};
}

QByteArray clockText(Seconds clock, Kind kind) {
    const QDate date = dateOf(clock);
    const int second = int(clock - midnightOf(clock));
    const int year = qBound(1, date.year(), 9999);
    // Faster than a format of QDateTime: a week of a full calendar writes hundreds of them.
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(),
                  kind == Kind::Date ? "%04d%02d%02d" : "%04d%02d%02dT%02d%02d%02d%s", year, date.month(),
                  date.day(), second / 3600, second / 60 % 60, second % 60, kind == Kind::Utc ? "Z" : "");
    return text.data();
}

} // namespace mailhost
