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

// A change of the clock: what kind it is, and the clock time before it at which it comes.
struct ChangeKind {
    int from = 0; // seconds east of UTC
    int to = 0;
    bool daylight = false;
    QString name;
    friend bool operator<(const ChangeKind &a, const ChangeKind &b) {
        return std::tie(a.from, a.to, a.daylight, a.name) < std::tie(b.from, b.to, b.daylight, b.name);
    }
};
using Onsets = QList<QDateTime>; // clock times, told in UTC, rising

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

// How many of the last onsets come in successive years up to the last one and follow the same rule.
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

class TimezoneWriter {
public:
    explicit TimezoneWriter(const QByteArray &lineEnd)
        : m_lineEnd(lineEnd)
        , m_timezone(Component::make("VTIMEZONE", lineEnd)) {}

    void line(Component &component, const QByteArray &name, const QByteArray &value) const {
        component.append(ContentLine::make(name, value, m_lineEnd));
    }
    Component &timezone() const { return *m_timezone; }
    std::unique_ptr<Component> take() { return std::move(m_timezone); }

    void change(const ChangeKind &kind, Onsets onsets) const {
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
            Component &rule = observance(kind, first);
            line(rule, "RRULE",
                 "FREQ=YEARLY;BYMONTH=" + QByteArray::number(first.date().month()) +
                     ";BYDAY=" + QByteArray::number(best) + weekdays[first.date().dayOfWeek() - 1]);
            onsets.resize(onsets.size() - length);
        }
        if (onsets.isEmpty())
            return;
        Component &single = observance(kind, onsets.takeFirst());
        for (const QDateTime &onset : std::as_const(onsets))
            line(single, "RDATE", onsetText(onset));
    }

private:
    Component &observance(const ChangeKind &kind, const QDateTime &onset) const {
        auto component = Component::make(kind.daylight ? "DAYLIGHT" : "STANDARD", m_lineEnd);
        line(*component, "DTSTART", onsetText(onset));
        line(*component, "TZOFFSETFROM", offsetText(kind.from));
        line(*component, "TZOFFSETTO", offsetText(kind.to));
        line(*component, "TZNAME", escapeText(kind.name));
        Component &added = *component;
        m_timezone->items.emplace_back(std::move(component));
        return added;
    }

    QByteArray m_lineEnd;
    std::unique_ptr<Component> m_timezone;
};

} // namespace

std::unique_ptr<Component> makeTimezoneComponent(const QString &tzid, const QByteArray &lineEnd) {
    const QTimeZone zone = systemZoneForTzid(tzid);
    if (!zone.isValid())
        return nullptr;
    TimezoneWriter writer(lineEnd);
    writer.line(writer.timezone(), "TZID", escapeText(tzid));
    writer.line(writer.timezone(), "X-LIC-LOCATION", zone.id());
    const auto changes = changesOf(zone);
    for (auto change = changes.begin(); change != changes.end(); ++change)
        writer.change(change.key(), change.value());
    return writer.take();
}

} // namespace mailhost
