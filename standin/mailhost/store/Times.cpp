#include "standin/mailhost/store/Times.h"

namespace mailhost {

using Kind = CalendarTime::Kind;

CalendarTime Moment::calendarTime() const {
    CalendarTime time{kind, {}, zoneId};
    const QDateTime asClock = QDateTime::fromSecsSinceEpoch(clock, Qt::UTC);
    if (kind == Kind::Date)
        time.value = asClock.date().startOfDay();
    else if (kind == Kind::Floating)
        time.value = QDateTime(asClock.date(), asClock.time(), Qt::LocalTime);
    else
        time.value = zone->dateTime(utc());
    return time;
}

Moment Moment::after(const Span &span) const {
    Moment end = *this;
    end.clock += span.days * daySeconds;
    if (kind == Kind::Date)
        end.clock += midnightOf(span.seconds);
    else if (span.seconds != 0)
        end.clock = zone->toClock(end.utc() + span.seconds);
    return end;
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
        const Seconds clock = QDateTime(local.date(), local.time(), Qt::UTC).toSecsSinceEpoch();
        return Moment{time.kind, time.kind == Kind::Date ? midnightOf(clock) : clock, {}, localZone()};
    }
    const Seconds utc = time.value.toSecsSinceEpoch();
    QString zoneId = time.zoneId;
    if (zoneId.isEmpty()) {
        const QByteArray id = time.value.timeZone().id();
        zoneId = id.startsWith("UTC") ? QString() : QString::fromLatin1(id); // "UTC+01:00" names no rules
    }
    if (time.kind == Kind::Utc || zoneId.isEmpty())
        return Moment{Kind::Utc, utc, {}, utcZone()};
    const auto zone = zones.zone(zoneId);
    return Moment{Kind::Zoned, zone->toClock(utc), zoneId, zone};
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
    times.end = times.start.after(times.span);
    return times;
}

} // namespace mailhost
