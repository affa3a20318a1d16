#include "standin/mailhost/store/SeriesDays.h"

#include "platform/Literals.h"

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds farthestNextDay = 4 * 366 * daySeconds; // to a 29 February

std::optional<Moment> readDay(const Component &series, const QString &instanceId, ZoneTable &zones) {
    return readMoment(dayLine(series, "EXDATE", instanceId), instanceId.toUtf8(), zones);
}

bool takesPlaceOn(const Series &series, const Moment &day) {
    MomentSet named;
    named.add(day);
    const auto around = series.between(day.utc() - daySeconds, day.utc() + 2 * daySeconds);
    return std::any_of(around.begin(), around.end(),
                       [&](const Series::Instance &instance) { return named.contains(instance.start); });
}

} // namespace

QString instanceIdOf(const Moment &seriesStart, const Moment &day) {
    Moment told = day;
    const bool otherForm = day.kind != seriesStart.kind || day.zoneId != seriesStart.zoneId;
    if (otherForm && day.kind != Kind::Date && seriesStart.kind != Kind::Date) {
        told = seriesStart;
        told.clock = seriesStart.zone->toClock(day.utc());
    }
    // In the hour that a clock shows twice, and beside whole days, only UTC is unambiguous.
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

SeriesDays::SeriesDays(const CalendarIndex &index, EntrySummaries &summaries)
    : m_index(index)
    , m_summaries(summaries) {}

bool SeriesDays::hasOwnDays(const CalendarEntry &series) const {
    const Component &component = *series.component;
    const auto entries = m_index.entriesOf(series.uid);
    return component.line("EXDATE") || component.line("RDATE") || component.line("EXRULE") ||
           std::any_of(entries.begin(), entries.end(),
                       [](const CalendarEntry *entry) { return !entry->recurrenceId.isEmpty(); });
}

QString SeriesDays::idOf(const CalendarEntry &series, const CalendarEntry &exception) {
    const auto day = readMoment(exception.component->line("RECURRENCE-ID"), m_index.zonesOf(exception));
    const EntrySummary &summary = m_summaries.of(series);
    return day && summary.times ? instanceIdOf(summary.times->start, *day) : exception.recurrenceId;
}

CalendarEntry *SeriesDays::exceptionOn(const CalendarEntry &series, const QString &instanceId) const {
    const auto wanted = readDay(*series.component, instanceId, m_index.zonesOf(series));
    if (!wanted)
        return nullptr;
    for (CalendarEntry *entry : m_index.entriesOf(series.uid)) {
        const auto day = readMoment(entry->component->line("RECURRENCE-ID"), m_index.zonesOf(*entry));
        if (day && day->utc() == wanted->utc() && (day->kind == Kind::Date) == (wanted->kind == Kind::Date))
            return entry;
    }
    return nullptr;
}

std::unique_ptr<Component> SeriesDays::newException(const CalendarEntry &series, const QString &instanceId) {
    const auto day = readDay(*series.component, instanceId, m_index.zonesOf(series));
    const Component *pattern = series.component;
    for (const FollowedChange &change : m_summaries.changesOf(series).followed) {
        if (day && day->utc() >= change.fromUtc && day->utc() < change.untilUtc)
            pattern = change.exception->component;
    }
    auto component = pattern->copy();
    // The recurrence of the series does not belong to the day.
    for (const char *name : {"RRULE", "RDATE", "EXRULE", "EXDATE", "RECURRENCE-ID", "CREATED"})
        component->removeLines(name);
    return component;
}

bool SeriesDays::exclude(const CalendarEntry &series, const QString &instanceId) {
    const EntrySummary &summary = m_summaries.of(series);
    const auto day = readDay(*series.component, instanceId, m_index.zonesOf(series));
    if (!summary.series || !day || !takesPlaceOn(*summary.series, *day))
        return false;
    series.component->append(dayLine(*series.component, "EXDATE", instanceId));
    return true;
}

std::optional<Moment> SeriesDays::nextFollowing(const CalendarEntry &series, const FollowedChange &change) {
    const EntrySummary &summary = m_summaries.of(series);
    if (!summary.series)
        return std::nullopt;
    const Seconds until = std::min(change.untilUtc, change.fromUtc + farthestNextDay);
    const DayChanges &changes = m_summaries.changesOf(series);
    std::optional<Moment> next;
    for (const Series::Instance &day : summary.series->between(change.fromUtc + 1, until)) {
        const bool follows = day.startUtc > change.fromUtc && !changes.days.contains(day.start);
        if (follows && (!next || day.startUtc < next->utc()))
            next = day.start;
    }
    return next;
}

std::unique_ptr<Component> SeriesDays::handedOn(const CalendarEntry &series, const CalendarEntry &exception) {
    const std::vector<FollowedChange> &followed = m_summaries.changesOf(series).followed;
    const auto change = std::find_if(followed.begin(), followed.end(),
                                     [&](const FollowedChange &one) { return one.exception == &exception; });
    const auto next = change == followed.end() ? std::nullopt : nextFollowing(series, *change);
    if (!next)
        return nullptr;
    auto component = exception.component->copy();
    const TimesOfComponent &times = *m_summaries.of(exception).times;
    const Seconds distance = next->clock + change->shift - times.start.clock;
    const auto write = [&](const QByteArray &name, const Moment &time) {
        if (ContentLine *line = component->line(name))
            line->setValue(clockText(time.clock + distance, time.kind));
    };
    write("DTSTART", times.start);
    write("DTEND", times.end);
    ContentLine day =
        dayLine(*series.component, "RECURRENCE-ID", instanceIdOf(m_summaries.of(series).times->start, *next));
    day.setParameter("RANGE", u"THISANDFUTURE"_s);
    *component->line("RECURRENCE-ID") = day;
    return component;
}

} // namespace mailhost
