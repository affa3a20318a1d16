#include "standin/mailhost/store/Recurrence.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/IcalHandles.h"

#include <limits>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds cachedAround = 56 * daySeconds;
constexpr int mostSteps = 100000; // of one rule for one question: a rule with COUNT is run from its beginning
constexpr int mostInstances = 11000; // of one series in one answer: every minute of a week
constexpr qsizetype longestRule = 1000;
constexpr Seconds latestClock = 7258118400; // 2200

} // namespace

void MomentSet::add(const Moment &moment) {
    if (moment.kind == Kind::Date)
        m_days.insert(moment.clock);
    else
        m_instants.insert(moment.utc());
}

bool MomentSet::contains(const Moment &start) const {
    if (m_days.isEmpty() && m_instants.isEmpty())
        return false;
    return m_days.contains(midnightOf(start.clock)) || m_instants.contains(start.utc());
}

std::optional<Series::Rule> Series::parseRule(const QByteArray &value) {
    const QByteArray text = QByteArray(value).replace(' ', "").toUpper();
    if (text.isEmpty() || text.size() > longestRule)
        return std::nullopt;
    Rule rule;
    bool frequencySeen = false;
    int interval = 1;
    const auto parts = text.split(';');
    for (const QByteArray &part : parts) {
        const qsizetype equals = part.indexOf('=');
        const QByteArray name = part.left(equals);
        const QByteArray argument = part.mid(equals + 1);
        if (part.isEmpty())
            continue;
        if (name == "UNTIL") {
            rule.until = parseClock(argument);
            if (!rule.until)
                return std::nullopt;
            continue;
        }
        // Only the Gregorian calendar is supported; libical would also leak the name of another one.
        if (name == "RSCALE" || name == "SKIP") {
            if (argument != "GREGORIAN" && argument != "OMIT")
                return std::nullopt;
            continue;
        }
        if (name == "COUNT")
            rule.counted = argument.toInt() > 0;
        if (name == "INTERVAL")
            interval = argument.toInt();
        if (interval < 1 || interval > 32000)
            return std::nullopt;
        if (name == "FREQ") {
            frequencySeen = true;
            rule.step = argument == "HOURLY" ? 3600 : argument == "MINUTELY" ? 60 : 0;
            if (argument == "SECONDLY")
                return std::nullopt; // no appointment; a rule that never matches would take very long to find
                                     // out
        }
        rule.text += (rule.text.isEmpty() ? "" : ";") + part;
    }
    rule.step *= interval;
    prepareIcal();
    if (!frequencySeen || icalrecurrencetype_from_string(rule.text.constData()).freq == ICAL_NO_RECURRENCE)
        return std::nullopt;
    return rule;
}

std::unique_ptr<Series> Series::read(const Component &component, const TimesOfComponent &times,
                                     ZoneTable &zones, QStringList *warnings) {
    const bool recurs = component.line("RRULE") || component.line("RDATE");
    if (!recurs || component.line("RECURRENCE-ID"))
        return nullptr;
    auto series = std::make_unique<Series>();
    series->m_times = times;
    const auto readRules = [&](const QByteArray &name, std::vector<Rule> *rules) {
        for (const ContentLine *line : component.lines(name)) {
            if (const auto rule = parseRule(line->value()))
                rules->push_back(*rule);
            else
                warnings->append(u"The repetition “%1” cannot be shown; only its first day is."_s.arg(
                    decodeOctets(line->value()).left(100)));
        }
    };
    readRules("RRULE", &series->m_rules);
    readRules("EXRULE", &series->m_excludedRules);
    series->readDates(component, zones);
    return series;
}

void Series::readDates(const Component &component, ZoneTable &zones) {
    for (const ContentLine *line : component.lines("RDATE")) {
        const auto values = line->value().split(',');
        for (const QByteArray &value : values) {
            const qsizetype slash = value.indexOf('/'); // a period: start/end or start/duration
            const auto start = readMoment(*line, slash < 0 ? value : value.left(slash), zones);
            if (!start)
                continue;
            Moment end = m_times.span.after(*start);
            const QByteArray rest = slash < 0 ? QByteArray() : value.mid(slash + 1);
            if (const auto span = parseDuration(rest))
                end = span->after(*start);
            else if (const auto until = readMoment(*line, rest, zones))
                end = *until;
            m_additional.push_back(instance(*start, end));
        }
    }
    for (const ContentLine *line : component.lines("EXDATE")) {
        const auto values = line->value().split(',');
        for (const QByteArray &value : values) {
            if (const auto moment = readMoment(*line, value, zones))
                m_excluded.add(*moment);
        }
    }
}

Moment Series::at(Seconds clock) const {
    Moment moment = m_times.start;
    moment.clock = clock;
    return moment;
}

bool Series::isPast(const Rule &rule, Seconds clock) const {
    if (!rule.until)
        return false;
    if (rule.until->kind == Kind::Date)
        return midnightOf(clock) > rule.until->clock;
    if (rule.until->kind == Kind::Utc && m_times.start.kind != Kind::Date)
        return at(clock).utc() > rule.until->clock;
    return clock > rule.until->clock;
}

// Clock times of the rule from `from` to `to`. libical runs on plain clock times: a series keeps its clock
// time over a change to daylight saving.
void Series::expand(const Rule &rule, Seconds from, Seconds to, QSet<Seconds> *clocks) const {
    icalrecurrencetype parsed = icalrecurrencetype_from_string(rule.text.constData());
    const Seconds start = m_times.start.clock;
    if (start > to)
        return;
    if (!rule.counted)
        parsed.until = icalTime(to); // also keeps rules that match nothing from running on for ever
    const bool skips = !rule.counted && from > start;
    // libical's own skipping loses the phase of rules by hours and minutes.
    const Seconds begin = skips && rule.step > 0 ? start + (from - start) / rule.step * rule.step : start;
    const IcalIterator iterator(icalrecur_iterator_new(parsed, icalTime(begin)));
    if (!iterator)
        return;
    if (skips && rule.step == 0)
        icalrecur_iterator_set_start(iterator.get(), icalTime(from));
    for (int step = 0; step < mostSteps && clocks->size() < mostInstances; ++step) {
        const icaltimetype next = icalrecur_iterator_next(iterator.get());
        if (icaltime_is_null_time(next))
            return;
        const std::optional<Seconds> clock = secondsOf(next);
        if (!clock)
            continue;
        if (*clock > to || isPast(rule, *clock))
            return;
        if (*clock >= from)
            clocks->insert(*clock);
    }
}

void Series::fillCache(Seconds fromUtc, Seconds toUtc) const {
    const bool frequent =
        std::any_of(m_rules.begin(), m_rules.end(), [](const Rule &r) { return r.step > 0; });
    const Seconds around = frequent ? 0 : cachedAround;
    m_cacheFrom = fromUtc - around;
    m_cacheTo = toUtc + around;
    // Zones are at most a day away from UTC.
    const Seconds from = m_cacheFrom - m_times.span.days * daySeconds - m_times.span.seconds - daySeconds;
    const Seconds to = m_cacheTo + daySeconds;
    QSet<Seconds> clocks;
    QSet<Seconds> excluded;
    if (m_times.start.clock >= from && m_times.start.clock <= to)
        clocks.insert(m_times.start.clock);
    for (const Rule &rule : m_rules)
        expand(rule, from, to, &clocks);
    for (const Rule &rule : m_excludedRules)
        expand(rule, from, to, &excluded);
    m_cache.clear();
    for (const Seconds clock : std::as_const(clocks)) {
        const Moment start = at(clock);
        if (!excluded.contains(clock) && !m_excluded.contains(start))
            m_cache.push_back(instance(start, m_times.span.after(start)));
    }
    QSet<Seconds> known;
    for (const Instance &instance : m_cache)
        known.insert(instance.startUtc);
    for (const Instance &instance : m_additional) {
        const Seconds utc = instance.startUtc;
        if (utc < m_cacheTo && !known.contains(utc) && !m_excluded.contains(instance.start)) {
            known.insert(utc);
            m_cache.push_back(instance);
        }
    }
}

Series::Instance Series::instance(const Moment &start, const Moment &end) {
    return {start, end, start.utc(), end.utc()};
}

// Lets callers skip the expansion of series that have ended, which are most of an old calendar.
Seconds Series::lastEnd() const {
    constexpr Seconds never = std::numeric_limits<Seconds>::max();
    if (m_lastEnd)
        return *m_lastEnd;
    const Seconds length = (m_times.span.days + 1) * daySeconds + m_times.span.seconds;
    Seconds last = m_times.start.clock;
    for (const Rule &rule : m_rules) {
        if (rule.until) {
            last = std::max(last, rule.until->clock + daySeconds);
            continue;
        }
        if (!rule.counted)
            return *(m_lastEnd = never);
        QSet<Seconds> clocks;
        expand(rule, m_times.start.clock, latestClock, &clocks);
        if (clocks.size() >= mostInstances)
            return *(m_lastEnd = never);
        for (const Seconds clock : std::as_const(clocks))
            last = std::max(last, clock);
    }
    last += length + daySeconds; // zones are at most a day away from UTC
    for (const Instance &additional : m_additional)
        last = std::max(last, additional.endUtc);
    return *(m_lastEnd = last);
}

std::vector<Series::Instance> Series::between(Seconds fromUtc, Seconds toUtc) const {
    if (fromUtc > lastEnd())
        return {};
    if (m_cacheFrom >= m_cacheTo || fromUtc < m_cacheFrom || toUtc > m_cacheTo)
        fillCache(fromUtc, toUtc);
    std::vector<Instance> found;
    for (const Instance &instance : m_cache) {
        if (instance.startUtc < toUtc && (instance.startUtc >= fromUtc || instance.endUtc > fromUtc))
            found.push_back(instance);
    }
    return found;
}

} // namespace mailhost
