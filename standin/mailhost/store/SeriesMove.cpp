#include "standin/mailhost/store/SeriesMove.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/Recurrence.h"
#include "standin/mailhost/store/SeriesRule.h"

#include <algorithm>

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds daySeconds = 86400;
constexpr size_t mostCompared = 60;

Seconds midnightOf(Seconds clock) {
    const Seconds rest = clock % daySeconds;
    return clock - (rest < 0 ? rest + daySeconds : rest);
}

Seconds timeOfDay(Seconds clock) {
    return clock - midnightOf(clock);
}

bool isTimed(const Moment &moment) {
    return moment.kind != Kind::Date;
}

bool sameForm(const Moment &a, const Moment &b) {
    return a.kind == b.kind && a.zoneId == b.zoneId;
}

QList<QByteArray> valuesOf(const Component &component, const QByteArray &name) {
    QList<QByteArray> values;
    for (const ContentLine *line : component.lines(name))
        values.append(line->value());
    return values;
}

bool contains(const std::vector<Seconds> &sorted, Seconds clock) {
    return std::binary_search(sorted.begin(), sorted.end(), clock);
}

void setForm(ContentLine &line, const Moment &was, const Moment &is) {
    const QByteArray value = line.parameter("VALUE").value_or(QString()).toUpper().toLatin1();
    if (!isTimed(is) && isTimed(was))
        line.setParameter("VALUE", u"DATE"_s);
    else if (isTimed(is) && value == "DATE")
        line.removeParameter("VALUE");
    if (is.kind != Kind::Zoned)
        line.removeParameter("TZID");
    else if (line.parameter("TZID") != is.zoneId)
        line.setParameter("TZID", is.zoneId);
}

} // namespace

SeriesMove::SeriesMove(TimesOfComponent before, TimesOfComponent after, ZoneTable &zones)
    : m_before(std::move(before))
    , m_after(std::move(after))
    , m_zones(&zones)
    , m_distance(m_after.start.clock - m_before.start.clock)
    , m_days(midnightOf(m_after.start.clock) - midnightOf(m_before.start.clock)) {}

std::optional<SeriesMove> SeriesMove::between(const Component &before, const Component &after,
                                              ZoneTable &zones) {
    const auto was = readTimes(before, zones);
    const auto is = readTimes(after, zones);
    if (!was || !is || (sameForm(was->start, is->start) && was->start.clock == is->start.clock))
        return std::nullopt;
    SeriesMove move(*was, *is, zones);
    move.compare(before, after);
    return move;
}

void SeriesMove::compare(const Component &before, const Component &after) {
    m_sameRules = valuesOf(before, "RRULE") == valuesOf(after, "RRULE");
    const auto adapted = m_sameRules ? after.copy() : nullptr;
    if (!adapted)
        return;
    bool names = false;
    for (ComponentItem &item : adapted->items) {
        auto *line = std::get_if<ContentLine>(&item);
        if (!line || line->name() != "RRULE")
            continue;
        const AdaptedRule rule = adaptedRule(line->value(), m_before.start, m_after.start);
        m_otherDay = m_otherDay || rule.otherDay;
        names = names || namesDays(rule.text);
        line->setValue(rule.text);
    }
    QStringList unheard;
    const auto former = Series::read(before, m_before, *m_zones, &unheard);
    const auto now = Series::read(*adapted, m_after, *m_zones, &unheard);
    if (!former || !now)
        return;
    m_formerDays = former->ruleDays(Series::Bounds::None);
    m_formerCount = former->ruleDays(Series::Bounds::Until).size();
    m_newDays = now->ruleDays(Series::Bounds::None);
    m_rigid = isRigid();
    m_pinned = !m_rigid && !m_otherDay && names;
}

bool SeriesMove::isRigid() const {
    const size_t compared = std::min({mostCompared, m_formerDays.size(), m_newDays.size()});
    for (size_t i = 0; i < compared; ++i) {
        if (!contains(m_newDays, plainlyMoved(m_formerDays[i])))
            return false;
    }
    return true;
}

Seconds SeriesMove::plainlyMoved(Seconds clock) const {
    if (!isTimed(m_after.start))
        return midnightOf(clock) + (m_pinned ? 0 : m_days);
    return clock + (m_pinned ? timeOfDay(m_after.start.clock) - timeOfDay(m_before.start.clock) : m_distance);
}

Seconds SeriesMove::movedClock(Seconds clock) const {
    if (clock == m_before.start.clock)
        return m_after.start.clock;
    const Seconds moved = plainlyMoved(clock);
    if (m_rigid || m_pinned || contains(m_newDays, moved))
        return moved;
    // "The second Monday" and "the second Tuesday" are not always one day apart: then it is the same in turn.
    const auto former = std::lower_bound(m_formerDays.begin(), m_formerDays.end(), clock);
    const auto turn = size_t(former - m_formerDays.begin());
    const bool isDay = former != m_formerDays.end() && *former == clock;
    return isDay && turn < m_newDays.size() ? m_newDays[turn] : moved;
}

Moment SeriesMove::movedDay(const Moment &day) const {
    Moment moved = m_after.start;
    if (!isTimed(day) && isTimed(m_before.start)) { // it names the whole day in place of its time
        const auto former = std::lower_bound(m_formerDays.begin(), m_formerDays.end(), day.clock);
        const bool isDay = former != m_formerDays.end() && midnightOf(*former) == day.clock;
        moved = day;
        moved.clock = isDay ? midnightOf(movedClock(*former)) : day.clock + (m_pinned ? 0 : m_days);
        return moved;
    }
    const bool sameClock = sameForm(day, m_before.start) || !isTimed(m_before.start);
    const Seconds clock = sameClock ? day.clock : m_before.start.zone->toClock(day.utc());
    moved.clock = movedClock(clock);
    if (!isTimed(moved))
        moved.clock = midnightOf(moved.clock);
    if (day.kind == Kind::Utc && moved.kind == Kind::Zoned)
        return {Kind::Utc, moved.utc(), {}, utcZone()};
    return moved;
}

// A period keeps its length.
QByteArray SeriesMove::movedValue(const QByteArray &value, const Moment &day, const Moment &moved) const {
    const QByteArray text = clockText(moved.clock, moved.kind);
    const qsizetype slash = value.indexOf('/');
    if (slash < 0 || !isTimed(moved))
        return text;
    const QByteArray rest = value.mid(slash + 1);
    const auto end = parseClock(rest);
    if (!end)
        return text + '/' + rest;
    const Seconds former = end->kind == Kind::Utc ? end->clock : day.zone->toUtc(end->clock);
    Moment until = moved;
    until.clock = moved.zone->toClock(moved.utc() + former - day.utc());
    return text + '/' + clockText(until.clock, until.kind);
}

void SeriesMove::moveDays(ContentLine &line) const {
    QList<QByteArray> values = line.value().split(',');
    std::optional<Moment> was;
    std::optional<Moment> is;
    for (QByteArray &value : values) {
        const qsizetype slash = value.indexOf('/');
        const auto day = readMoment(line, slash < 0 ? value : value.left(slash), *m_zones);
        if (!day)
            return;
        const Moment moved = movedDay(*day);
        value = movedValue(value, *day, moved);
        was = was ? was : day;
        is = is ? is : moved;
    }
    setForm(line, *was, *is);
    if (const QByteArray value = values.join(','); value != line.value())
        line.setValue(value);
}

// On the clock of the series as it was.
Seconds SeriesMove::clockOfUntil(const ClockTime &until) const {
    const bool instant = until.kind == Kind::Utc && isTimed(m_before.start);
    return instant ? m_before.start.zone->toClock(until.clock) : until.clock;
}

QByteArray SeriesMove::movedUntil(const QByteArray &argument, bool mayCount) const {
    const auto until = parseClock(argument);
    if (!until)
        return argument;
    const Seconds clock = clockOfUntil(*until);
    const Seconds days = m_pinned ? 0 : m_days;
    const bool counted = mayCount && m_otherDay && !m_rigid && m_formerCount > 0 &&
                         m_formerCount <= m_newDays.size() && m_formerCount < m_formerDays.size();
    Moment moved = m_after.start;
    if (counted)
        moved.clock = m_newDays[m_formerCount - 1];
    else if (until->kind == Kind::Date)
        moved.clock = clock + days + timeOfDay(m_after.start.clock);
    else if (isTimed(moved))
        moved.clock = plainlyMoved(clock);
    else
        moved.clock = midnightOf(clock - timeOfDay(m_before.start.clock)) + days;
    // A series by the time of day may end with a whole day; the format wants an instant, or the clock time of
    // a series without zone.
    if (!isTimed(moved) || (until->kind == Kind::Date && isTimed(m_before.start)))
        return clockText(midnightOf(moved.clock), Kind::Date);
    const bool plain =
        moved.kind == Kind::Floating || (until->kind == Kind::Floating && sameForm(m_before.start, moved));
    return plain ? clockText(moved.clock, Kind::Floating) : clockText(moved.utc(), Kind::Utc);
}

void SeriesMove::moveRule(ContentLine &line, bool mayCount) const {
    const QByteArray rule = adaptedRule(line.value(), m_before.start, m_after.start).text;
    QList<QByteArray> parts = rule.split(';');
    for (QByteArray &part : parts) {
        const qsizetype equals = part.indexOf('=');
        if (part.left(equals).trimmed().toUpper() == "UNTIL")
            part = part.left(equals + 1) + movedUntil(part.mid(equals + 1), mayCount);
    }
    if (const QByteArray moved = parts.join(';'); moved != line.value())
        line.setValue(moved);
}

void SeriesMove::apply(Component &series) const {
    const bool oneRule = series.lines("RRULE").size() == 1;
    for (ComponentItem &item : series.items) {
        auto *line = std::get_if<ContentLine>(&item);
        if (!line)
            continue;
        if (line->name() == "EXDATE" || line->name() == "RDATE")
            moveDays(*line);
        else if (m_sameRules && (line->name() == "RRULE" || line->name() == "EXRULE"))
            moveRule(*line, oneRule && line->name() == "RRULE");
    }
}

} // namespace mailhost
