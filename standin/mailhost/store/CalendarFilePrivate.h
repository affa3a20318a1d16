// What CalendarFile is made of.
#pragma once

#include "standin/mailhost/store/CalendarFile.h"
#include "standin/mailhost/store/Recurrence.h"

#include <unordered_map>

namespace mailhost {

// What the list of a week needs of one appointment, read when it is first asked for.
struct EntrySummary {
    std::optional<TimesOfComponent> times; // nothing: the file gives no start
    Seconds startUtc = 0;
    Seconds endUtc = 0;
    QString summary;
    QString location;
    bool hasMeetingRecord = false;
    bool cancelled = false;
    std::unique_ptr<Series> series; // null: takes place once
};

struct TimedOccurrence {
    Seconds startUtc;
    Occurrence occurrence;
};

struct CalendarEntry {
    Component *component = nullptr; // owned by the document
    Component *calendar = nullptr;  // the VCALENDAR around it
    QString uid;
    QString recurrenceId;
    bool uidIsMade = false; // the file has none; written when the appointment is first changed
    std::unique_ptr<EntrySummary> summary;
};

struct CalendarFile::Private {
    QString path;
    Document document;
    std::vector<std::unique_ptr<CalendarEntry>> entries; // in the file's order
    QHash<std::pair<QString, QString>, CalendarEntry *> byName;
    std::unordered_map<const Component *, std::unique_ptr<ZoneTable>> zones; // by VCALENDAR
    QStringList warnings;
    QByteArray digestOnDisk; // of what was read or saved last; empty: there was no file
    bool dirty = false;
    // Of every series: which occurrences it has other components for. Empty after a change.
    QHash<QString, MomentSet> exceptions;
    bool exceptionsRead = false;

    void index();
    void addEntry(Component *calendar, Component *component);
    [[nodiscard]] CalendarEntry *entry(const QString &uid, const QString &recurrenceId) const;
    [[nodiscard]] ZoneTable &zonesOf(const Component *calendar) { return *zones.at(calendar); }
    void changed(CalendarEntry &entry);
    void erase(CalendarEntry &entry);
    void eraseAll(const QString &uid);
    // What names single days of the series, whose start was moved.
    void moveDays(CalendarEntry &series, const Moment &before, const Moment &after);
    // In the file's order; a series with its exceptions.
    [[nodiscard]] std::vector<CalendarEntry *> entriesOf(const QString &uid) const;
    static std::ptrdiff_t placeOf(const CalendarEntry &entry); // among the items of its calendar
    // False when the series does not take place on that day.
    bool excludeDay(CalendarEntry &series, const QString &instanceId);
    void warn(const QString &text);

    const EntrySummary &summaryOf(CalendarEntry &entry);
    void readExceptions();
    void appendOccurrences(CalendarEntry &entry, Seconds from, Seconds to, std::vector<TimedOccurrence> *out);
};

// Reads a whole file. Nothing, with a sentence for the user, when that is not possible.
[[nodiscard]] std::optional<QByteArray> readCalendarText(const QString &path, QString *error);
// Moves a complete new file into place. `expected` is the digest of what must be there now, empty for
// nothing.
[[nodiscard]] bool replaceCalendarText(const QString &path, const QByteArray &text,
                                       const QByteArray &expected, QString *error);
[[nodiscard]] QByteArray digestOf(const QByteArray &text);
// A sentence for the user.
[[nodiscard]] QString parseFailureText(const QString &path, const ParseResult &result);

} // namespace mailhost
