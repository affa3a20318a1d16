#include "standin/mailhost/store/ClockTime.h"

#include "platform/Literals.h"

#include <algorithm>
#include <libical/ical.h>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds longestSpan = 400LL * 366 * daySeconds;

} // namespace

QByteArray weekdayOf(const QDate &date) {
    static const char *const names[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
    return names[date.dayOfWeek() - 1];
}

// Without a regular expression, which would make opening a calendar of 10,000 appointments a quarter slower.
std::optional<ClockTime> parseClock(const QByteArray &untrimmed) {
    const QByteArray text = untrimmed.trimmed().toUpper();
    const bool isDate = text.size() == 8;
    const bool isUtc = text.endsWith('Z');
    if (!isDate && (text.size() != (isUtc ? 16 : 15) || text[8] != 'T'))
        return std::nullopt;
    const QByteArray digits = text.left(8) + text.mid(9, 6);
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    const auto number = [&digits](int at, int length) { return digits.mid(at, length).toInt(); };
    const QDate date(number(0, 4), number(4, 2), number(6, 2));
    const int hour = number(8, 2), minute = number(10, 2), second = number(12, 2);
    if (!date.isValid() || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    const Kind kind = isUtc ? Kind::Utc : Kind::Floating;
    return ClockTime{isDate ? Kind::Date : kind,
                     secondsOf(date) + hour * 3600 + minute * 60 + qMin(second, 59)}; // 60 is a leap second
}

QByteArray clockText(Seconds clock, Kind kind) {
    static const Seconds first = secondsOf(QDate(1, 1, 1));
    static const Seconds last = secondsOf(QDate(10000, 1, 1)) - 1;
    icaltimetype time = icalTime(qBound(first, clock, last));
    time.is_date = kind == Kind::Date;
    return QByteArray(icaltime_as_ical_string(time)) + (kind == Kind::Utc ? "Z" : "");
}

QByteArray utcNow() {
    return clockText(QDateTime::currentSecsSinceEpoch(), Kind::Utc);
}

void prepareIcal() {
    icalerror_set_errors_are_fatal(0);
}

icaltimetype icalTime(Seconds seconds) {
    const QDate date = dateOf(seconds);
    const int second = int(seconds - midnightOf(seconds));
    icaltimetype time = icaltime_null_time();
    time.year = date.year();
    time.month = date.month();
    time.day = date.day();
    time.hour = second / 3600;
    time.minute = second / 60 % 60;
    time.second = second % 60;
    return time;
}

std::optional<Seconds> secondsOf(const icaltimetype &time) {
    const QDate date(time.year, time.month, time.day);
    if (!date.isValid())
        return std::nullopt;
    return secondsOf(date) + time.hour * 3600 + time.minute * 60 + time.second;
}

std::optional<Span> parseDuration(const QByteArray &text) {
    prepareIcal();
    const QByteArray upper = text.trimmed().toUpper();
    const icaldurationtype parsed = icaldurationtype_from_string(upper.constData());
    if (!upper.contains('P') || icaldurationtype_is_bad_duration(parsed)) // libical takes an empty text
        return std::nullopt;
    if (parsed.is_neg)
        return Span();
    const Seconds days = Seconds(parsed.weeks) * 7 + parsed.days;
    const Seconds seconds = Seconds(parsed.hours) * 3600 + Seconds(parsed.minutes) * 60 + parsed.seconds;
    return Span{qMin(days, longestSpan / daySeconds), qMin(seconds, longestSpan)};
}

QByteArray durationText(const Span &span) {
    if (span.seconds == 0)
        return 'P' + QByteArray::number(span.days) + 'D'; // also of none, which libical writes as a time
    icaldurationtype duration = icaldurationtype_null_duration();
    duration.days = unsigned(span.days);
    duration.hours = unsigned(span.seconds / 3600);
    duration.minutes = unsigned(span.seconds / 60 % 60);
    duration.seconds = unsigned(span.seconds % 60);
    return icaldurationtype_as_ical_string(duration);
}

} // namespace mailhost
