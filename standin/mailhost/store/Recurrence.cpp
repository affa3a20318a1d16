#include "standin/mailhost/store/Recurrence.h"

#include "platform/Literals.h"

#include <libical/ical.h>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds cachedAround = 56 * daySeconds;
constexpr int mostSteps = 100000; // of one rule for one question: a rule with COUNT is run from its beginning
constexpr size_t mostInstances = 11000; // of one series in one answer: every minute of a week
constexpr qsizetype longestRule = 1000;
constexpr Seconds latestClock = 7258118400; // 2200

// The ordinal of its weekday in the month. Most months have no fifth one, so it counts as the last.
QByteArray ordinalOf(const QDate &date) {
    const int ordinal = (date.day() - 1) / 7 + 1;
    return ordinal > 4 ? "-1" : QByteArray::number(ordinal);
}

QByteArray movedUntil(const QByteArray &argument, const Moment &before, const Moment &after) {
    const auto until = parseClock(argument);
    if (!until)
        return argument;
    const bool wasTimed = before.kind != Kind::Date;
    const bool isInstant = until->kind == Kind::Utc && wasTimed;
    const Seconds clock = isInstant ? before.zone->toClock(until->clock) : until->clock;
    Moment moved = after;
    moved.clock = clock + after.clock - before.clock;
    // The format wants an instant for times, but a series by the time of day may end with a whole day.
    if (after.kind == Kind::Date || (until->kind == Kind::Date && wasTimed))
        return clockText(moved.clock, Kind::Date);
    if (after.kind == Kind::Floating || (until->kind == Kind::Floating && before.kind == after.kind))
        return clockText(moved.clock, Kind::Floating);
    return clockText(moved.utc(), Kind::Utc);
}

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
    Rule rule;
    QList<QByteArray> parts = QByteArray(value).replace(' ', "").toUpper().split(';');
    for (QByteArray &part : parts) {
        // Only the Gregorian calendar is supported; libical would also leak the name of another one.
        if (part == "RSCALE=GREGORIAN" || part == "SKIP=OMIT") {
            part.clear();
        } else if (part.startsWith("RSCALE=") || part.startsWith("SKIP=")) {
            return std::nullopt;
        } else if (part.startsWith("INTERVAL=")) {
            const int interval = part.mid(9).toInt();
            if (interval < 1 || interval > 32000) // libical keeps 16 bits
                return std::nullopt;
        } else if (part.startsWith("UNTIL=")) {
            rule.until = parseClock(part.mid(6));
            if (!rule.until)
                return std::nullopt;
            part.clear();
        }
    }
    parts.removeAll(QByteArray());
    rule.text = parts.join(';');
    if (rule.text.size() > longestRule)
        return std::nullopt;
    prepareIcal();
    const icalrecurrencetype parsed = icalrecurrencetype_from_string(rule.text.constData());
    // One by seconds is no appointment; if it never matched, that would take very long to find out.
    if (parsed.freq == ICAL_NO_RECURRENCE || parsed.freq == ICAL_SECONDLY_RECURRENCE)
        return std::nullopt;
    rule.counted = parsed.count > 0;
    const int step = parsed.freq == ICAL_HOURLY_RECURRENCE     ? 3600
                     : parsed.freq == ICAL_MINUTELY_RECURRENCE ? 60
                                                               : 0;
    rule.step = step * parsed.interval;
    return rule;
}

std::unique_ptr<Series> Series::read(const Component &component, const TimesOfComponent &times,
                                     ZoneTable &zones) {
    const bool recurs = component.line("RRULE") || component.line("RDATE");
    if (!recurs || component.line("RECURRENCE-ID"))
        return nullptr;
    auto series = std::make_unique<Series>();
    series->m_times = times;
    const auto readRules = [&](const QByteArray &name, std::vector<Rule> &rules) {
        for (const ContentLine *line : component.lines(name)) {
            if (const auto rule = parseRule(line->value()))
                rules.push_back(*rule);
        }
    };
    readRules("RRULE", series->m_rules);
    readRules("EXRULE", series->m_excludedRules);
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
            Moment end = start->after(m_times.span);
            const QByteArray rest = slash < 0 ? QByteArray() : value.mid(slash + 1);
            if (const auto span = parseDuration(rest))
                end = start->after(*span);
            else if (const auto until = readMoment(*line, rest, zones))
                end = *until;
            m_additional.push_back({*start, start->utc(), end.utc()});
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

Series::Instance Series::instance(Seconds clock) const {
    Moment start = m_times.start;
    start.clock = clock;
    return {start, start.utc(), start.after(m_times.span).utc()};
}

bool Series::isPast(const Rule &rule, Seconds clock) const {
    if (!rule.until)
        return false;
    if (rule.until->kind == Kind::Date)
        return midnightOf(clock) > rule.until->clock;
    if (rule.until->kind == Kind::Utc && m_times.start.kind != Kind::Date)
        return m_times.start.zone->toUtc(clock) > rule.until->clock;
    return clock > rule.until->clock;
}

// Clock times of the rule from `from` to `to`. libical runs on plain clock times: a series keeps its clock
// time over a change to daylight saving.
void Series::expand(const Rule &rule, Seconds from, Seconds to, std::set<Seconds> *clocks) const {
    const Seconds start = m_times.start.clock;
    if (start > to)
        return;
    icalrecurrencetype parsed = icalrecurrencetype_from_string(rule.text.constData());
    if (!rule.counted)
        parsed.until = icalTime(to); // also keeps rules that match nothing from running on for ever
    const bool skips = !rule.counted && from > start;
    // libical's own skipping loses the phase of rules by hours and minutes.
    const Seconds begin = skips && rule.step > 0 ? start + (from - start) / rule.step * rule.step : start;
    const std::unique_ptr<icalrecur_iterator, decltype(&icalrecur_iterator_free)> iterator(
        icalrecur_iterator_new(parsed, icalTime(begin)), icalrecur_iterator_free);
    if (!iterator)
        return;
    if (skips && rule.step == 0)
        icalrecur_iterator_set_start(iterator.get(), icalTime(from));
    for (int step = 0; step < mostSteps && clocks->size() < mostInstances; ++step) {
        const icaltimetype next = icalrecur_iterator_next(iterator.get());
        const std::optional<Seconds> clock = secondsOf(next);
        if (icaltime_is_null_time(next) || (clock && (*clock > to || isPast(rule, *clock))))
            return;
        if (clock && *clock >= from)
            clocks->insert(*clock);
    }
}

// Lets callers skip the expansion of series that have ended, which are most of an old calendar.
void Series::findEnd() {
    const Seconds start = m_times.start.clock;
    Seconds last = start;
    for (const Rule &rule : m_rules) {
        Seconds end = rule.until ? rule.until->clock + daySeconds : farthest;
        if (rule.counted && !rule.until) {
            std::set<Seconds> clocks;
            expand(rule, start, latestClock, &clocks);
            if (clocks.size() < mostInstances)
                end = clocks.empty() ? start : *clocks.rbegin();
        }
        last = std::max(last, end);
    }
    last += lengthOnClock() + daySeconds; // zones are at most a day away from UTC
    for (const Instance &additional : m_additional)
        last = std::max(last, additional.endUtc);
    m_end = last;
}

void Series::fillCache(Seconds fromUtc, Seconds toUtc) {
    const bool frequent =
        std::any_of(m_rules.begin(), m_rules.end(), [](const Rule &r) { return r.step > 0; });
    const Seconds around = frequent ? 0 : cachedAround;
    m_cacheFrom = fromUtc - around;
    m_cacheTo = toUtc + around;
    // Zones are at most a day away from UTC.
    const Seconds from = m_cacheFrom - lengthOnClock() - daySeconds;
    const Seconds to = m_cacheTo + daySeconds;
    std::set<Seconds> clocks;
    std::set<Seconds> excluded;
    if (m_times.start.clock >= from && m_times.start.clock <= to)
        clocks.insert(m_times.start.clock);
    for (const Rule &rule : m_rules)
        expand(rule, from, to, &clocks);
    for (const Rule &rule : m_excludedRules)
        expand(rule, from, to, &excluded);
    m_cache.clear();
    QSet<Seconds> known;
    const auto add = [&](const Instance &one) {
        if (known.contains(one.startUtc) || m_excluded.contains(one.start))
            return;
        known.insert(one.startUtc);
        m_cache.push_back(one);
    };
    for (const Seconds clock : clocks) {
        if (!excluded.contains(clock))
            add(instance(clock));
    }
    for (const Instance &additional : m_additional)
        add(additional);
}

std::vector<Series::Instance> Series::between(Seconds fromUtc, Seconds toUtc) {
    std::vector<Instance> found;
    if (!m_end)
        findEnd();
    if (fromUtc > *m_end)
        return found;
    if (m_cacheFrom >= m_cacheTo || fromUtc < m_cacheFrom || toUtc > m_cacheTo)
        fillCache(fromUtc, toUtc);
    std::copy_if(m_cache.begin(), m_cache.end(), std::back_inserter(found), [&](const Instance &one) {
        return one.startUtc < toUtc && (one.startUtc >= fromUtc || one.endUtc > fromUtc);
    });
    return found;
}

QByteArray movedRule(const QByteArray &rule, const Moment &before, const Moment &after) {
    const QDate was = dateOf(before.clock);
    const QDate is = dateOf(after.clock);
    const QTime timeWas = QTime(0, 0).addSecs(int(before.clock - midnightOf(before.clock)));
    const QTime timeIs = QTime(0, 0).addSecs(int(after.clock - midnightOf(after.clock)));
    // "BYDAY=MO;BYSETPOS=2" is the second Monday too.
    const bool namesWeekday = rule.toUpper().split(';').contains("BYDAY=" + weekdayOf(was));
    const auto number = [](int value) { return QByteArray::number(value); };
    const struct {
        QByteArray part;
        QByteArray was;
        QByteArray is;
    } names[] = {
        {"BYDAY", weekdayOf(was), weekdayOf(is)},
        {"BYDAY", ordinalOf(was) + weekdayOf(was), ordinalOf(is) + weekdayOf(is)},
        {"BYSETPOS", namesWeekday ? ordinalOf(was) : QByteArray(), ordinalOf(is)},
        {"BYMONTHDAY", number(was.day()), number(is.day())},
        {"BYMONTH", number(was.month()), number(is.month())},
        {"BYHOUR", number(timeWas.hour()), number(timeIs.hour())},
        {"BYMINUTE", number(timeWas.minute()), number(timeIs.minute())},
        {"BYSECOND", number(timeWas.second()), number(timeIs.second())},
    };
    QList<QByteArray> parts = rule.split(';');
    for (QByteArray &part : parts) {
        const QByteArray name = part.left(part.indexOf('=')).trimmed().toUpper();
        const QByteArray argument = part.mid(part.indexOf('=') + 1).trimmed().toUpper();
        const auto moved = std::find_if(std::begin(names), std::end(names), [&](const auto &one) {
            return one.part == name && one.was == argument;
        });
        if (name == "UNTIL")
            part =
                part.left(part.indexOf('=') + 1) + movedUntil(part.mid(part.indexOf('=') + 1), before, after);
        else if (moved != std::end(names) && moved->is != moved->was)
            part = name + '=' + moved->is;
    }
    return parts.join(';');
}

} // namespace mailhost
