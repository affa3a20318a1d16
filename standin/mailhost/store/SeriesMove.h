// What names single days of a series follows the series when its start is moved: else days that were deleted
// would come back, and changed days would stand beside the ones they change.
#pragma once

#include "standin/mailhost/store/Times.h"

namespace mailhost {

class SeriesMove {
public:
    // Null when the start is not moved. `after` has the new start and else what it had; its rules are left
    // alone when they were changed together with the start.
    static std::optional<SeriesMove> between(const Component &before, const Component &after,
                                             ZoneTable &zones);

    // EXDATE, RDATE and rules of the series. A rule that names exactly the day (weekday, day of the month) or
    // the time of day on which it began names the new one then; one that names several keeps them. Its UNTIL
    // is moved such that no day is lost or gained.
    void apply(Component &series) const;
    // A line of such days (EXDATE, RDATE, RECURRENCE-ID). What cannot be read stays.
    void moveDays(ContentLine &line) const;

private:
    SeriesMove(TimesOfComponent before, TimesOfComponent after, ZoneTable &zones);
    void compare(const Component &before, const Component &after);
    [[nodiscard]] bool isRigid() const;
    [[nodiscard]] Seconds plainlyMoved(Seconds clock) const;
    [[nodiscard]] Seconds movedClock(Seconds clock) const;
    [[nodiscard]] Moment movedDay(const Moment &day) const;
    [[nodiscard]] QByteArray movedValue(const QByteArray &value, const Moment &day,
                                        const Moment &moved) const;
    [[nodiscard]] QByteArray movedUntil(const QByteArray &until, bool mayCount) const;
    [[nodiscard]] Seconds clockOfUntil(const ClockTime &until) const;
    void moveRule(ContentLine &rule, bool mayCount) const;

    TimesOfComponent m_before;
    TimesOfComponent m_after;
    ZoneTable *m_zones;
    bool m_sameRules = true;
    bool m_rigid = true;   // every day is the former one and the distance
    bool m_pinned = false; // the rule names its days, and goes on naming them: only the time of day is moved
    bool m_otherDay = false;           // the rule named the day on which it began, and names another one now
    Seconds m_distance;                // on the series' own clock
    Seconds m_days;                    // of it, in whole days of the calendar
    std::vector<Seconds> m_formerDays; // of the rules, whatever their UNTIL, sorted
    std::vector<Seconds> m_newDays;
    size_t m_formerCount = 0; // of the former days, up to their UNTIL
};

} // namespace mailhost
