#include "standin/mailhost/store/Times.h"

#include "platform/Literals.h"

#include <QRegularExpression>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds longestSpan = 400LL * 366 * daySeconds;

QDateTime clockDateTime(Seconds clock) {
    return QDateTime::fromSecsSinceEpoch(clock, Qt::UTC);
}

Seconds clockSeconds(const QDateTime &value) {
    return QDateTime(value.date(), value.time(), Qt::UTC).toSecsSinceEpoch();
}

} // namespace

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
    static const QRegularExpression form(u"^([+-]?)P(?:(\\d{1,9})W)?(?:(\\d{1,9})D)?"
                                         "(?:T(?:(\\d{1,9})H)?(?:(\\d{1,9})M)?(?:(\\d{1,9})S)?)?$"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    const QString text = QString::fromLatin1(untrimmed.trimmed());
    const auto parts = form.match(text);
    if (!parts.hasMatch() || text.size() < 3)
        return std::nullopt;
    if (parts.captured(1) == u"-"_s)
        return Span();
    const auto number = [&](int part) { return parts.capturedView(part).toLongLong(); };
    return Span{qMin(number(2) * 7 + number(3), longestSpan / daySeconds),
                qMin(number(4) * 3600 + number(5) * 60 + number(6), longestSpan)};
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
        const Seconds clock = time.kind == Kind::Date ? secondsOf(local.date()) : clockSeconds(local);
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
