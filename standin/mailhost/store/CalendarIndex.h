// The appointments of a calendar document by identifier, and what a list of them needs.
#pragma once

#include "standin/mailhost/store/Recurrence.h"

#include <unordered_map>

namespace mailhost {

struct CalendarEntry;

struct EntrySummary {
    std::optional<TimesOfComponent> times; // none: the file gives no start
    Seconds startUtc = 0;
    Seconds endUtc = 0;
    QString summary;
    QString location;
    bool hasMeetingRecord = false;
    bool cancelled = false;
    std::unique_ptr<Series> series; // null: takes place once
};

// The days from one on follow an exception (RANGE=THISANDFUTURE), until the next such exception.
struct FollowedChange {
    Seconds fromUtc = 0; // of the day's own start, in the series
    Seconds shift = 0;   // on the clock, from that start to the exception's
    CalendarEntry *exception = nullptr;
};

// The changes of a series' days by its exceptions.
struct DayChanges {
    MomentSet days;                       // that have an exception
    std::vector<FollowedChange> followed; // in the order of their days
    // What the day of the series with that start follows; null: the series itself.
    [[nodiscard]] const FollowedChange *followedOn(Seconds startUtc) const;
};

struct CalendarEntry {
    Component *component = nullptr; // owned by the document
    Component *calendar = nullptr;  // the VCALENDAR around it
    QString uid;
    QString recurrenceId;
    bool uidIsMade = false; // the file has none; written when the appointment is first changed
    // Read on first use, until a change.
    std::optional<Appointment> appointment;
    std::optional<EntrySummary> summary;
    std::optional<DayChanges> changes;

    // A blank component stays in its place, where the appointment can be put back.
    [[nodiscard]] bool isRemoved() const { return component->name.isEmpty(); }
};

// Entries stay valid, also after they are removed.
class CalendarIndex {
public:
    // The document has at least one calendar.
    explicit CalendarIndex(Document document);

    [[nodiscard]] const Document &document() const { return m_document; }
    [[nodiscard]] Component &firstCalendar() const { return *m_document.calendars().front(); }
    [[nodiscard]] ZoneTable &zonesOf(const CalendarEntry &entry) { return m_zones.at(entry.calendar); }
    // In the file's order, new ones last.
    [[nodiscard]] std::vector<CalendarEntry *> entries() const;
    // The first of that name; null if there is none.
    [[nodiscard]] CalendarEntry *find(const QString &uid, const QString &recurrenceId) const;
    // A series with its exceptions.
    [[nodiscard]] QList<CalendarEntry *> entriesOf(const QString &uid) const;

    // All valid until the entry, or another of its series, is changed.
    const Appointment &appointmentOf(CalendarEntry &entry);
    const EntrySummary &summaryOf(CalendarEntry &entry);
    const DayChanges &changesOf(CalendarEntry &series);

    // Appends the component to the calendar; `uid` is used if it has none.
    CalendarEntry &append(Component &calendar, std::unique_ptr<Component> component, const QString &uid);
    void remove(CalendarEntry &entry);
    // Puts the component where the last one with the same identifiers was removed, else at the end of the
    // first calendar.
    void putBack(const QString &uid, std::unique_ptr<Component> component);
    // Call it after the component was changed.
    void changed(const CalendarEntry &entry);

private:
    CalendarEntry &add(Component &calendar, Component &component, const QString &uid);

    Document m_document;
    std::vector<std::unique_ptr<CalendarEntry>> m_entries;
    QHash<QString, QList<CalendarEntry *>> m_byUid;
    std::vector<CalendarEntry *> m_removed;                   // the last one at the end
    std::unordered_map<const Component *, ZoneTable> m_zones; // by VCALENDAR
};

} // namespace mailhost
