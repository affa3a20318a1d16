#include "standin/mailhost/store/WeekListing.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/SeriesDays.h"

#include <QElapsedTimer>

namespace mailhost {

namespace {

// A week of a normal calendar takes a few milliseconds. After this time further series are left out, so that
// a hostile file cannot block the program.
constexpr qint64 longestListing = 3000; // milliseconds

QDateTime localTime(Seconds utc) {
    return QDateTime::fromSecsSinceEpoch(utc, Qt::LocalTime);
}

} // namespace

WeekListing::WeekListing(const CalendarIndex &index, EntrySummaries &summaries, QStringList &warnings)
    : m_summaries(summaries)
    , m_warnings(warnings) {
    for (const auto &entry : index.entries())
        m_unread.push_back(entry.get());
}

void WeekListing::changed(CalendarEntry &entry) {
    removed(entry);
    m_unread.push_back(&entry);
}

void WeekListing::removed(const CalendarEntry &entry) {
    std::erase_if(m_single, [&](const Single &single) { return single.entry == &entry; });
    std::erase(m_series, &entry);
    std::erase(m_unread, &entry);
}

void WeekListing::readUnread() {
    for (CalendarEntry *entry : m_unread) {
        const EntrySummary &summary = m_summaries.of(*entry);
        if (summary.series)
            m_series.push_back(entry);
        else if (summary.times)
            m_single.push_back({summary.startUtc, summary.endUtc, entry});
    }
    m_unread.clear();
}

Occurrence WeekListing::withTexts(const CalendarEntry &entry, const EntrySummary &texts) {
    Occurrence occurrence;
    occurrence.uid = entry.uid;
    occurrence.summary = texts.summary;
    occurrence.location = texts.location;
    occurrence.hasMeetingRecord = texts.hasMeetingRecord;
    occurrence.allDay = texts.times->start.kind == CalendarTime::Kind::Date;
    return occurrence;
}

WeekListing::Listed WeekListing::listed(const CalendarEntry &entry, Occurrence occurrence, Seconds startUtc,
                                        Seconds endUtc) {
    occurrence.start = localTime(startUtc);
    occurrence.end = localTime(endUtc);
    return {startUtc, entry.order, std::move(occurrence)};
}

void WeekListing::addSingle(const CalendarEntry &entry) {
    const EntrySummary &summary = m_summaries.of(entry);
    if (!entry.recurrenceId.isEmpty() && summary.cancelled)
        return; // a cancelled day of a series is a day without it
    Occurrence occurrence = withTexts(entry, summary);
    occurrence.recurrenceId = occurrence.instanceId = entry.recurrenceId;
    occurrence.isException = !entry.recurrenceId.isEmpty();
    m_listed.push_back(listed(entry, std::move(occurrence), summary.startUtc, summary.endUtc));
}

void WeekListing::addSeries(const CalendarEntry &series, const Period &period) {
    const EntrySummary &summary = m_summaries.of(series);
    const DayChanges &changes = m_summaries.changesOf(series);
    const Seconds own = changes.followed.empty() ? farthest : changes.followed.front().fromUtc;
    for (const Series::Instance &day : summary.series->between(period.from, period.to)) {
        if (day.startUtc >= own || changes.days.contains(day.start))
            continue;
        Occurrence occurrence = withTexts(series, summary);
        occurrence.isOccurrence = true;
        occurrence.instanceId = instanceIdOf(summary.times->start, day.start);
        m_listed.push_back(listed(series, std::move(occurrence), day.startUtc, day.endUtc));
    }
    for (const FollowedChange &change : changes.followed)
        addFollowing(series, change, period);
}

void WeekListing::addFollowing(const CalendarEntry &series, const FollowedChange &change,
                               const Period &period) {
    const EntrySummary &summary = m_summaries.of(series);
    const EntrySummary &followed = m_summaries.of(*change.exception);
    const DayChanges &changes = m_summaries.changesOf(series);
    const Seconds length = followed.endUtc - followed.startUtc;
    // The days of the series may be in another zone than the exception, and shorter.
    const Seconds first = std::max(change.fromUtc, period.from - change.shift - length - 2 * daySeconds);
    const Seconds last = std::min(change.untilUtc, period.to - change.shift + 2 * daySeconds);
    if (followed.cancelled || first >= last)
        return;
    for (const Series::Instance &day : summary.series->between(first, last)) {
        if (changes.days.contains(day.start) || day.startUtc < change.fromUtc ||
            day.startUtc >= change.untilUtc)
            continue;
        Moment start = followed.times->start;
        start.clock = day.start.clock + change.shift;
        const Seconds startUtc = start.utc();
        const Seconds endUtc = followed.times->span.after(start).utc();
        if (!period.overlaps(startUtc, endUtc))
            continue;
        Occurrence occurrence = withTexts(series, followed);
        occurrence.isOccurrence = true;
        occurrence.instanceId = instanceIdOf(summary.times->start, day.start);
        m_listed.push_back(listed(series, std::move(occurrence), startUtc, endUtc));
    }
}

QList<Occurrence> WeekListing::between(const QDateTime &from, const QDateTime &to) {
    QList<Occurrence> sorted;
    if (!from.isValid() || !to.isValid() || from >= to)
        return sorted;
    readUnread();
    m_listed.clear();
    QElapsedTimer timer;
    timer.start();
    const Period period{from.toSecsSinceEpoch(), to.toSecsSinceEpoch()};
    for (const Single &single : m_single) {
        if (period.overlaps(single.startUtc, single.endUtc))
            addSingle(*single.entry);
    }
    for (const CalendarEntry *entry : m_series) {
        if (timer.elapsed() > longestListing) {
            addWarning(m_warnings, u"This calendar repeats so often that not everything can be shown."_s);
            break;
        }
        addSeries(*entry, period);
    }
    // Compares seconds, because comparing local times queries the system's time zone each time.
    std::sort(m_listed.begin(), m_listed.end(), [](const Listed &a, const Listed &b) {
        return std::pair(a.startUtc, a.order) < std::pair(b.startUtc, b.order);
    });
    sorted.reserve(qsizetype(m_listed.size()));
    for (Listed &one : m_listed)
        sorted.append(std::move(one.occurrence));
    m_listed.clear();
    return sorted;
}

} // namespace mailhost
