// Identifies, changes and removes single days of a series.
#pragma once

#include "standin/mailhost/store/EntrySummaries.h"

namespace mailhost {

// How the series names that day: in the form of its start.
[[nodiscard]] QString instanceIdOf(const Moment &seriesStart, const Moment &day);
// The line that says which day of the series it is about.
[[nodiscard]] ContentLine dayLine(const Component &series, const QByteArray &name, const QString &instanceId);

class SeriesDays {
public:
    // Both must outlive this object.
    SeriesDays(const CalendarIndex &index, EntrySummaries &summaries);

    // Whether days of the series were changed, deleted or added.
    [[nodiscard]] bool hasOwnDays(const CalendarEntry &series) const;
    // How the series names the day that the exception changes.
    [[nodiscard]] QString idOf(const CalendarEntry &series, const CalendarEntry &exception);
    // The exception of that day, however the file names it; null if there is none.
    [[nodiscard]] CalendarEntry *exceptionOn(const CalendarEntry &series, const QString &instanceId) const;
    // The component of a new exception for that day, before its changes.
    [[nodiscard]] std::unique_ptr<Component> newException(const CalendarEntry &series,
                                                          const QString &instanceId);
    // Adds the EXDATE. False if the series does not take place on that day.
    bool exclude(const CalendarEntry &series, const QString &instanceId);
    // The exception moved to the next day that follows it (RANGE=THISANDFUTURE). It replaces the exception
    // when its own day is removed. Null if no day follows it.
    [[nodiscard]] std::unique_ptr<Component> handedOn(const CalendarEntry &series,
                                                      const CalendarEntry &exception);

private:
    [[nodiscard]] std::optional<Moment> nextFollowing(const CalendarEntry &series,
                                                      const FollowedChange &change);

    const CalendarIndex &m_index;
    EntrySummaries &m_summaries;
};

} // namespace mailhost
