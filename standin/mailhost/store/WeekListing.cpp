#include "standin/mailhost/store/WeekListing.h"

#include "standin/mailhost/store/SeriesDays.h"

#include <QElapsedTimer>

namespace mailhost {

namespace {

// A week of a normal calendar takes a few milliseconds. After this time further series are left out, so that
// a hostile file cannot block the program.
constexpr qint64 longestListing = 3000; // milliseconds

class Listing {
public:
    Listing(CalendarIndex &index, const QDateTime &from, const QDateTime &to)
        : m_index(index)
        , m_from(from.toSecsSinceEpoch())
        , m_to(to.toSecsSinceEpoch()) {}

    void addSingle(const CalendarEntry &entry, const EntrySummary &summary) {
        const bool isException = !entry.recurrenceId.isEmpty();
        // A cancelled day of a series is a day without it.
        if (summary.times && !(isException && summary.cancelled))
            add(entry, entry.recurrenceId, summary, summary.startUtc, summary.endUtc);
    }

    void addSeries(CalendarEntry &series, const EntrySummary &summary) {
        const DayChanges &changes = m_index.changesOf(series);
        Seconds from = m_from;
        Seconds to = m_to;
        for (const FollowedChange &change : changes.followed) {
            const EntrySummary &followed = m_index.summaryOf(*change.exception);
            // The days of the series may be in another zone than the exception, and shorter.
            const Seconds length = followed.endUtc - followed.startUtc;
            from = std::min(from, m_from - change.shift - length - 2 * daySeconds);
            to = std::max(to, m_to - change.shift + 2 * daySeconds);
        }
        for (const Series::Instance &day : summary.series->between(from, to)) {
            const FollowedChange *change = changes.followedOn(day.startUtc);
            const EntrySummary &pattern = change ? m_index.summaryOf(*change->exception) : summary;
            if (changes.days.contains(day.start) || (change && pattern.cancelled))
                continue;
            const QString instanceId = instanceIdOf(summary.times->start, day.start);
            if (!change) {
                add(series, instanceId, pattern, day.startUtc, day.endUtc);
                continue;
            }
            Moment start = pattern.times->start;
            start.clock = day.start.clock + change->shift;
            add(series, instanceId, pattern, start.utc(), start.after(pattern.times->span).utc());
        }
    }

    // Sorted by start.
    QList<Occurrence> result() {
        // Compares seconds, because comparing local times queries the system's time zone each time.
        std::stable_sort(m_listed.begin(), m_listed.end(),
                         [](const Listed &a, const Listed &b) { return a.startUtc < b.startUtc; });
        QList<Occurrence> sorted;
        sorted.reserve(qsizetype(m_listed.size()));
        for (Listed &one : m_listed) {
            one.occurrence.start = QDateTime::fromSecsSinceEpoch(one.startUtc, Qt::LocalTime);
            one.occurrence.end = QDateTime::fromSecsSinceEpoch(one.endUtc, Qt::LocalTime);
            sorted.append(std::move(one.occurrence));
        }
        return sorted;
    }

private:
    struct Listed {
        Seconds startUtc;
        Seconds endUtc;
        Occurrence occurrence;
    };

    // Adds a single appointment, or the day of a series, if it overlaps the period.
    void add(const CalendarEntry &entry, const QString &instanceId, const EntrySummary &texts,
             Seconds startUtc, Seconds endUtc) {
        if (startUtc >= m_to || (startUtc < m_from && endUtc <= m_from))
            return;
        Occurrence occurrence;
        occurrence.uid = entry.uid;
        occurrence.recurrenceId = entry.recurrenceId;
        occurrence.instanceId = instanceId;
        occurrence.isOccurrence = entry.summary->series != nullptr;
        occurrence.isException = !entry.recurrenceId.isEmpty();
        occurrence.summary = texts.summary;
        occurrence.location = texts.location;
        occurrence.hasMeetingRecord = texts.hasMeetingRecord;
        occurrence.allDay = texts.times->start.kind == CalendarTime::Kind::Date;
        m_listed.push_back({startUtc, endUtc, std::move(occurrence)});
    }

    CalendarIndex &m_index;
    Seconds m_from;
    Seconds m_to;
    std::vector<Listed> m_listed;
};

} // namespace

QList<Occurrence> listOccurrences(CalendarIndex &index, const QDateTime &from, const QDateTime &to) {
    if (!from.isValid() || !to.isValid() || from >= to)
        return {};
    Listing listing(index, from, to);
    const std::vector<CalendarEntry *> entries = index.entries();
    for (CalendarEntry *entry : entries)
        (void)index.summaryOf(*entry); // the first time, reading a large file may take longer than the limit
    QElapsedTimer timer;
    timer.start();
    for (CalendarEntry *entry : entries) {
        const EntrySummary &summary = index.summaryOf(*entry);
        if (!summary.series)
            listing.addSingle(*entry, summary);
        else if (timer.elapsed() <= longestListing)
            listing.addSeries(*entry, summary);
    }
    return listing.result();
}

} // namespace mailhost
