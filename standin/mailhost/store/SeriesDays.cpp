#include "standin/mailhost/store/SeriesDays.h"

#include "platform/Literals.h"

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds farthestNextDay = 4 * 366 * daySeconds; // to a 29 February

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

bool SeriesDays::hasOwnDays() const {
    const Component &component = *m_series.component;
    const auto entries = m_index.entriesOf(m_series.uid);
    return component.line("EXDATE") || component.line("RDATE") || component.line("EXRULE") ||
           std::any_of(entries.begin(), entries.end(),
                       [](const CalendarEntry *entry) { return !entry->recurrenceId.isEmpty(); });
}

std::optional<Moment> SeriesDays::dayOf(const QString &instanceId) {
    const ContentLine line = dayLine(*m_series.component, "EXDATE", instanceId);
    return readMoment(&line, m_index.zonesOf(m_series));
}

CalendarEntry *SeriesDays::exceptionOn(const QString &instanceId) {
    const auto wanted = dayOf(instanceId);
    if (!wanted)
        return nullptr;
    for (CalendarEntry *entry : m_index.entriesOf(m_series.uid)) {
        const auto day = readMoment(entry->component->line("RECURRENCE-ID"), m_index.zonesOf(*entry));
        if (day && day->utc() == wanted->utc() && (day->kind == Kind::Date) == (wanted->kind == Kind::Date))
            return entry;
    }
    return nullptr;
}

std::unique_ptr<Component> SeriesDays::newException(const QString &instanceId) {
    const auto day = dayOf(instanceId);
    const FollowedChange *change = day ? m_index.changesOf(m_series).followedOn(day->utc()) : nullptr;
    auto component = (change ? change->exception : &m_series)->component->copy();
    // The recurrence of the series does not belong to the day.
    for (const char *name : {"RRULE", "RDATE", "EXRULE", "EXDATE", "RECURRENCE-ID", "CREATED"})
        component->removeLines(name);
    return component;
}

bool SeriesDays::exclude(const QString &instanceId, const CalendarEntry *exception) {
    const EntrySummary &summary = m_index.summaryOf(m_series);
    const auto day =
        exception ? readMoment(exception->component->line("RECURRENCE-ID"), m_index.zonesOf(*exception))
                  : dayOf(instanceId);
    if (!summary.series || !day)
        return false;
    MomentSet named;
    named.add(*day);
    const auto around = summary.series->between(day->utc() - daySeconds, day->utc() + 2 * daySeconds);
    if (std::none_of(around.begin(), around.end(),
                     [&](const Series::Instance &instance) { return named.contains(instance.start); }))
        return false;
    m_series.component->append(
        dayLine(*m_series.component, "EXDATE", instanceIdOf(summary.times->start, *day)));
    return true;
}

std::optional<Moment> SeriesDays::nextFollowing(const FollowedChange &change) {
    const DayChanges &changes = m_index.changesOf(m_series);
    const auto &series = m_index.summaryOf(m_series).series;
    std::optional<Moment> next;
    if (!series)
        return next;
    for (const Series::Instance &day :
         series->between(change.fromUtc + 1, change.fromUtc + farthestNextDay)) {
        const bool follows = day.startUtc > change.fromUtc && changes.followedOn(day.startUtc) == &change &&
                             !changes.days.contains(day.start);
        if (follows && (!next || day.startUtc < next->utc()))
            next = day.start;
    }
    return next;
}

std::unique_ptr<Component> SeriesDays::handedOn(CalendarEntry &exception) {
    const std::vector<FollowedChange> &followed = m_index.changesOf(m_series).followed;
    const auto change = std::find_if(followed.begin(), followed.end(),
                                     [&](const FollowedChange &one) { return one.exception == &exception; });
    const auto next = change == followed.end() ? std::nullopt : nextFollowing(*change);
    if (!next)
        return nullptr;
    auto component = exception.component->copy();
    const TimesOfComponent &times = *m_index.summaryOf(exception).times;
    const Seconds distance = next->clock + change->shift - times.start.clock;
    const auto write = [&](const QByteArray &name, const Moment &time) {
        if (ContentLine *line = component->line(name))
            line->setValue(clockText(time.clock + distance, time.kind));
    };
    write("DTSTART", times.start);
    write("DTEND", times.end);
    ContentLine day = dayLine(*m_series.component, "RECURRENCE-ID",
                              instanceIdOf(m_index.summaryOf(m_series).times->start, *next));
    day.setParameter("RANGE", u"THISANDFUTURE"_s);
    *component->line("RECURRENCE-ID") = day;
    return component;
}

} // namespace mailhost
