#include "standin/mailhost/store/CalendarFile.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentComponent.h"
#include "standin/mailhost/store/CalendarDisk.h"
#include "standin/mailhost/store/ConferenceLink.h"
#include "standin/mailhost/store/Messages.h"
#include "standin/mailhost/store/SeriesDays.h"
#include "standin/mailhost/store/TextValue.h"
#include "standin/mailhost/store/WeekListing.h"

#include <QUuid>

namespace mailhost {

namespace {

void moveRules(Component &series, const Moment &before, const Moment &after) {
    for (ContentLine *line : series.lines("RRULE")) {
        if (const QByteArray moved = movedRule(line->value(), before, after); moved != line->value())
            line->setValue(moved);
    }
}

} // namespace

// ---- reading

CalendarFile::CalendarFile(const QString &path, Document document)
    : m_path(path)
    , m_index(std::make_unique<CalendarIndex>(std::move(document))) {}
CalendarFile::~CalendarFile() = default;

std::unique_ptr<CalendarFile> CalendarFile::open(const QString &path, QString *error) {
    QString unheard;
    QString *sentence = error ? error : &unheard;
    const auto text = readCalendarText(path, sentence);
    auto document = text ? readDocument(path, *text, sentence) : std::nullopt;
    if (!document)
        return nullptr;
    std::unique_ptr<CalendarFile> file(new CalendarFile(path, std::move(*document)));
    file->m_digestOnDisk = digestOf(*text);
    return file;
}

QList<Appointment> CalendarFile::appointments() const {
    QList<Appointment> all;
    for (const CalendarEntry *entry : m_index->entries()) {
        all.append(readAppointment(*entry->component, m_index->zonesOf(*entry)));
        all.last().uid = entry->uid;
    }
    return all;
}

std::optional<Appointment> CalendarFile::find(const QString &uid, const QString &recurrenceId) const {
    CalendarEntry *entry = m_index->find(uid, recurrenceId);
    return entry ? std::optional(m_index->appointmentOf(*entry)) : std::nullopt;
}

bool CalendarFile::contains(const QString &uid, const QString &recurrenceId) const {
    return m_index->find(uid, recurrenceId);
}

QList<Occurrence> CalendarFile::occurrences(const QDateTime &from, const QDateTime &to) const {
    return listOccurrences(*m_index, from, to);
}

bool CalendarFile::keepsStart(const QString &uid) const {
    CalendarEntry *entry = m_index->find(uid, {});
    return entry && m_index->summaryOf(*entry).series && SeriesDays(*m_index, *entry).hasOwnDays();
}

QString CalendarFile::conferenceLink(const QString &uid, const QString &recurrenceId) const {
    const CalendarEntry *entry = m_index->find(uid, recurrenceId);
    return entry ? mailhost::conferenceLink(*entry->component) : QString();
}

QByteArray CalendarFile::itipMessage(const QString &uid, const QString &recurrenceId, bool cancel) const {
    const CalendarEntry *entry = m_index->find(uid, recurrenceId);
    if (!entry || entry->uidIsMade)
        return {}; // an answer could not name it; the first change writes its identifier
    return mailhost::itipMessage(*entry->component, m_index->zonesOf(*entry), cancel);
}

// ---- changing

QString CalendarFile::newUid() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

void CalendarFile::changed(CalendarEntry &entry) {
    if (entry.uidIsMade)
        writeText(entry.component->lineOrNew("UID"), entry.uid);
    entry.uidIsMade = false;
    // In a stored calendar both mean the same.
    for (const char *name : {"LAST-MODIFIED", "DTSTAMP"})
        entry.component->lineOrNew(name).setValue(utcNow());
    m_index->changed(entry);
}

QString CalendarFile::add(const Appointment &appointment) {
    Appointment named = appointment;
    if (named.uid.isEmpty())
        named.uid = newUid();
    CalendarEntry *series = m_index->find(named.uid, {});
    const bool isException = series && !named.recurrenceId.isEmpty();
    if (m_index->find(named.uid, named.recurrenceId) ||
        (isException && SeriesDays(*m_index, *series).exceptionOn(named.recurrenceId)))
        return {};
    Component &calendar = series ? *series->calendar : m_index->firstCalendar();
    auto component = isException ? SeriesDays(*m_index, *series).newException(named.recurrenceId)
                                 : Component::make("VEVENT", calendar.lineEnd());
    if (series && series->uidIsMade)
        changed(*series); // the file must have the identifier that connects the two
    writeText(component->lineOrNew("UID"), named.uid);
    for (const char *name : {"DTSTAMP", "CREATED"})
        component->lineOrNew(name).setValue(utcNow());
    if (!named.recurrenceId.isEmpty())
        component->append(
            dayLine(series ? *series->component : *component, "RECURRENCE-ID", named.recurrenceId));
    CalendarEntry &entry = m_index->append(calendar, std::move(component), named.uid);
    writeAppointment(*entry.component, named, m_index->zonesOf(entry));
    changed(entry);
    return named.uid;
}

bool CalendarFile::update(const Appointment &appointment) {
    CalendarEntry *entry = m_index->find(appointment.uid, appointment.recurrenceId);
    if (!entry)
        return false;
    const Appointment was = m_index->appointmentOf(*entry);
    const auto before = m_index->summaryOf(*entry).times;
    const bool movesSeries = m_index->summaryOf(*entry).series && appointment.start.value.isValid() &&
                             was.start != appointment.start;
    if (movesSeries && keepsStart(appointment.uid))
        return false;
    ZoneTable &zones = m_index->zonesOf(*entry);
    if (!writeAppointment(*entry->component, appointment, zones))
        return true;
    if (movesSeries && was.recurrenceRule == appointment.recurrenceRule)
        moveRules(*entry->component, before->start, readTimes(*entry->component, zones)->start);
    changed(*entry);
    return true;
}

bool CalendarFile::removeAll(const QString &uid) {
    const QList<CalendarEntry *> all = m_index->entriesOf(uid); // exceptions may be there without series
    // In reverse order, because the last one that was removed is put back first.
    for (auto entry = all.rbegin(); entry != all.rend(); ++entry)
        m_index->remove(**entry);
    return !all.isEmpty();
}

bool CalendarFile::remove(const QString &uid, const QString &recurrenceId) {
    if (recurrenceId.isEmpty())
        return removeAll(uid);
    CalendarEntry *entry = m_index->find(uid, recurrenceId);
    CalendarEntry *series = m_index->find(uid, {});
    if (!series) {
        if (entry)
            m_index->remove(*entry);
        return entry;
    }
    SeriesDays days(*m_index, *series);
    if (!entry)
        entry = days.exceptionOn(recurrenceId);
    auto handedOn = entry ? days.handedOn(*entry) : nullptr;
    // The day is excluded even if its exception is removed: else the series would take place on it.
    const bool excluded = days.exclude(recurrenceId, entry);
    if (excluded)
        changed(*series);
    if (entry)
        m_index->remove(*entry);
    if (handedOn)
        changed(m_index->append(*series->calendar, std::move(handedOn), uid));
    return entry || excluded;
}

QByteArray CalendarFile::componentsOf(const QString &uid) const {
    QByteArray text;
    for (const CalendarEntry *entry : m_index->entriesOf(uid))
        entry->component->appendText(text);
    return text;
}

void CalendarFile::restore(const QString &uid, const QByteArray &components) {
    removeAll(uid);
    for (auto &component : parseComponents(components))
        m_index->putBack(uid, std::move(component));
}

bool CalendarFile::save(QString *error) {
    QString unheard;
    const QByteArray text = m_index->document().text();
    if (digestOf(text) == m_digestOnDisk)
        return true;
    if (!replaceCalendarText(m_path, text, m_digestOnDisk, error ? error : &unheard))
        return false;
    m_digestOnDisk = digestOf(text);
    return true;
}

} // namespace mailhost
