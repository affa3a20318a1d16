#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentReader.h"
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/TextValue.h"

#include <QElapsedTimer>

namespace mailhost {

namespace {

// A week of an honest calendar takes a few milliseconds. Series that were made to take long are left out at
// some time.
constexpr qint64 longestListing = 3000; // milliseconds

using Kind = CalendarTime::Kind;
constexpr Seconds day = 86400;
constexpr Seconds farthest = std::numeric_limits<Seconds>::max() / 4; // later than all that a file can say

QDateTime localTime(Seconds utc) {
    return QDateTime::fromSecsSinceEpoch(utc, Qt::LocalTime);
}

bool overlaps(Seconds start, Seconds end, Seconds from, Seconds to) {
    return start < to && (start >= from || end > from);
}

// What is the same for one that takes place once and for the days of a series.
Occurrence occurrenceWithTexts(const CalendarEntry &entry, const EntrySummary &texts) {
    Occurrence occurrence;
    occurrence.uid = entry.uid;
    occurrence.summary = texts.summary;
    occurrence.location = texts.location;
    occurrence.hasMeetingRecord = texts.hasMeetingRecord;
    occurrence.allDay = texts.times->start.kind == Kind::Date;
    return occurrence;
}

TimedOccurrence singleOccurrence(const CalendarEntry &entry, const EntrySummary &summary) {
    Occurrence occurrence = occurrenceWithTexts(entry, summary);
    occurrence.recurrenceId = occurrence.instanceId = entry.recurrenceId;
    occurrence.isException = !entry.recurrenceId.isEmpty();
    occurrence.start = localTime(summary.startUtc);
    occurrence.end = localTime(summary.endUtc);
    return {summary.startUtc, entry.order, occurrence};
}

// `seriesStart` tells how the series tells its days.
TimedOccurrence occurrenceOf(const CalendarEntry &series, const EntrySummary &texts,
                             const Moment &seriesStart, const Series::Instance &instance) {
    Occurrence occurrence = occurrenceWithTexts(series, texts);
    occurrence.isOccurrence = true;
    occurrence.instanceId = instanceIdOf(seriesStart, instance.start);
    occurrence.start = localTime(instance.startUtc);
    occurrence.end = localTime(instance.endUtc);
    return {instance.startUtc, series.order, occurrence};
}

} // namespace

const EntrySummary &CalendarFile::Private::summaryOf(CalendarEntry &entry) {
    if (entry.summary)
        return *entry.summary;
    auto summary = std::make_unique<EntrySummary>();
    const Component &component = *entry.component;
    ZoneTable &table = zonesOf(entry.calendar);
    summary->times = readTimes(component, table);
    if (const ContentLine *line = component.line("SUMMARY"))
        summary->summary = readText(*line);
    if (const ContentLine *line = component.line("LOCATION"))
        summary->location = readText(*line);
    if (const ContentLine *line = component.line(ucCapabilitiesProperty))
        summary->hasMeetingRecord = !line->value().trimmed().isEmpty();
    if (const ContentLine *line = component.line("STATUS"))
        summary->cancelled = line->value().trimmed().toUpper() == "CANCELLED";
    if (summary->times) {
        summary->startUtc = summary->times->start.utc();
        summary->endUtc = summary->times->end.utc();
        QStringList problems;
        summary->series = Series::read(component, *summary->times, table, &problems);
        for (const QString &problem : std::as_const(problems))
            warn(problem);
    } else {
        warn(u"“%1” has no start that can be read, so no day shows it."_s.arg(summary->summary.left(100)));
    }
    entry.summary = std::move(summary);
    return *entry.summary;
}

void CalendarFile::Private::readUnread() {
    for (CalendarEntry *entry : unread) {
        const EntrySummary &summary = summaryOf(*entry);
        if (summary.series)
            series.push_back(entry);
        else if (summary.times)
            single.add(entry, summary.startUtc, summary.endUtc);
    }
    unread.clear();
}

const DayChanges &CalendarFile::Private::changesOf(CalendarEntry &series) {
    if (series.changes)
        return *series.changes;
    series.changes = std::make_unique<DayChanges>();
    std::vector<FollowedChange> &followed = series.changes->followed;
    for (CalendarEntry *entry : byUid.value(series.uid)) {
        const ContentLine *line = entry->component->line("RECURRENCE-ID");
        const auto day = readMoment(line, zonesOf(entry->calendar));
        if (!day)
            continue;
        series.changes->days.add(*day);
        const EntrySummary &summary = summaryOf(*entry);
        const EntrySummary &whole = summaryOf(series);
        const QString range = line->parameter("RANGE").value_or(QString()).toUpper();
        if (range != u"THISANDFUTURE"_s || !summary.times || !whole.times)
            continue;
        const Zone &zone = *whole.times->start.zone;
        const Seconds clock = day->kind == Kind::Date ? day->clock : zone.toClock(day->utc());
        followed.push_back({day->utc(), farthest, summary.times->start.clock - clock, entry});
    }
    std::stable_sort(followed.begin(), followed.end(),
                     [](const auto &a, const auto &b) { return a.fromUtc < b.fromUtc; });
    for (size_t i = 0; i + 1 < followed.size(); ++i)
        followed[i].untilUtc = followed[i + 1].fromUtc;
    return *series.changes;
}

void CalendarFile::Private::appendSeries(CalendarEntry &series, Seconds from, Seconds to,
                                         std::vector<TimedOccurrence> *out) {
    const EntrySummary &summary = summaryOf(series);
    const DayChanges &changes = changesOf(series);
    const Seconds own = changes.followed.empty() ? farthest : changes.followed.front().fromUtc;
    for (const Series::Instance &instance : summary.series->between(from, to)) {
        if (instance.startUtc < own && !changes.days.contains(instance.start))
            out->push_back(occurrenceOf(series, summary, summary.times->start, instance));
    }
    for (const FollowedChange &change : changes.followed)
        appendFollowing(series, change, from, to, out);
}

void CalendarFile::Private::appendFollowing(CalendarEntry &series, const FollowedChange &change, Seconds from,
                                            Seconds to, std::vector<TimedOccurrence> *out) {
    const EntrySummary &summary = summaryOf(series);
    const EntrySummary &followed = summaryOf(*change.exception);
    const Seconds length = followed.endUtc - followed.startUtc;
    // The series' own days may be told in another zone than the change, and be shorter.
    const Seconds first = std::max(change.fromUtc, from - change.shift - length - 2 * day);
    const Seconds last = std::min(change.untilUtc, to - change.shift + 2 * day);
    if (followed.cancelled || first >= last)
        return;
    for (Series::Instance instance : summary.series->between(first, last)) {
        const bool own = changesOf(series).days.contains(instance.start);
        if (own || instance.startUtc < change.fromUtc || instance.startUtc >= change.untilUtc)
            continue;
        const Moment named = instance.start;
        instance.start = followed.times->start;
        instance.start.clock = named.clock + change.shift;
        instance.end = followed.times->span.after(instance.start);
        instance.startUtc = instance.start.utc();
        instance.endUtc = instance.end.utc();
        if (!overlaps(instance.startUtc, instance.endUtc, from, to))
            continue;
        TimedOccurrence timed = occurrenceOf(series, followed, followed.times->start, instance);
        timed.occurrence.instanceId = instanceIdOf(summary.times->start, named);
        out->push_back(timed);
    }
}

QList<Occurrence> CalendarFile::occurrences(const QDateTime &from, const QDateTime &to) const {
    QList<Occurrence> sorted;
    if (!from.isValid() || !to.isValid() || from >= to)
        return sorted;
    d->readUnread();
    std::vector<TimedOccurrence> found;
    QElapsedTimer timer;
    timer.start();
    const Seconds fromUtc = from.toSecsSinceEpoch();
    const Seconds toUtc = to.toSecsSinceEpoch();
    for (CalendarEntry *entry : d->single.overlapping(fromUtc, toUtc)) {
        const EntrySummary &summary = d->summaryOf(*entry);
        // A cancelled day of a series is a day without it.
        if (entry->recurrenceId.isEmpty() || !summary.cancelled)
            found.push_back(singleOccurrence(*entry, summary));
    }
    for (CalendarEntry *entry : d->series) {
        if (timer.elapsed() > longestListing) {
            d->warn(u"This calendar repeats so often that not everything can be shown."_s);
            break;
        }
        d->appendSeries(*entry, fromUtc, toUtc, &found);
    }
    // By the seconds: comparing local times asks the system for its time zone again and again.
    std::sort(found.begin(), found.end(), [](const TimedOccurrence &a, const TimedOccurrence &b) {
        return std::pair(a.startUtc, a.order) < std::pair(b.startUtc, b.order);
    });
    sorted.reserve(qsizetype(found.size()));
    for (TimedOccurrence &timed : found)
        sorted.append(std::move(timed.occurrence));
    return sorted;
}

} // namespace mailhost
