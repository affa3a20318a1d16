#include "standin/mailhost/store/SeriesMove.h"

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;
constexpr Seconds daySeconds = 86400;
constexpr Seconds epochWeekday = 3; // 1970-01-01 was a Thursday, counted from Monday

Seconds dayNumber(Seconds clock) {
    return clock >= 0 ? clock / daySeconds : -((daySeconds - 1 - clock) / daySeconds);
}

QByteArray weekdayOf(Seconds clock) {
    static const char *const names[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
    const Seconds weekday = ((dayNumber(clock) + epochWeekday) % 7 + 7) % 7;
    return names[weekday];
}

} // namespace

SeriesMove::SeriesMove(Seconds distance, Seconds days, QByteArray formerWeekday, QByteArray weekday)
    : m_distance(distance)
    , m_days(days)
    , m_formerWeekday(std::move(formerWeekday))
    , m_weekday(std::move(weekday)) {}

std::optional<SeriesMove> SeriesMove::between(const Moment &before, const Moment &after) {
    if (before.kind != after.kind || before.zoneId != after.zoneId || before.clock == after.clock)
        return std::nullopt;
    return SeriesMove(after.clock - before.clock,
                      (dayNumber(after.clock) - dayNumber(before.clock)) * daySeconds,
                      weekdayOf(before.clock), weekdayOf(after.clock));
}

QByteArray SeriesMove::moved(const QByteArray &value) const {
    const auto clock = parseClock(value);
    if (!clock)
        return value;
    return clockText(clock->clock + (clock->kind == Kind::Date ? m_days : m_distance), clock->kind);
}

QByteArray SeriesMove::movedRule(const QByteArray &rule) const {
    QList<QByteArray> parts = rule.split(';');
    const bool weekly = rule.toUpper().contains("FREQ=WEEKLY");
    for (QByteArray &part : parts) {
        const QByteArray name = part.left(part.indexOf('=')).trimmed().toUpper();
        const QByteArray argument = part.mid(part.indexOf('=') + 1);
        if (name == "UNTIL")
            part = "UNTIL=" + moved(argument);
        else if (name == "BYDAY" && weekly && argument.trimmed().toUpper() == m_formerWeekday)
            part = "BYDAY=" + m_weekday;
    }
    return parts.join(';');
}

void SeriesMove::apply(Component &series) const {
    for (ComponentItem &item : series.items) {
        auto *line = std::get_if<ContentLine>(&item);
        if (!line)
            continue;
        QByteArray value = line->value();
        if (line->name() == "RRULE" || line->name() == "EXRULE") {
            value = movedRule(value);
        } else if (line->name() == "EXDATE" || line->name() == "RDATE") {
            QList<QByteArray> values = value.split(',');
            for (QByteArray &one : values)
                one = moved(one);
            value = values.join(',');
        }
        if (value != line->value())
            line->setValue(value);
    }
}

} // namespace mailhost
