// What the list of a week needs of each appointment, read when it is first asked for.
#pragma once

#include "standin/mailhost/store/CalendarIndex.h"
#include "standin/mailhost/store/Recurrence.h"

#include <limits>

namespace mailhost {

// Later than everything that a file can say.
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

// What the exceptions of a series say about its days.
struct DayChanges {
    MomentSet days; // that have an exception
    std::vector<FollowedChange> followed;
};

class EntrySummaries {
public:
    // What is wrong with an appointment is added to `warnings`. Both outlive this.
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

// For the user to read; the first ones only.
void addWarning(QStringList &warnings, const QString &text);

} // namespace mailhost
