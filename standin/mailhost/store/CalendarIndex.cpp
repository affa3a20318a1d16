#include "standin/mailhost/store/CalendarIndex.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/TextValue.h"

#include <QUuid>
#include <limits>

namespace mailhost {

namespace {

const QUuid madeUidNamespace(u"{5d2f2a55-6a0e-4a39-9a0b-5a3b0e7a9c11}"_s);

// An identifier for a component without UID; the same at every reading of the same file.
QString madeUid(const Component &component, qsizetype position) {
    QByteArray text;
    component.appendText(text);
    return QUuid::createUuidV5(madeUidNamespace, text + QByteArray::number(position))
        .toString(QUuid::WithoutBraces);
}

} // namespace

QString uidOf(const Component &component) {
    const ContentLine *line = component.line("UID");
    return line ? readText(*line).trimmed() : QString();
}

QString recurrenceIdOf(const Component &component) {
    const ContentLine *line = component.line("RECURRENCE-ID");
    return line ? decodeOctets(line->value()).trimmed() : QString();
}

CalendarIndex::CalendarIndex(Document document)
    : m_document(std::move(document)) {
    for (Component *calendar : m_document.calendars())
        addAll(calendar);
}

void CalendarIndex::addAll(Component *calendar) {
    auto zones = std::make_unique<ZoneTable>(*calendar);
    for (Component *component : calendar->components()) {
        if (component->name != "VEVENT")
            continue;
        for (const char *name : {"DTSTART", "DTEND", "RECURRENCE-ID"}) {
            const ContentLine *line = component->line(name);
            const auto tzid = line ? line->parameter("TZID") : std::nullopt;
            if (tzid && !tzid->isEmpty())
                (void)zones->zone(*tzid);
        }
        addEntry(calendar, component);
    }
    QStringList unknown(zones->unknownNames().begin(), zones->unknownNames().end());
    unknown.sort();
    m_unknownZones += unknown;
    m_zones.emplace(calendar, std::move(zones));
}

CalendarEntry &CalendarIndex::addEntry(Component *calendar, Component *component,
                                       const QString &uidOfNameless) {
    auto entry = std::make_unique<CalendarEntry>();
    CalendarEntry *added = entry.get();
    added->component = component;
    added->calendar = calendar;
    added->order = m_entries.empty() ? 0 : m_entries.back()->order + 1;
    added->uid = uidOf(*component);
    added->recurrenceId = recurrenceIdOf(*component);
    added->uidIsMade = added->uid.isEmpty();
    if (added->uidIsMade)
        added->uid =
            uidOfNameless.isEmpty() ? madeUid(*component, qsizetype(m_entries.size())) : uidOfNameless;
    m_byUid[added->uid].append(added);
    m_entries.push_back(std::move(entry));
    return *added;
}

void CalendarIndex::sort() {
    QHash<const Component *, qint64> places;
    for (const Component *calendar : m_document.calendars()) {
        for (const Component *component : calendar->components())
            places.insert(component, places.size());
    }
    const auto before = [](const auto &a, const auto &b) { return a->order < b->order; };
    for (const auto &entry : m_entries)
        entry->order = places.value(entry->component);
    std::sort(m_entries.begin(), m_entries.end(), before);
    for (QList<CalendarEntry *> &ofOne : m_byUid)
        std::sort(ofOne.begin(), ofOne.end(), before);
}

CalendarEntry *CalendarIndex::find(const QString &uid, const QString &recurrenceId) const {
    const auto ofOne = m_byUid.constFind(uid);
    if (ofOne == m_byUid.constEnd())
        return nullptr;
    const auto found = std::find_if(ofOne->begin(), ofOne->end(), [&](const CalendarEntry *entry) {
        return entry->recurrenceId == recurrenceId;
    });
    return found == ofOne->end() ? nullptr : *found;
}

Component *CalendarIndex::calendarFor(const CalendarEntry *neighbour) const {
    return neighbour ? neighbour->calendar : m_document.calendars().front();
}

CalendarEntry &CalendarIndex::append(const CalendarEntry *neighbour, std::unique_ptr<Component> component) {
    Component *calendar = calendarFor(neighbour);
    Component *added = component.get();
    calendar->items.emplace_back(std::move(component));
    CalendarEntry &entry = addEntry(calendar, added);
    if (m_document.calendars().back() != calendar)
        sort();
    return entry;
}

std::ptrdiff_t CalendarIndex::placeOf(const CalendarEntry &entry) {
    const std::vector<ComponentItem> &items = entry.calendar->items;
    const auto it = std::find_if(items.begin(), items.end(), [&](const ComponentItem &item) {
        const auto *component = std::get_if<std::unique_ptr<Component>>(&item);
        return component && component->get() == entry.component;
    });
    return it - items.begin();
}

void CalendarIndex::replace(CalendarEntry &entry, std::unique_ptr<Component> component) {
    const std::ptrdiff_t place = placeOf(entry);
    const QString recurrenceId = recurrenceIdOf(*component);
    if (recurrenceId != entry.recurrenceId)
        m_formerPlaces[{entry.uid, entry.recurrenceId}].prepend({entry.calendar, place});
    entry.component = component.get();
    entry.recurrenceId = recurrenceId;
    entry.uidIsMade = uidOf(*component).isEmpty();
    entry.calendar->items[size_t(place)] = std::move(component);
}

void CalendarIndex::remove(CalendarEntry &entry) {
    const std::ptrdiff_t place = placeOf(entry);
    m_formerPlaces[{entry.uid, entry.recurrenceId}].prepend({entry.calendar, place});
    entry.calendar->items.erase(entry.calendar->items.begin() + place);
    QList<CalendarEntry *> &ofOne = m_byUid[entry.uid];
    ofOne.removeOne(&entry);
    if (ofOne.isEmpty())
        m_byUid.remove(QString(entry.uid));
    std::erase_if(m_entries, [&](const auto &held) { return held.get() == &entry; });
}

void CalendarIndex::removeAll(const QString &uid) {
    // In reverse order, so that each entry remembers its place among all of them.
    const QList<CalendarEntry *> all = entriesOf(uid);
    for (const CalendarEntry *held : all)
        m_formerPlaces.remove({uid, held->recurrenceId});
    for (auto held = all.rbegin(); held != all.rend(); ++held)
        remove(**held);
}

CalendarEntry &CalendarIndex::putBack(const QString &uid, std::unique_ptr<Component> component) {
    const Place atEnd{m_document.calendars().front(), std::numeric_limits<std::ptrdiff_t>::max()};
    QList<Place> &places = m_formerPlaces[{uid, recurrenceIdOf(*component)}];
    const Place place = places.isEmpty() ? atEnd : places.takeFirst();
    auto &items = place.calendar->items;
    Component *inserted = component.get();
    items.insert(items.begin() + std::min(place.index, std::ptrdiff_t(items.size())), std::move(component));
    CalendarEntry &entry = addEntry(place.calendar, inserted, uid);
    sort();
    return entry;
}

void CalendarIndex::writeMadeUid(CalendarEntry &entry) {
    if (entry.uidIsMade)
        writeText(entry.component->lineOrNew("UID"), entry.uid);
    entry.uidIsMade = false;
}

} // namespace mailhost
