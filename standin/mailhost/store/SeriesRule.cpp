#include "standin/mailhost/store/SeriesRule.h"

namespace mailhost {

namespace {

using Kind = CalendarTime::Kind;

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
