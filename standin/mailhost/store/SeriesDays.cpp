// Single days of a series: changed, removed, and moved with it.
#include "platform/Literals.h"
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/SeriesMove.h"

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds daySeconds = 86400;
constexpr Seconds farthestNextDay = 4 * 366 * daySeconds; // to a 29 February

std::optional<Moment> readDay(const Component &series, const QString &instanceId, ZoneTable &zones) {
    return readMoment(dayLine(series, "EXDATE", instanceId), instanceId.toUtf8(), zones);
}

std::vector<Series::Instance> instancesOn(const Series &series, const Moment &day) {
    MomentSet named;
    named.add(day);
    std::vector<Series::Instance> days = series.between(day.utc() - daySeconds, day.utc() + 2 * daySeconds);
    std::erase_if(days, [&](const Series::Instance &instance) { return !named.contains(instance.start); });
    return days;
}

} // namespace

QString instanceIdOf(const Moment &seriesStart, const Moment &day) {
    Moment told = day;
    const bool otherForm = day.kind != seriesStart.kind || day.zoneId != seriesStart.zoneId;
    if (otherForm && day.kind != Kind::Date && seriesStart.kind != Kind::Date) {
        told = seriesStart;
        told.clock = seriesStart.zone->toClock(day.utc());
    }
    // In the hour that a clock shows twice, and beside whole days, only UTC tells it.
    if (told.utc() != day.utc() || (told.kind == Kind::Zoned && seriesStart.kind == Kind::Date))
        told = {Kind::Utc, day.utc(), {}, utcZone()};
    return QString::fromLatin1(clockText(told.clock, told.kind));
}

ContentLine dayLine(const Component &series, const QByteArray &name, const QString &instanceId) {
    constexpr qsizetype dateLength = 8;
    ContentLine line = ContentLine::make(name, instanceId.toUtf8(), series.lineEnd());
    const ContentLine *start = series.line("DTSTART");
    const auto zone = start ? start->parameter("TZID") : std::nullopt;
    if (instanceId.size() == dateLength)
        line.setParameter("VALUE", u"DATE"_s);
    else if (zone && !instanceId.endsWith(u'Z', Qt::CaseInsensitive))
        line.setParameter("TZID", *zone);
    return line;
}

QString CalendarFile::Private::dayOf(CalendarEntry &series, const CalendarEntry &exception) {
    const auto day = readMoment(exception.component->line("RECURRENCE-ID"), zonesOf(exception.calendar));
    const EntrySummary &summary = summaryOf(series);
    return day && summary.times ? instanceIdOf(summary.times->start, *day) : exception.recurrenceId;
}

CalendarEntry *CalendarFile::Private::exceptionOn(CalendarEntry &series, const QString &instanceId) {
    const auto wanted = readDay(*series.component, instanceId, zonesOf(series.calendar));
    if (!wanted)
        return nullptr;
    for (CalendarEntry *entry : byUid.value(series.uid)) {
        const auto day = readMoment(entry->component->line("RECURRENCE-ID"), zonesOf(entry->calendar));
        if (day && day->utc() == wanted->utc() && (day->kind == Kind::Date) == (wanted->kind == Kind::Date))
            return entry;
    }
    return nullptr;
}

std::unique_ptr<Component> CalendarFile::Private::newException(CalendarEntry &series,
                                                               const QString &instanceId) {
    const auto day = readDay(*series.component, instanceId, zonesOf(series.calendar));
    const Component *pattern = series.component;
    for (const FollowedChange &change : changesOf(series).followed) {
        if (day && day->utc() >= change.fromUtc && day->utc() < change.untilUtc)
            pattern = change.exception->component;
    }
    auto component = pattern->copy();
    // What says when the series takes place is not the day's.
    for (const char *name : {"RRULE", "RDATE", "EXRULE", "EXDATE", "RECURRENCE-ID", "CREATED"})
        component->removeLines(name);
    return component;
}

bool CalendarFile::Private::excludeDay(CalendarEntry &series, const QString &instanceId) {
    const EntrySummary &summary = summaryOf(series);
    const auto day = readDay(*series.component, instanceId, zonesOf(series.calendar));
    if (!summary.series || !day || instancesOn(*summary.series, *day).empty())
        return false;
    series.component->append(dayLine(*series.component, "EXDATE", instanceId));
    changed(series);
    return true;
}

std::optional<Moment> CalendarFile::Private::nextFollowing(CalendarEntry &series,
                                                           const FollowedChange &change) {
    const EntrySummary &summary = summaryOf(series);
    if (!summary.series)
        return std::nullopt;
    const Seconds until = std::min(change.untilUtc, change.fromUtc + farthestNextDay);
    const DayChanges &changes = changesOf(series);
    std::optional<Moment> next;
    for (const Series::Instance &day : summary.series->between(change.fromUtc + 1, until)) {
        const bool follows = day.startUtc > change.fromUtc && !changes.days.contains(day.start);
        if (follows && (!next || day.startUtc < next->utc()))
            next = day.start;
    }
    return next;
}

bool CalendarFile::Private::handOn(CalendarEntry &series, CalendarEntry &exception) {
    const std::vector<FollowedChange> followed = changesOf(series).followed; // a copy: it is changed below
    const auto change = std::find_if(followed.begin(), followed.end(),
                                     [&](const FollowedChange &one) { return one.exception == &exception; });
    const auto next = change == followed.end() ? std::nullopt : nextFollowing(series, *change);
    if (!next)
        return false;
    const TimesOfComponent times = *summaryOf(exception).times;
    const Seconds distance = next->clock + change->shift - times.start.clock;
    const auto write = [&](const QByteArray &name, const Moment &time) {
        if (ContentLine *line = exception.component->line(name))
            line->setValue(clockText(time.clock + distance, time.kind));
    };
    write("DTSTART", times.start);
    write("DTEND", times.end);
    const QString name = instanceIdOf(summaryOf(series).times->start, *next);
    ContentLine day = dayLine(*series.component, "RECURRENCE-ID", name);
    day.setParameter("RANGE", u"THISANDFUTURE"_s);
    *exception.component->line("RECURRENCE-ID") = day;
    exception.recurrenceId = name;
    changed(exception);
    return true;
}

void CalendarFile::Private::moveDays(CalendarEntry &series, const Component &before) {
    const auto move = SeriesMove::between(before, *series.component, zonesOf(series.calendar));
    if (!move)
        return;
    move->apply(*series.component);
    for (CalendarEntry *exception : entriesOf(series.uid)) {
        ContentLine *day = exception->component->line("RECURRENCE-ID");
        if (!day || exception == &series)
            continue;
        const QByteArray former = day->source();
        move->moveDays(*day);
        if (day->source() == former)
            continue;
        exception->recurrenceId = decodeOctets(day->value()).trimmed();
        changed(*exception);
    }
}

} // namespace mailhost
