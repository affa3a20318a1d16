// The data of each appointment that the list of a week needs, read on first use.
#pragma once

#include "standin/mailhost/store/CalendarIndex.h"
#include "standin/mailhost/store/Recurrence.h"

#include <limits>

namespace mailhost {

// Later than every time in a file.
inline constexpr Seconds farthest = std::numeric_limits<Seconds>::max() / 4;

struct EntrySummary {
    std::optional<TimesOfComponent> times; // none: the file gives no start
    Seconds startUtc = 0;
    Seconds endUtc = 0;
    QString summary;
    QString location;
    bool hasMeetingRecord = false;
    bool cancelled = false;
    std::unique_ptr<Series> series; // null: takes place once
};

// The days from one on follow an exception (RANGE=THISANDFUTURE), until the next such exception.
struct FollowedChange {
    Seconds fromUtc = 0; // of the day's own start, in the series
    Seconds untilUtc = 0;
    Seconds shift = 0; // on the clock, from that start to the exception's
    CalendarEntry *exception = nullptr;
};

// The changes of a series' days by its exceptions.
struct DayChanges {
    MomentSet days; // that have an exception
    std::vector<FollowedChange> followed;
};

class EntrySummaries {
public:
    // Adds faults of appointments to `warnings`. Both must outlive this object.
    EntrySummaries(const CalendarIndex &index, QStringList &warnings);

    // Both valid until the entry (or another of its series) is forgotten.
    const EntrySummary &of(const CalendarEntry &entry);
    const DayChanges &changesOf(const CalendarEntry &series);
    // The entry was changed or is removed.
    void forget(const CalendarEntry &entry);

private:
    const CalendarIndex &m_index;
    QStringList &m_warnings;
    std::unordered_map<const CalendarEntry *, EntrySummary> m_summaries;
    std::unordered_map<const CalendarEntry *, DayChanges> m_changes;
};

// Adds a text for the user; keeps only the first ones.
void addWarning(QStringList &warnings, const QString &text);

} // namespace mailhost
