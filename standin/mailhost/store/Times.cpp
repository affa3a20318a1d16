#include "standin/mailhost/store/Times.h"

#include <array>
#include <cstdio>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds daySeconds = 86400;
constexpr qint64 epochDay = 2440588; // Julian day of 1970-01-01
constexpr Seconds longestSpan = 400LL * 366 * daySeconds;

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

QDateTime clockDateTime(Seconds clock) {
    return QDateTime::fromSecsSinceEpoch(clock, Qt::UTC);
}

Seconds clockSeconds(const QDateTime &value) {
    return QDateTime(value.date(), value.time(), Qt::UTC).toSecsSinceEpoch();
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
    const Seconds midnight = (date.toJulianDay() - epochDay) * daySeconds;
    if (dateOnly)
        return ClockTime{Kind::Date, midnight};
    const auto second = secondOfDay(text);
    const bool utc = text.size() == 16;
    if (!second || (text[8] != 'T' && text[8] != 't') || (utc && text[15] != 'Z' && text[15] != 'z'))
        return std::nullopt;
    return ClockTime{utc ? Kind::Utc : Kind::Floating, midnight + *second};
}

QByteArray clockText(Seconds clock, Kind kind) {
    const QDateTime value = clockDateTime(clock);
    const QDate date = value.date();
    const QTime time = value.time();
    const int year = qBound(1, date.year(), 9999);
    // Faster than a format of QDateTime: a week of a full calendar writes hundreds of them.
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(),
                  kind == Kind::Date ? "%04d%02d%02d" : "%04d%02d%02dT%02d%02d%02d%s", year, date.month(),
                  date.day(), time.hour(), time.minute(), time.second(), kind == Kind::Utc ? "Z" : "");
    return text.data();
}

CalendarTime Moment::calendarTime() const {
    CalendarTime time;
    time.kind = kind;
    time.zoneId = zoneId;
    const QDateTime asClock = clockDateTime(clock);
    if (kind == Kind::Date)
        time.value = asClock.date().startOfDay();
    else if (kind == Kind::Floating)
        time.value = QDateTime(asClock.date(), asClock.time(), Qt::LocalTime);
    else
        time.value = zone->dateTime(utc());
    return time;
}

Moment Span::after(const Moment &start) const {
    Moment end = start;
    end.clock += days * daySeconds;
    if (start.kind == Kind::Date)
        end.clock += seconds / daySeconds * daySeconds;
    else if (seconds != 0)
        end.clock = end.zone->toClock(end.utc() + seconds);
    return end;
}

std::optional<Span> parseDuration(const QByteArray &untrimmed) {
    QByteArray text = untrimmed.trimmed().toUpper();
    const bool negative = text.startsWith('-');
    if (negative || text.startsWith('+'))
        text.remove(0, 1);
    if (!text.startsWith('P') || text.size() < 3)
        return std::nullopt;
    Span span;
    qint64 value = -1;
    for (qsizetype i = 1; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            value = qMin<qint64>(qMax<qint64>(value, 0) * 10 + (c - '0'), longestSpan);
            continue;
        }
        if (c == 'T' && value < 0)
            continue;
        if (value < 0)
            return std::nullopt;
        switch (c) {
        case 'W':
            span.days += value * 7;
            break;
        case 'D':
            span.days += value;
            break;
        case 'H':
            span.seconds += value * 3600;
            break;
        case 'M':
            span.seconds += value * 60;
            break;
        case 'S':
            span.seconds += value;
            break;
        default:
            return std::nullopt;
        }
        value = -1;
    }
    span.days = qMin(span.days, longestSpan / daySeconds);
    span.seconds = qMin(span.seconds, longestSpan);
    return negative ? Span() : span;
}

QByteArray durationText(const Span &span) {
    QByteArray text = "P";
    if (span.days > 0 || span.seconds == 0)
        text += QByteArray::number(span.days) + 'D';
    if (span.seconds == 0)
        return text;
    text += 'T';
    if (span.seconds >= 3600)
        text += QByteArray::number(span.seconds / 3600) + 'H';
    if (span.seconds / 60 % 60 > 0)
        text += QByteArray::number(span.seconds / 60 % 60) + 'M';
    if (span.seconds % 60 > 0)
        text += QByteArray::number(span.seconds % 60) + 'S';
    return text;
}

std::optional<Moment> readMoment(const ContentLine &line, const QByteArray &value, ZoneTable &zones) {
    const auto clock = parseClock(value);
    if (!clock)
        return std::nullopt;
    if (clock->kind == Kind::Utc)
        return Moment{Kind::Utc, clock->clock, {}, utcZone()};
    const QString tzid = clock->kind == Kind::Date ? QString() : line.parameter("TZID").value_or(QString());
    if (tzid.isEmpty())
        return Moment{clock->kind, clock->clock, {}, localZone()};
    return Moment{Kind::Zoned, clock->clock, tzid, zones.zone(tzid)};
}

std::optional<Moment> readMoment(const ContentLine *line, ZoneTable &zones) {
    return line ? readMoment(*line, line->value(), zones) : std::nullopt;
}

Moment momentOf(const CalendarTime &time, ZoneTable &zones) {
    if (time.kind == Kind::Date || time.kind == Kind::Floating) {
        const QDateTime local = time.value.toLocalTime();
        const Seconds clock = time.kind == Kind::Date ? (local.date().toJulianDay() - epochDay) * daySeconds
                                                      : clockSeconds(local);
        return Moment{time.kind, clock, {}, localZone()};
    }
    const Seconds utc = time.value.toSecsSinceEpoch();
    QString zoneId = time.zoneId;
    if (zoneId.isEmpty() && time.value.timeSpec() != Qt::UTC && time.value.timeSpec() != Qt::OffsetFromUTC) {
        const QByteArray id = time.value.timeZone().id();
        zoneId = id.startsWith("UTC") ? QString() : QString::fromLatin1(id); // "UTC+01:00" names no rules
    }
    if (time.kind == Kind::Utc || zoneId.isEmpty())
        return Moment{Kind::Utc, utc, {}, utcZone()};
    const auto zone = zones.zone(zoneId);
    return Moment{Kind::Zoned, zone->toClock(utc), zoneId, zone};
}

bool sameTime(const CalendarTime &a, const CalendarTime &b) {
    if (a.kind != b.kind || a.zoneId != b.zoneId || a.value.isValid() != b.value.isValid())
        return false;
    return !a.value.isValid() || a.value == b.value;
}

std::optional<TimesOfComponent> readTimes(const Component &component, ZoneTable &zones) {
    const auto start = readMoment(component.line("DTSTART"), zones);
    if (!start)
        return std::nullopt;
    TimesOfComponent times{*start, *start, {}};
    const ContentLine *duration = component.line("DURATION");
    if (const auto end = readMoment(component.line("DTEND"), zones)) {
        const bool days = start->kind == Kind::Date && end->kind == Kind::Date;
        times.end = *end;
        times.span.seconds = days ? end->clock - start->clock : end->utc() - start->utc();
        if (times.span.seconds >= 0)
            return times;
        times.end = *start; // ends before it starts
        times.span = {};
    } else if (const auto span = duration ? parseDuration(duration->value()) : std::nullopt) {
        times.span = *span;
    } else if (start->kind == Kind::Date) {
        times.span.days = 1;
    }
    times.end = times.span.after(times.start);
    return times;
}

} // namespace mailhost
