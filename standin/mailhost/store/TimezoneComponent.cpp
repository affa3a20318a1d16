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

// A kind of change of the clock.
struct ChangeKind {
    int from = 0; // seconds east of UTC
    int to = 0;
    bool daylight = false;
    QString name;
    friend std::strong_ordering operator<=>(const ChangeKind &a, const ChangeKind &b) = default;
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

// The rules by which a yearly change may come to that date: its weekday in the month, counted from the
// beginning or as the last one.
QList<QByteArray> rulesFor(const QDate &date) {
    const QByteArray head = "FREQ=YEARLY;BYMONTH=" + QByteArray::number(date.month()) + ";BYDAY=";
    const int ordinal = (date.day() - 1) / 7 + 1;
    QList<QByteArray> rules;
    if (ordinal < 5)
        rules.append(head + QByteArray::number(ordinal) + weekdayOf(date));
    if (date.day() + 7 > date.daysInMonth())
        rules.append(head + "-1" + weekdayOf(date));
    return rules;
}

// The number of onsets at the end of the list that follow the rule in successive years.
qsizetype lengthOfRule(const Onsets &onsets, const QByteArray &rule) {
    qsizetype length = 0;
    for (auto onset = onsets.rbegin(); onset != onsets.rend(); ++onset, ++length) {
        if (onset->date().year() != lastYear - length || onset->time() != onsets.last().time() ||
            !rulesFor(onset->date()).contains(rule))
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
    writeText(component->lineOrNew("TZNAME"), kind.name);
    timezone.items.push_back({{}, std::move(component)});
    return *timezone.items.back().component;
}

void addChanges(Component &timezone, const ChangeKind &kind, Onsets onsets) {
    qsizetype length = 0;
    QByteArray best;
    const auto rules = rulesFor(onsets.last().date());
    for (const QByteArray &rule : rules) {
        if (lengthOfRule(onsets, rule) > length) {
            length = lengthOfRule(onsets, rule);
            best = rule;
        }
    }
    if (length >= shortestRule) {
        addLine(addObservance(timezone, kind, onsets[onsets.size() - length]), "RRULE", best);
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
    writeText(timezone->lineOrNew("TZID"), tzid);
    addLine(*timezone, "X-LIC-LOCATION", zone.id());
    const auto changes = changesOf(zone);
    for (auto change = changes.begin(); change != changes.end(); ++change)
        addChanges(*timezone, change.key(), change.value());
    return timezone;
}

} // namespace mailhost
