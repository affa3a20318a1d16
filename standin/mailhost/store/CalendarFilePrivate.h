// What CalendarFile is made of.
#pragma once

#include "standin/mailhost/store/CalendarFile.h"
#include "standin/mailhost/store/Recurrence.h"
#include "standin/mailhost/store/TimeIndex.h"

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
    qint64 order; // of the entry
    Occurrence occurrence;
};

struct CalendarEntry;

// The days from one on follow an exception (RANGE=THISANDFUTURE): until the next such one, or until `until`.
struct FollowedChange {
    Seconds fromUtc = 0; // of the day's own start, in the series
    Seconds untilUtc = 0;
    Seconds shift = 0; // on the clock, from that start to the exception's
    CalendarEntry *exception = nullptr;
};

// What the exceptions of a series say about its days.
struct DayChanges {
    MomentSet days; // that have an exception
    std::vector<FollowedChange> followed;
};

struct CalendarEntry {
    Component *component = nullptr; // owned by the document
    Component *calendar = nullptr;  // the VCALENDAR around it
    QString uid;
    QString recurrenceId;
    bool uidIsMade = false; // the file has none; written when the appointment is first changed
    qint64 order = 0;       // as the file has them
    std::unique_ptr<EntrySummary> summary;
    std::unique_ptr<DayChanges> changes; // of a series; null until asked for, and after a change
};

struct CalendarFile::Private {
    QString path;
    Document document;
    std::vector<std::unique_ptr<CalendarEntry>> entries;                     // in the file's order
    QHash<QString, QList<CalendarEntry *>> byUid;                            // each in the file's order
    std::unordered_map<const Component *, std::unique_ptr<ZoneTable>> zones; // by VCALENDAR
    QStringList warnings;
    QByteArray digestOnDisk; // of what was read or saved last; empty: there was no file
    bool dirty = false;
    // For the list of a week. What is new or changed is unread until the next list is asked for.
    std::vector<CalendarEntry *> unread;
    std::vector<CalendarEntry *> series;
    TimeIndex single;
    // Where components stood that were removed, for restore(): their VCALENDAR and place in it. A damaged
    // file has several of one name: then in the file's order.
    struct Place {
        Component *calendar;
        std::ptrdiff_t index;
    };
    QHash<std::pair<QString, QString>, QList<Place>> formerPlaces;
    // What find() read last: an editor asks for its appointment again and again. Null after any change.
    const CalendarEntry *found = nullptr;
    Appointment foundAppointment;

    void index();
    // `uidOfNameless` is for a component without UID; else one is made from its text.
    CalendarEntry &addEntry(Component *calendar, Component *component, const QString &uidOfNameless = {});
    void sortEntries(); // after one was put between others
    [[nodiscard]] CalendarEntry *entry(const QString &uid, const QString &recurrenceId) const;
    [[nodiscard]] ZoneTable &zonesOf(const Component *calendar) { return *zones.at(calendar); }
    // In the file's order; a series with its exceptions.
    [[nodiscard]] QList<CalendarEntry *> entriesOf(const QString &uid) const { return byUid.value(uid); }
    static std::ptrdiff_t placeOf(const CalendarEntry &entry); // among the items of its calendar
    void changed(CalendarEntry &entry);
    void forget(CalendarEntry &entry); // what was read of it, and what its series made of that
    void erase(CalendarEntry &entry);
    void eraseAll(const QString &uid);
    void replace(CalendarEntry &entry, std::unique_ptr<Component> component);
    void insertAtFormerPlace(const QString &uid, std::unique_ptr<Component> component);
    void warn(const QString &text);

    // What names single days of the series, whose component was `before`.
    void moveDays(CalendarEntry &series, const Component &before);
    // The day that the exception changes, in the words of its series.
    [[nodiscard]] QString dayOf(CalendarEntry &series, const CalendarEntry &exception);
    // The exception of that day, however the file names it. Null when it has none.
    [[nodiscard]] CalendarEntry *exceptionOn(CalendarEntry &series, const QString &instanceId);
    // What a day looks like before it is an exception of its own.
    [[nodiscard]] std::unique_ptr<Component> newException(CalendarEntry &series, const QString &instanceId);
    // False when the series does not take place on that day.
    bool excludeDay(CalendarEntry &series, const QString &instanceId);
    [[nodiscard]] std::optional<Moment> nextFollowing(CalendarEntry &series, const FollowedChange &change);
    // Before a day is removed whose exception later days follow: they follow one at the next day then. False
    // when none does.
    bool handOn(CalendarEntry &series, CalendarEntry &exception);

    const EntrySummary &summaryOf(CalendarEntry &entry);
    const DayChanges &changesOf(CalendarEntry &series);
    void readUnread();
    void appendSeries(CalendarEntry &series, Seconds from, Seconds to, std::vector<TimedOccurrence> *out);
    void appendFollowing(CalendarEntry &series, const FollowedChange &change, Seconds from, Seconds to,
                         std::vector<TimedOccurrence> *out);
};

// How the series would name that day: in the form of its start.
[[nodiscard]] QString instanceIdOf(const Moment &seriesStart, const Moment &day);
// The line that says which day of the series it is about.
[[nodiscard]] ContentLine dayLine(const Component &series, const QByteArray &name, const QString &instanceId);

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
