// Writes the system's rules of a zone as a VTIMEZONE. libical has such components too, but it condenses the
// changes of some zones into rules that give other days.
#include "standin/mailhost/store/TextValue.h"
#include "standin/mailhost/store/Zones.h"

#include <QMap>

namespace mailhost {

namespace {

constexpr int firstYear = 1970;
constexpr int lastYear = 2037;  // the last one for which the system's tables list changes
constexpr int shortestRule = 3; // years in a row that make a rule
constexpr int daysOfWeek = 7;
const char *const weekdays[daysOfWeek] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};

// A kind of change of the clock.
struct ChangeKind {
    int from = 0; // seconds east of UTC
    int to = 0;
    bool daylight = false;
    QString name;
    friend bool operator<(const ChangeKind &a, const ChangeKind &b) {
        return std::tie(a.from, a.to, a.daylight, a.name) < std::tie(b.from, b.to, b.daylight, b.name);
    }
};
using Onsets = QList<QDateTime>; // clock times as UTC values, ascending

QByteArray offsetText(int offset) {
    const int minutes = qAbs(offset) / 60;
    QByteArray text = (offset < 0 ? "-" : "+") +
                      QByteArray::number(minutes / 60 * 100 + minutes % 60).rightJustified(4, '0');
    if (offset % 60 != 0)
        text += QByteArray::number(qAbs(offset) % 60).rightJustified(2, '0');
    return text;
}

QByteArray onsetText(const QDateTime &onset) {
    return clockText(onset.toSecsSinceEpoch(), CalendarTime::Kind::Floating);
}

QMap<ChangeKind, Onsets> changesOf(const QTimeZone &zone) {
    const QDateTime begin(QDate(firstYear, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime end(QDate(lastYear + 1, 1, 1), QTime(0, 0), Qt::UTC);
    QMap<ChangeKind, Onsets> changes;
    int offset = zone.offsetFromUtc(begin);
    changes[{offset, offset, false, zone.abbreviation(begin)}].append(begin);
    const auto transitions =
        zone.hasTransitions() ? zone.transitions(begin, end) : QTimeZone::OffsetDataList();
    for (const QTimeZone::OffsetData &transition : transitions) {
        const ChangeKind kind{offset, transition.offsetFromUtc, transition.daylightTimeOffset != 0,
                              transition.abbreviation};
        changes[kind].append(transition.atUtc.toUTC().addSecs(offset));
        offset = transition.offsetFromUtc;
    }
    return changes;
}

// Whether the date is the nth of its weekday in its month; -1: the last.
bool isNthWeekday(const QDate &date, int nth) {
    return nth > 0 ? (date.day() - 1) / daysOfWeek + 1 == nth : date.day() + daysOfWeek > date.daysInMonth();
}

// The number of onsets at the end of the list that follow one rule in successive years.
qsizetype lengthOfRule(const Onsets &onsets, int nth) {
    const QDateTime &last = onsets.last();
    qsizetype length = 0;
    for (qsizetype i = onsets.size() - 1; i >= 0; --i, ++length) {
        const QDate date = onsets[i].date();
        const bool follows = date.year() == lastYear - length && date.month() == last.date().month() &&
                             date.dayOfWeek() == last.date().dayOfWeek() && onsets[i].time() == last.time();
        if (!follows || !isNthWeekday(date, nth))
            break;
    }
    return length;
}

void addLine(Component &component, const QByteArray &name, const QByteArray &value) {
    component.append(ContentLine::make(name, value, component.lineEnd()));
}

Component &addObservance(Component &timezone, const ChangeKind &kind, const QDateTime &onset) {
    auto component = Component::make(kind.daylight ? "DAYLIGHT" : "STANDARD", timezone.lineEnd());
    addLine(*component, "DTSTART", onsetText(onset));
    addLine(*component, "TZOFFSETFROM", offsetText(kind.from));
    addLine(*component, "TZOFFSETTO", offsetText(kind.to));
    addLine(*component, "TZNAME", escapeText(kind.name));
    Component &added = *component;
    timezone.items.emplace_back(std::move(component));
    return added;
}

void addChanges(Component &timezone, const ChangeKind &kind, Onsets onsets) {
    qsizetype length = 0;
    int best = 0;
    for (const int nth : {1, 2, 3, 4, -1}) {
        if (lengthOfRule(onsets, nth) > length) {
            length = lengthOfRule(onsets, nth);
            best = nth;
        }
    }
    if (length >= shortestRule) {
        const QDateTime first = onsets[onsets.size() - length];
        addLine(addObservance(timezone, kind, first), "RRULE",
                "FREQ=YEARLY;BYMONTH=" + QByteArray::number(first.date().month()) +
                    ";BYDAY=" + QByteArray::number(best) + weekdays[first.date().dayOfWeek() - 1]);
        onsets.resize(onsets.size() - length);
    }
    if (onsets.isEmpty())
        return;
    Component &single = addObservance(timezone, kind, onsets.takeFirst());
    for (const QDateTime &onset : std::as_const(onsets))
        addLine(single, "RDATE", onsetText(onset));
}

} // namespace

std::unique_ptr<Component> makeTimezoneComponent(const QString &tzid, const QByteArray &lineEnd) {
    const QTimeZone zone = systemZoneForTzid(tzid);
    if (!zone.isValid())
        return nullptr;
    auto timezone = Component::make("VTIMEZONE", lineEnd);
    addLine(*timezone, "TZID", escapeText(tzid));
    addLine(*timezone, "X-LIC-LOCATION", zone.id());
    const auto changes = changesOf(zone);
    for (auto change = changes.begin(); change != changes.end(); ++change)
        addChanges(*timezone, change.key(), change.value());
    return timezone;
}

} // namespace mailhost
