#include "standin/mailhost/store/ClockTime.h"

#include "platform/Literals.h"

#include <QRegularExpression>
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

std::optional<ClockTime> parseClock(const QByteArray &text) {
    static const QRegularExpression form(
        u"^(\\d{4})(\\d\\d)(\\d\\d)(?:T([01]\\d|2[0-3])([0-5]\\d)([0-5]\\d|60)(Z?))?$"_s,
        QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(QString::fromLatin1(text.trimmed()));
    const auto number = [&](int part) { return match.capturedView(part).toInt(); };
    const QDate date(number(1), number(2), number(3));
    if (!date.isValid())
        return std::nullopt;
    if (!match.hasCaptured(4))
        return ClockTime{Kind::Date, secondsOf(date)};
    const int second = qMin(number(6), 59); // 60 is a leap second
    return ClockTime{match.capturedLength(7) > 0 ? Kind::Utc : Kind::Floating,
                     secondsOf(date) + number(4) * 3600 + number(5) * 60 + second};
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
