// What names single days of a series follows the series when its start is moved: else days that were deleted
// would come back, and changed days would stand beside the ones they change.
#pragma once

#include "standin/mailhost/store/Times.h"

namespace mailhost {

class SeriesMove {
public:
    // Null when the days cannot be told by the same distance (the kind of time or the zone is another one),
    // or nothing is moved.
    static std::optional<SeriesMove> between(const Moment &before, const Moment &after);

    // A single date or date-time of such a line. Answers the text as it was when it is none.
    [[nodiscard]] QByteArray moved(const QByteArray &value) const;
    // EXDATE and RDATE of the series, the UNTIL of its rules, and the weekday of a weekly rule that names
    // only the one on which it began.
    void apply(Component &series) const;

private:
    SeriesMove(Seconds distance, Seconds days, QByteArray formerWeekday, QByteArray weekday);
    [[nodiscard]] QByteArray movedRule(const QByteArray &rule) const;

    Seconds m_distance; // on the series' own clock
    Seconds m_days;     // of it, in whole days of the calendar
    QByteArray m_formerWeekday;
    QByteArray m_weekday;
};

} // namespace mailhost
