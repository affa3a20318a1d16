// The days on which a series takes place.
#pragma once

#include "standin/mailhost/store/Times.h"

#include <QStringList>

namespace mailhost {

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
        Moment end;
        Seconds startUtc = 0;
        Seconds endUtc = 0;
    };

    // Null for an appointment that does not recur. Adds faults of its rules to `warnings`; a rule that cannot
    // be used gives only the first day.
    static std::unique_ptr<Series> read(const Component &component, const TimesOfComponent &times,
                                        ZoneTable &zones, QStringList *warnings);

    // The instances that overlap [from, to), in no certain order, at most a few thousand: RRULE and RDATE
    // without EXRULE and EXDATE.
    [[nodiscard]] std::vector<Instance> between(Seconds fromUtc, Seconds toUtc) const;

private:
    struct Rule {
        QByteArray text; // without UNTIL
        std::optional<ClockTime> until;
        bool counted = false;
        Seconds step = 0; // of a rule by hours or minutes: the length of its interval; else none
    };
    static std::optional<Rule> parseRule(const QByteArray &value);
    void readDates(const Component &component, ZoneTable &zones);
    [[nodiscard]] static Instance instance(const Moment &start, const Moment &end);
    [[nodiscard]] Seconds lastEnd() const;
    void fillCache(Seconds fromUtc, Seconds toUtc) const;
    void expand(const Rule &rule, Seconds from, Seconds to, QSet<Seconds> *clocks) const;
    [[nodiscard]] bool isPast(const Rule &rule, Seconds clock) const;
    [[nodiscard]] Moment at(Seconds clock) const;

    TimesOfComponent m_times;
    std::vector<Rule> m_rules;
    std::vector<Rule> m_excludedRules;
    std::vector<Instance> m_additional; // RDATE
    MomentSet m_excluded;
    // The expansion is expensive, so the weeks around the last request are cached for a user who turns pages.
    mutable std::vector<Instance> m_cache;
    mutable Seconds m_cacheFrom = 0;
    mutable Seconds m_cacheTo = 0;
    // The end of the last instance; computed on first use.
    mutable std::optional<Seconds> m_lastEnd;
};

} // namespace mailhost
