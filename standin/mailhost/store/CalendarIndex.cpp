#include "standin/mailhost/store/CalendarIndex.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentComponent.h"
#include "standin/mailhost/store/TextValue.h"

#include <QUuid>

namespace mailhost {

namespace {

const QUuid madeUidNamespace(u"{5d2f2a55-6a0e-4a39-9a0b-5a3b0e7a9c11}"_s);

// An identifier for a component without UID; the same at every reading of the same file.
QString madeUid(const Component &component, size_t position) {
    QByteArray text;
    component.appendText(text);
    return QUuid::createUuidV5(madeUidNamespace, text + QByteArray::number(qsizetype(position)))
        .toString(QUuid::WithoutBraces);
}

} // namespace

const FollowedChange *DayChanges::followedOn(Seconds startUtc) const {
    const auto later = std::find_if(followed.begin(), followed.end(),
                                    [&](const FollowedChange &change) { return change.fromUtc > startUtc; });
    return later == followed.begin() ? nullptr : &*std::prev(later);
}

CalendarIndex::CalendarIndex(Document document)
    : m_document(std::move(document)) {
    for (Component *calendar : m_document.calendars()) {
        m_zones.try_emplace(calendar, *calendar);
        for (Component *component : calendar->components()) {
            if (component->name == "VEVENT")
                add(*calendar, *component, {});
        }
    }
}

CalendarEntry &CalendarIndex::add(Component &calendar, Component &component, const QString &uid) {
    auto entry = std::make_unique<CalendarEntry>();
    entry->component = &component;
    entry->calendar = &calendar;
    entry->uid = uidOf(component);
    entry->recurrenceId = recurrenceIdOf(component);
    entry->uidIsMade = entry->uid.isEmpty();
    if (entry->uidIsMade)
        entry->uid = uid.isEmpty() ? madeUid(component, m_entries.size()) : uid;
    m_byUid[entry->uid].append(entry.get());
    return *m_entries.emplace_back(std::move(entry));
}

std::vector<CalendarEntry *> CalendarIndex::entries() const {
    std::vector<CalendarEntry *> present;
    for (const auto &entry : m_entries) {
        if (!entry->isRemoved())
            present.push_back(entry.get());
    }
    return present;
}

CalendarEntry *CalendarIndex::find(const QString &uid, const QString &recurrenceId) const {
    for (CalendarEntry *entry : m_byUid.value(uid)) {
        if (entry->recurrenceId == recurrenceId && !entry->isRemoved())
            return entry;
    }
    return nullptr;
}

QList<CalendarEntry *> CalendarIndex::entriesOf(const QString &uid) const {
    QList<CalendarEntry *> entries = m_byUid.value(uid);
    entries.removeIf([](const CalendarEntry *entry) { return entry->isRemoved(); });
    return entries;
}

const Appointment &CalendarIndex::appointmentOf(CalendarEntry &entry) {
    if (!entry.appointment) {
        entry.appointment = readAppointment(*entry.component, zonesOf(entry));
        entry.appointment->uid = entry.uid;
    }
    return *entry.appointment;
}

const EntrySummary &CalendarIndex::summaryOf(CalendarEntry &entry) {
    if (entry.summary)
        return *entry.summary;
    EntrySummary &summary = entry.summary.emplace();
    const Component &component = *entry.component;
    ZoneTable &zones = zonesOf(entry);
    summary.times = readTimes(component, zones);
    summary.summary = textOf(component, "SUMMARY");
    summary.location = textOf(component, "LOCATION");
    if (const ContentLine *line = component.line(ucCapabilitiesProperty))
        summary.hasMeetingRecord = !line->value().trimmed().isEmpty();
    summary.cancelled = textOf(component, "STATUS").trimmed().toUpper() == u"CANCELLED"_s;
    if (summary.times) {
        summary.startUtc = summary.times->start.utc();
        summary.endUtc = summary.times->end.utc();
        summary.series = Series::read(component, *summary.times, zones);
    }
    return summary;
}

const DayChanges &CalendarIndex::changesOf(CalendarEntry &series) {
    if (series.changes)
        return *series.changes;
    DayChanges &changes = series.changes.emplace();
    const auto &start = summaryOf(series).times;
    for (CalendarEntry *entry : entriesOf(series.uid)) {
        const ContentLine *line = entry->component->line("RECURRENCE-ID");
        const auto day = readMoment(line, zonesOf(*entry));
        if (!day)
            continue;
        changes.days.add(*day);
        const auto &changed = summaryOf(*entry).times;
        const QString range = line->parameter("RANGE").value_or(QString()).toUpper();
        if (range != u"THISANDFUTURE"_s || !changed || !start)
            continue;
        const bool isDate = day->kind == CalendarTime::Kind::Date;
        const Seconds clock = isDate ? day->clock : start->start.zone->toClock(day->utc());
        changes.followed.push_back({day->utc(), changed->start.clock - clock, entry});
    }
    std::stable_sort(changes.followed.begin(), changes.followed.end(),
                     [](const auto &a, const auto &b) { return a.fromUtc < b.fromUtc; });
    return changes;
}

CalendarEntry &CalendarIndex::append(Component &calendar, std::unique_ptr<Component> component,
                                     const QString &uid) {
    CalendarEntry &entry = add(calendar, *component, uid);
    calendar.items.push_back({{}, std::move(component)});
    changed(entry);
    return entry;
}

void CalendarIndex::remove(CalendarEntry &entry) {
    *entry.component = Component();
    m_removed.push_back(&entry);
    changed(entry);
}

void CalendarIndex::putBack(const QString &uid, std::unique_ptr<Component> component) {
    const auto last = std::find_if(m_removed.rbegin(), m_removed.rend(), [&](const CalendarEntry *entry) {
        return entry->uid == uid && entry->recurrenceId == recurrenceIdOf(*component);
    });
    if (last == m_removed.rend()) {
        append(firstCalendar(), std::move(component), uid);
        return;
    }
    CalendarEntry &entry = **last;
    m_removed.erase(std::prev(last.base()));
    entry.uidIsMade = uidOf(*component).isEmpty();
    *entry.component = std::move(*component);
    changed(entry);
}

void CalendarIndex::changed(const CalendarEntry &entry) {
    for (CalendarEntry *ofSame : m_byUid.value(entry.uid)) {
        ofSame->appointment.reset();
        ofSame->summary.reset();
        ofSame->changes.reset();
    }
}

} // namespace mailhost
