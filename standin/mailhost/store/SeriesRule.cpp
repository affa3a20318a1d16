#include "standin/mailhost/store/SeriesRule.h"

namespace mailhost {

namespace {

constexpr Seconds daySeconds = 86400;
constexpr qint64 epochDay = 2440588; // Julian day of 1970-01-01

struct Day {
    QDate date;
    int second = 0; // of the day

    explicit Day(Seconds clock) {
        const Seconds number = clock >= 0 ? clock / daySeconds : -((daySeconds - 1 - clock) / daySeconds);
        date = QDate::fromJulianDay(number + epochDay);
        second = int(clock - number * daySeconds);
    }
    [[nodiscard]] QByteArray weekday() const {
        static const char *const names[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
        return names[date.dayOfWeek() - 1];
    }
    // Of its weekday in the month.
    [[nodiscard]] int ordinal() const { return (date.day() - 1) / 7 + 1; }
    [[nodiscard]] int ordinalFromEnd() const { return -((date.daysInMonth() - date.day()) / 7 + 1); }
    [[nodiscard]] int dayFromEnd() const { return date.day() - date.daysInMonth() - 1; }
};

struct Number {
    const char *part;
    int was;
    int is;
};

// The fifth is missing in most months: whoever picks it means the last.
int usableOrdinal(const Day &day) {
    return day.ordinal() > 4 ? -1 : day.ordinal();
}

std::optional<int> adaptedOrdinal(int ordinal, const Day &was, const Day &is) {
    if (ordinal == was.ordinal())
        return usableOrdinal(is);
    if (ordinal == was.ordinalFromEnd())
        return is.ordinalFromEnd();
    return std::nullopt;
}

// "MO", "2MO", "-1FR". Nothing when it is not exactly the former day.
std::optional<QByteArray> adaptedWeekday(const QByteArray &argument, bool ordinalsOfMonth, const Day &was,
                                         const Day &is) {
    if (!argument.endsWith(was.weekday()))
        return std::nullopt;
    const QByteArray prefix = argument.left(argument.size() - 2);
    if (prefix.isEmpty())
        return is.weekday();
    bool isNumber = false;
    const int number = prefix.toInt(&isNumber);
    const auto ordinal = isNumber && ordinalsOfMonth ? adaptedOrdinal(number, was, is) : std::nullopt;
    if (!ordinal)
        return std::nullopt;
    return QByteArray::number(*ordinal) + is.weekday();
}

QByteArray nameOf(const QByteArray &part) {
    return part.left(part.indexOf('=')).trimmed().toUpper();
}

QByteArray argumentOf(const QList<QByteArray> &parts, const QByteArray &name) {
    for (const QByteArray &part : parts) {
        if (nameOf(part) == name)
            return part.mid(part.indexOf('=') + 1).trimmed().toUpper();
    }
    return {};
}

void setArgument(QList<QByteArray> &parts, const QByteArray &name, const QByteArray &argument) {
    for (QByteArray &part : parts) {
        if (nameOf(part) == name)
            part = part.left(part.indexOf('=') + 1) + argument;
    }
}

void adaptWeekday(QList<QByteArray> &parts, const Day &was, const Day &is) {
    const bool ofMonth = argumentOf(parts, "FREQ") == "MONTHLY" || !argumentOf(parts, "BYMONTH").isEmpty();
    const QByteArray position = argumentOf(parts, "BYSETPOS"); // "BYDAY=MO;BYSETPOS=2" is the second Monday
    const auto weekday = adaptedWeekday(argumentOf(parts, "BYDAY"), ofMonth, was, is);
    const auto ordinal = position.isEmpty() ? std::nullopt : adaptedOrdinal(position.toInt(), was, is);
    if (!weekday || (!position.isEmpty() && !(ordinal && ofMonth)))
        return;
    setArgument(parts, "BYDAY", *weekday);
    if (ordinal)
        setArgument(parts, "BYSETPOS", QByteArray::number(*ordinal));
}

} // namespace

AdaptedRule adaptedRule(const QByteArray &rule, const Moment &before, const Moment &after) {
    const Day was(before.clock);
    const Day is(after.clock);
    QList<QByteArray> parts = rule.split(';');
    if (was.date != is.date)
        adaptWeekday(parts, was, is);
    const Number numbers[] = {
        {"BYMONTHDAY", was.date.day(), is.date.day()},
        {"BYMONTHDAY", was.dayFromEnd(), is.dayFromEnd()},
        {"BYMONTH", was.date.month(), is.date.month()},
        {"BYHOUR", was.second / 3600, is.second / 3600},
        {"BYMINUTE", was.second / 60 % 60, is.second / 60 % 60},
        {"BYSECOND", was.second % 60, is.second % 60},
    };
    const QList<QByteArray> original = rule.split(';');
    for (const Number &number : numbers) {
        bool isNumber = false;
        const int value = argumentOf(original, number.part).toInt(&isNumber);
        if (isNumber && value == number.was && number.was != number.is)
            setArgument(parts, number.part, QByteArray::number(number.is));
    }
    AdaptedRule adapted{parts.join(';'), false};
    for (const char *name : {"BYDAY", "BYSETPOS", "BYMONTHDAY", "BYMONTH"})
        adapted.otherDay = adapted.otherDay || argumentOf(parts, name) != argumentOf(original, name);
    return adapted;
}

bool namesDays(const QByteArray &rule) {
    const QList<QByteArray> parts = rule.split(';');
    return std::any_of(parts.begin(), parts.end(), [](const QByteArray &part) {
        const QByteArray name = nameOf(part);
        return name == "BYDAY" || name == "BYMONTHDAY" || name == "BYYEARDAY" || name == "BYWEEKNO";
    });
}

} // namespace mailhost
