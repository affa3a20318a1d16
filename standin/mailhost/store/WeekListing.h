// Lists the appointments in a period of time: single ones and the days of series.
#pragma once

#include "standin/mailhost/store/EntrySummaries.h"

namespace mailhost {

class WeekListing {
public:
    // All three must outlive this object.
    WeekListing(const CalendarIndex &index, EntrySummaries &summaries, QStringList &warnings);

    // Call it for a new or changed entry. The next list reads it.
    void changed(CalendarEntry &entry);
    void removed(const CalendarEntry &entry);
    // See CalendarFile::occurrences().
    [[nodiscard]] QList<Occurrence> between(const QDateTime &from, const QDateTime &to);

private:
    struct Period {
        Seconds from;
        Seconds to;
        [[nodiscard]] bool overlaps(Seconds start, Seconds end) const {
            return start < to && (start >= from || end > from);
        }
    };
    struct Single {
        Seconds startUtc;
        Seconds endUtc;
        const CalendarEntry *entry;
    };
    struct Listed {
        Seconds startUtc;
        qint64 order; // of the entry
        Occurrence occurrence;
    };
    void readUnread();
    [[nodiscard]] static Occurrence withTexts(const CalendarEntry &entry, const EntrySummary &texts);
    [[nodiscard]] static Listed listed(const CalendarEntry &entry, Occurrence occurrence, Seconds startUtc,
                                       Seconds endUtc);
    void addSingle(const CalendarEntry &entry);
    void addSeries(const CalendarEntry &series, const Period &period);
    void addFollowing(const CalendarEntry &series, const FollowedChange &change, const Period &period);

    EntrySummaries &m_summaries;
    QStringList &m_warnings;
    std::vector<CalendarEntry *> m_unread;
    std::vector<CalendarEntry *> m_series;
    std::vector<Single> m_single; // not recurring; a scan of ten thousand takes microseconds
    std::vector<Listed> m_listed; // while a list is being made
};

} // namespace mailhost
