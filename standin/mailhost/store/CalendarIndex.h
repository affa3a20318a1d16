// The appointments of a calendar document by identifier, with their positions.
#pragma once

#include "standin/mailhost/store/Zones.h"

#include <unordered_map>

namespace mailhost {

struct CalendarEntry {
    Component *component = nullptr; // owned by the document
    Component *calendar = nullptr;  // the VCALENDAR around it
    QString uid;
    QString recurrenceId;
    bool uidIsMade = false; // the file has none; written when the appointment is first changed
    qint64 order = 0;       // in the file
};

// Entries are valid until they are removed. "In order" means in the file's order.
class CalendarIndex {
public:
    // The document has at least one calendar.
    explicit CalendarIndex(Document document);

    [[nodiscard]] const Document &document() const { return m_document; }
    // The zones that appointments name and that neither the file nor the system knows.
    [[nodiscard]] const QStringList &unknownZones() const { return m_unknownZones; }
    [[nodiscard]] ZoneTable &zonesOf(const CalendarEntry &entry) const { return *m_zones.at(entry.calendar); }
    [[nodiscard]] const std::vector<std::unique_ptr<CalendarEntry>> &entries() const { return m_entries; }
    // The first of that name; null if there is none.
    [[nodiscard]] CalendarEntry *find(const QString &uid, const QString &recurrenceId) const;
    // A series with its exceptions, in order.
    [[nodiscard]] QList<CalendarEntry *> entriesOf(const QString &uid) const { return m_byUid.value(uid); }

    // Appends a component to the calendar of `neighbour` (null: the first calendar).
    CalendarEntry &append(const CalendarEntry *neighbour, std::unique_ptr<Component> component);
    // The calendar to which append() adds.
    [[nodiscard]] Component *calendarFor(const CalendarEntry *neighbour) const;
    [[nodiscard]] ZoneTable &zonesFor(const CalendarEntry *neighbour) const {
        return *m_zones.at(calendarFor(neighbour));
    }
    // Replaces the component of the entry.
    void replace(CalendarEntry &entry, std::unique_ptr<Component> component);
    // Deletes the entry and its component, and stores its position for putBack().
    void remove(CalendarEntry &entry);
    void removeAll(const QString &uid);
    // Inserts the component where the one with the same identifiers was removed, else at the end of the first
    // calendar.
    CalendarEntry &putBack(const QString &uid, std::unique_ptr<Component> component);
    // Writes an identifier that the file does not have.
    static void writeMadeUid(CalendarEntry &entry);

private:
    struct Place {
        Component *calendar;
        std::ptrdiff_t index; // among its items
    };
    void addAll(Component *calendar);
    // `uidOfNameless` is used for a component without UID; without it the identifier is made from the text.
    CalendarEntry &addEntry(Component *calendar, Component *component, const QString &uidOfNameless = {});
    void sort(); // after an entry was put between others
    [[nodiscard]] static std::ptrdiff_t placeOf(const CalendarEntry &entry);

    Document m_document;
    std::vector<std::unique_ptr<CalendarEntry>> m_entries;                     // in order
    QHash<QString, QList<CalendarEntry *>> m_byUid;                            // each in order
    std::unordered_map<const Component *, std::unique_ptr<ZoneTable>> m_zones; // by VCALENDAR
    QStringList m_unknownZones;
    // Several places if a damaged file repeats identifiers, in the file's order.
    QHash<std::pair<QString, QString>, QList<Place>> m_formerPlaces;
};

// The identifiers as the component has them; empty when it has none.
[[nodiscard]] QString uidOf(const Component &component);
[[nodiscard]] QString recurrenceIdOf(const Component &component);

} // namespace mailhost
