#include "standin/mailhost/store/CalendarFile.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentReader.h"
#include "standin/mailhost/store/AppointmentWriter.h"
#include "standin/mailhost/store/CalendarDisk.h"
#include "standin/mailhost/store/ConferenceLink.h"
#include "standin/mailhost/store/ItipMessage.h"
#include "standin/mailhost/store/SeriesDays.h"
#include "standin/mailhost/store/SeriesRule.h"
#include "standin/mailhost/store/TextValue.h"
#include "standin/mailhost/store/WeekListing.h"

#include <QUuid>

namespace mailhost {

namespace {

Document emptyDocument() {
    const QByteArray lineEnd = "\r\n";
    auto calendar = Component::make("VCALENDAR", lineEnd);
    calendar->append(ContentLine::make("VERSION", "2.0", lineEnd));
    calendar->append(ContentLine::make("PRODID", "-//Parlo//Stand-in calendar//EN", lineEnd));
    calendar->append(ContentLine::make("CALSCALE", "GREGORIAN", lineEnd));
    Document document;
    document.items.emplace_back(std::move(calendar));
    return document;
}

// A component without identifier has a generated one.
bool belongsTo(const Component &component, const QString &uid) {
    return component.name == "VEVENT" && (uidOf(component).isEmpty() || uidOf(component) == uid);
}

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
    , m_index(std::make_unique<CalendarIndex>(std::move(document)))
    , m_summaries(std::make_unique<EntrySummaries>(*m_index, m_warnings))
    , m_days(std::make_unique<SeriesDays>(*m_index, *m_summaries))
    , m_listing(std::make_unique<WeekListing>(*m_index, *m_summaries, m_warnings)) {
    for (const QString &name : m_index->unknownZones())
        addWarning(m_warnings, u"The time zone “%1” is not known; its times are shown as local time."_s.arg(
                                   name.left(100)));
}
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

std::unique_ptr<CalendarFile> CalendarFile::create(const QString &path) {
    std::unique_ptr<CalendarFile> file(new CalendarFile(path, emptyDocument()));
    file->m_dirty = true;
    return file;
}

QList<Appointment> CalendarFile::appointments() const {
    QList<Appointment> all;
    all.reserve(qsizetype(m_index->entries().size()));
    for (const auto &entry : m_index->entries()) {
        all.append(readAppointment(*entry->component, m_index->zonesOf(*entry)));
        all.last().uid = entry->uid;
    }
    return all;
}

std::optional<Appointment> CalendarFile::find(const QString &uid, const QString &recurrenceId) const {
    const CalendarEntry *entry = m_index->find(uid, recurrenceId);
    if (!entry)
        return std::nullopt;
    if (m_found != entry) {
        m_foundAppointment = readAppointment(*entry->component, m_index->zonesOf(*entry));
        m_foundAppointment.uid = entry->uid;
        m_found = entry;
    }
    return m_foundAppointment;
}

bool CalendarFile::contains(const QString &uid, const QString &recurrenceId) const {
    return m_index->find(uid, recurrenceId);
}

QList<Occurrence> CalendarFile::occurrences(const QDateTime &from, const QDateTime &to) const {
    return m_listing->between(from, to);
}

bool CalendarFile::keepsStart(const QString &uid) const {
    const CalendarEntry *entry = m_index->find(uid, {});
    return entry && m_summaries->of(*entry).series && m_days->hasOwnDays(*entry);
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

void CalendarFile::note(CalendarEntry &entry) {
    m_found = nullptr;
    m_summaries->forget(entry);
    m_listing->changed(entry);
    m_dirty = true;
}

void CalendarFile::changed(CalendarEntry &entry) {
    CalendarIndex::writeMadeUid(entry);
    touch(*entry.component);
    note(entry);
}

void CalendarFile::erase(CalendarEntry &entry) {
    note(entry);
    m_listing->removed(entry);
    m_index->remove(entry);
}

QString CalendarFile::add(const Appointment &appointment) {
    Appointment named = appointment;
    if (named.uid.isEmpty())
        named.uid = newUid();
    CalendarEntry *series = m_index->find(named.uid, {});
    const bool isException = series && !named.recurrenceId.isEmpty();
    if (m_index->find(named.uid, named.recurrenceId) ||
        (isException && m_days->exceptionOn(*series, named.recurrenceId)))
        return {};
    const QByteArray lineEnd = m_index->calendarFor(series)->lineEnd();
    auto component =
        isException ? m_days->newException(*series, named.recurrenceId) : Component::make("VEVENT", lineEnd);
    if (series && series->uidIsMade)
        changed(*series); // the file must have the identifier that connects the two
    writeText(component->lineOrNew("UID"), named.uid);
    const QByteArray now = clockText(QDateTime::currentSecsSinceEpoch(), CalendarTime::Kind::Utc);
    component->lineOrNew("DTSTAMP").setValue(now);
    component->lineOrNew("CREATED").setValue(now);
    if (!named.recurrenceId.isEmpty())
        component->append(
            dayLine(series ? *series->component : *component, "RECURRENCE-ID", named.recurrenceId));
    writeAppointment(*component, named, m_index->zonesFor(series));
    changed(m_index->append(series, std::move(component)));
    return named.uid;
}

bool CalendarFile::update(const Appointment &appointment) {
    CalendarEntry *entry = m_index->find(appointment.uid, appointment.recurrenceId);
    if (!entry)
        return false;
    const auto before = m_summaries->of(*entry).times;
    const bool recurs = m_summaries->of(*entry).series != nullptr;
    const Appointment was = *find(appointment.uid, appointment.recurrenceId);
    const bool moves = appointment.start.value.isValid() && !sameTime(was.start, appointment.start);
    if (moves && recurs && keepsStart(appointment.uid))
        return false;
    ZoneTable &zones = m_index->zonesOf(*entry);
    if (!writeAppointment(*entry->component, appointment, zones))
        return true;
    if (moves && recurs && was.recurrenceRule == appointment.recurrenceRule)
        moveRules(*entry->component, before->start, readTimes(*entry->component, zones)->start);
    changed(*entry);
    return true;
}

bool CalendarFile::remove(const QString &uid, const QString &recurrenceId) {
    if (recurrenceId.isEmpty()) {
        const QList<CalendarEntry *> all = m_index->entriesOf(uid); // exceptions may be there without series
        for (CalendarEntry *entry : all) {
            note(*entry);
            m_listing->removed(*entry);
        }
        m_index->removeAll(uid);
        return !all.isEmpty();
    }
    CalendarEntry *entry = m_index->find(uid, recurrenceId);
    CalendarEntry *series = m_index->find(uid, {});
    if (!series) {
        if (entry)
            erase(*entry);
        return entry;
    }
    if (!entry)
        entry = m_days->exceptionOn(*series, recurrenceId);
    auto handedOn = entry ? m_days->handedOn(*series, *entry) : nullptr;
    // The day is excluded even if its exception is removed: else the series would take place on it.
    const bool excluded = m_days->exclude(*series, entry ? m_days->idOf(*series, *entry) : recurrenceId);
    if (excluded)
        changed(*series);
    if (!entry)
        return excluded;
    if (!handedOn) {
        erase(*entry);
        return true;
    }
    m_index->replace(*entry, std::move(handedOn));
    changed(*entry);
    return true;
}

QByteArray CalendarFile::componentsOf(const QString &uid) const {
    QByteArray text;
    for (const CalendarEntry *entry : m_index->entriesOf(uid))
        entry->component->appendText(text);
    return text;
}

bool CalendarFile::restore(const QString &uid, const QByteArray &text) {
    std::vector<std::unique_ptr<Component>> components = parseComponents(text);
    const bool ofIt = std::all_of(components.begin(), components.end(),
                                  [&](const auto &component) { return belongsTo(*component, uid); });
    if (!ofIt || (components.empty() && !text.isEmpty()))
        return false;
    // Present components stay in their place. Removed ones return to theirs in the file's order, because they
    // were removed in the reverse order.
    QList<CalendarEntry *> present = m_index->entriesOf(uid);
    std::vector<std::unique_ptr<Component>> missing;
    for (auto &component : components) {
        const auto same = std::find_if(present.begin(), present.end(), [&](const CalendarEntry *entry) {
            return entry->recurrenceId == recurrenceIdOf(*component);
        });
        if (same == present.end()) {
            missing.push_back(std::move(component));
            continue;
        }
        m_index->replace(**same, std::move(component));
        note(**same);
        present.erase(same);
    }
    for (auto entry = present.rbegin(); entry != present.rend(); ++entry)
        erase(**entry);
    for (auto &component : missing)
        note(m_index->putBack(uid, std::move(component)));
    m_dirty = true;
    return true;
}

bool CalendarFile::save(QString *error) {
    QString unheard;
    if (!m_dirty)
        return true;
    const QByteArray text = m_index->document().text();
    if (!replaceCalendarText(m_path, text, m_digestOnDisk, error ? error : &unheard))
        return false;
    m_digestOnDisk = digestOf(text);
    m_dirty = false;
    return true;
}

} // namespace mailhost
