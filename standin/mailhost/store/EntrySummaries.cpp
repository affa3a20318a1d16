#include "standin/mailhost/store/EntrySummaries.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentReader.h"
#include "standin/mailhost/store/TextValue.h"

namespace mailhost {

namespace {
constexpr qsizetype mostWarnings = 50;
} // namespace

void addWarning(QStringList &warnings, const QString &text) {
    if (warnings.size() < mostWarnings && !warnings.contains(text))
        warnings.append(text);
}

EntrySummaries::EntrySummaries(const CalendarIndex &index, QStringList &warnings)
    : m_index(index)
    , m_warnings(warnings) {}

const EntrySummary &EntrySummaries::of(const CalendarEntry &entry) {
    const auto [place, isNew] = m_summaries.try_emplace(&entry);
    EntrySummary &summary = place->second;
    if (!isNew)
        return summary;
    const Component &component = *entry.component;
    ZoneTable &zones = m_index.zonesOf(entry);
    summary.times = readTimes(component, zones);
    if (const ContentLine *line = component.line("SUMMARY"))
        summary.summary = readText(*line);
    if (const ContentLine *line = component.line("LOCATION"))
        summary.location = readText(*line);
    if (const ContentLine *line = component.line(ucCapabilitiesProperty))
        summary.hasMeetingRecord = !line->value().trimmed().isEmpty();
    if (const ContentLine *line = component.line("STATUS"))
        summary.cancelled = line->value().trimmed().toUpper() == "CANCELLED";
    if (!summary.times) {
        addWarning(m_warnings, u"“%1” has no start that can be read, so no day shows it."_s.arg(
                                   summary.summary.left(100)));
        return summary;
    }
    summary.startUtc = summary.times->start.utc();
    summary.endUtc = summary.times->end.utc();
    QStringList problems;
    summary.series = Series::read(component, *summary.times, zones, &problems);
    for (const QString &problem : std::as_const(problems))
        addWarning(m_warnings, problem);
    return summary;
}

const DayChanges &EntrySummaries::changesOf(const CalendarEntry &series) {
    const auto [place, isNew] = m_changes.try_emplace(&series);
    DayChanges &changes = place->second;
    if (!isNew)
        return changes;
    const EntrySummary &whole = of(series);
    for (CalendarEntry *entry : m_index.entriesOf(series.uid)) {
        const ContentLine *line = entry->component->line("RECURRENCE-ID");
        const auto day = readMoment(line, m_index.zonesOf(*entry));
        if (!day)
            continue;
        changes.days.add(*day);
        const EntrySummary &summary = of(*entry);
        const QString range = line->parameter("RANGE").value_or(QString()).toUpper();
        if (range != u"THISANDFUTURE"_s || !summary.times || !whole.times)
            continue;
        const bool isDate = day->kind == CalendarTime::Kind::Date;
        const Seconds clock = isDate ? day->clock : whole.times->start.zone->toClock(day->utc());
        changes.followed.push_back({day->utc(), farthest, summary.times->start.clock - clock, entry});
    }
    std::vector<FollowedChange> &followed = changes.followed;
    std::stable_sort(followed.begin(), followed.end(),
                     [](const auto &a, const auto &b) { return a.fromUtc < b.fromUtc; });
    for (size_t i = 0; i + 1 < followed.size(); ++i)
        followed[i].untilUtc = followed[i + 1].fromUtc;
    return changes;
}

void EntrySummaries::forget(const CalendarEntry &entry) {
    m_summaries.erase(&entry);
    for (const CalendarEntry *ofSame : m_index.entriesOf(entry.uid))
        m_changes.erase(ofSame);
}

} // namespace mailhost
