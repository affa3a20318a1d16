// Taking changes back.
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/TextValue.h"

#include <limits>

namespace mailhost {

namespace {

// One that the file gives no name has a made one.
bool belongsTo(const Component &component, const QString &uid) {
    const ContentLine *line = component.line("UID");
    const QString name = line ? readText(*line).trimmed() : QString();
    return component.name == "VEVENT" && (name.isEmpty() || name == uid);
}

QString recurrenceIdOf(const Component &component) {
    const ContentLine *line = component.line("RECURRENCE-ID");
    return line ? decodeOctets(line->value()).trimmed() : QString();
}

} // namespace

QByteArray CalendarFile::componentsOf(const QString &uid) const {
    QByteArray text;
    for (const CalendarEntry *entry : d->entriesOf(uid))
        entry->component->appendText(text);
    return text;
}

void CalendarFile::Private::replace(CalendarEntry &entry, std::unique_ptr<Component> component) {
    const ContentLine *line = component->line("UID");
    auto &item = entry.calendar->items[size_t(placeOf(entry))];
    entry.component = component.get();
    entry.recurrenceId = recurrenceIdOf(*component);
    entry.uidIsMade = !line || readText(*line).trimmed().isEmpty();
    item = std::move(component);
    forget(entry);
}

void CalendarFile::Private::insertAtFormerPlace(const QString &uid, std::unique_ptr<Component> component) {
    const Place atEnd{document.calendars().front(), std::numeric_limits<std::ptrdiff_t>::max()};
    QList<Place> &places = formerPlaces[{uid, recurrenceIdOf(*component)}];
    const Place place = places.isEmpty() ? atEnd : places.takeFirst();
    auto &items = place.calendar->items;
    Component *inserted = component.get();
    items.insert(items.begin() + std::min(place.index, std::ptrdiff_t(items.size())), std::move(component));
    forget(addEntry(place.calendar, inserted, uid));
}

bool CalendarFile::restore(const QString &uid, const QByteArray &text) {
    std::vector<std::unique_ptr<Component>> components = parseComponents(text);
    if (components.empty() && !text.isEmpty())
        return false;
    if (!std::all_of(components.begin(), components.end(),
                     [&](const auto &component) { return belongsTo(*component, uid); }))
        return false;
    // What is there stays where it is. What was removed goes back to where it was among that: in the file's
    // order, as it was taken out in the other one.
    QList<CalendarEntry *> present = d->entriesOf(uid);
    const bool sameCount = size_t(present.size()) == components.size(); // days may have other names now
    std::vector<std::unique_ptr<Component>> missing;
    for (auto &component : components) {
        const auto same = std::find_if(present.begin(), present.end(), [&](const CalendarEntry *entry) {
            return sameCount || entry->recurrenceId == recurrenceIdOf(*component);
        });
        if (same == present.end()) {
            missing.push_back(std::move(component));
            continue;
        }
        d->replace(**same, std::move(component));
        present.erase(same);
    }
    for (auto entry = present.rbegin(); entry != present.rend(); ++entry)
        d->erase(**entry);
    for (auto &component : missing)
        d->insertAtFormerPlace(uid, std::move(component));
    if (!missing.empty())
        d->sortEntries();
    d->dirty = true;
    return true;
}

} // namespace mailhost
