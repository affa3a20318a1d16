// Identifies, changes and removes single days of a series.
#pragma once

#include "standin/mailhost/store/CalendarIndex.h"

namespace mailhost {

// How the series names that day: in the form of its start.
[[nodiscard]] QString instanceIdOf(const Moment &seriesStart, const Moment &day);
// The line that says which day of the series it is about.
[[nodiscard]] ContentLine dayLine(const Component &series, const QByteArray &name, const QString &instanceId);

class SeriesDays {
public:
    // Both must outlive this object.
    SeriesDays(CalendarIndex &index, CalendarEntry &series)
        : m_index(index)
        , m_series(series) {}

    // Whether days of the series were changed, deleted or added.
    [[nodiscard]] bool hasOwnDays() const;
    // The exception of that day, however the file names it; null if there is none.
    [[nodiscard]] CalendarEntry *exceptionOn(const QString &instanceId);
    // The component of a new exception for that day, before its changes.
    [[nodiscard]] std::unique_ptr<Component> newException(const QString &instanceId);
    // Adds the EXDATE of that day, which may have an exception. False if the series does not take place on
    // it.
    bool exclude(const QString &instanceId, const CalendarEntry *exception);
    // The exception moved to the next day that follows it (RANGE=THISANDFUTURE). It replaces the exception
    // when its own day is removed. Null if no day follows it.
    [[nodiscard]] std::unique_ptr<Component> handedOn(CalendarEntry &exception);

private:
    [[nodiscard]] std::optional<Moment> dayOf(const QString &instanceId);
    [[nodiscard]] std::optional<Moment> nextFollowing(const FollowedChange &change);

    CalendarIndex &m_index;
    CalendarEntry &m_series;
};

} // namespace mailhost
