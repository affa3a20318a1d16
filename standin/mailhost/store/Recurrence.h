// The days on which a series takes place, and its rule.
#pragma once

#include "standin/mailhost/store/Times.h"

#include <QSet>
#include <limits>
#include <set>

namespace mailhost {

// Later than every time in a file.
inline constexpr Seconds farthest = std::numeric_limits<Seconds>::max() / 4;

// The points in time of EXDATE and RECURRENCE-ID: instants or whole days.
class MomentSet {
public:
    void add(const Moment &moment);
    // `start` is that of an occurrence.
    [[nodiscard]] bool contains(const Moment &start) const;

private:
    QSet<Seconds> m_instants;
    QSet<Seconds> m_days; // clock time of their midnight
};

class Series {
public:
    struct Instance {
        Moment start;
        Seconds startUtc = 0;
        Seconds endUtc = 0;
    };

    // Null for an appointment that does not recur. A rule that cannot be used gives only the first day.
    static std::unique_ptr<Series> read(const Component &component, const TimesOfComponent &times,
                                        ZoneTable &zones);

    // The instances that overlap [from, to), at most a few thousand: RRULE and RDATE without EXRULE and
    // EXDATE. Those of RDATE come last.
    [[nodiscard]] std::vector<Instance> between(Seconds fromUtc, Seconds toUtc);

private:
    struct Rule {
        QByteArray text; // without UNTIL
        std::optional<ClockTime> until;
        bool counted = false;
        Seconds step = 0; // of a rule by hours or minutes: the length of its interval; else none
    };
    static std::optional<Rule> parseRule(const QByteArray &value);
    void readDates(const Component &component, ZoneTable &zones);
    [[nodiscard]] Instance instance(Seconds clock) const;
    void expand(const Rule &rule, Seconds from, Seconds to, std::set<Seconds> *clocks) const;
    [[nodiscard]] bool isPast(const Rule &rule, Seconds clock) const;
    // At most, when the clock is changed meanwhile.
    [[nodiscard]] Seconds lengthOnClock() const {
        return m_times.span.days * daySeconds + m_times.span.seconds;
    }
    void findEnd();
    void fillCache(Seconds fromUtc, Seconds toUtc);

    TimesOfComponent m_times;
    std::vector<Rule> m_rules;
    std::vector<Rule> m_excludedRules;
    std::vector<Instance> m_additional; // RDATE
    MomentSet m_excluded;
    // The expansion is expensive, so the weeks around the last request are cached for a user who turns pages.
    std::vector<Instance> m_cache;
    Seconds m_cacheFrom = 0;
    Seconds m_cacheTo = 0;
    std::optional<Seconds> m_end; // of the last instance; computed on first use
};

// Adapts a rule (RRULE) to another start of its series. The parts that name exactly the day or the time of
// `before` name those of `after`: the weekday (also as "the second Monday"), the day of the month, the month,
// the time of day. Other parts stay. UNTIL moves as far as the start.
[[nodiscard]] QByteArray movedRule(const QByteArray &rule, const Moment &before, const Moment &after);

} // namespace mailhost
