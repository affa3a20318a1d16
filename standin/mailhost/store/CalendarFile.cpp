#include "standin/mailhost/store/CalendarFile.h"

#include "platform/Literals.h"
#include "standin/mailhost/store/AppointmentReader.h"
#include "standin/mailhost/store/AppointmentWriter.h"
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/TextValue.h"

#include <QFileInfo>
#include <QUuid>

namespace mailhost {

namespace {

constexpr qsizetype mostWarnings = 50;
const QUuid madeUidNamespace(u"{5d2f2a55-6a0e-4a39-9a0b-5a3b0e7a9c11}"_s);

// For a component without UID: the same at every reading of the same file.
QString madeUid(const Component &component, qsizetype position) {
    QByteArray text;
    component.appendText(text);
    return QUuid::createUuidV5(madeUidNamespace, text + QByteArray::number(position))
        .toString(QUuid::WithoutBraces);
}

// The older format has the same shape, but other rules for folding and encoding: rewriting would damage it.
bool isOldFormat(const Document &document) {
    const auto calendars = document.calendars();
    return std::any_of(calendars.begin(), calendars.end(), [](const Component *calendar) {
        const ContentLine *version = calendar->line("VERSION");
        return version && version->value().trimmed() == "1.0";
    });
}

} // namespace

// ---- index

void CalendarFile::Private::warn(const QString &text) {
    if (warnings.size() < mostWarnings && !warnings.contains(text))
        warnings.append(text);
}

CalendarEntry &CalendarFile::Private::addEntry(Component *calendar, Component *component,
                                               const QString &uidOfNameless) {
    auto entry = std::make_unique<CalendarEntry>();
    CalendarEntry *added = entry.get();
    added->component = component;
    added->calendar = calendar;
    added->order = entries.empty() ? 0 : entries.back()->order + 1;
    if (const ContentLine *line = component->line("UID"))
        added->uid = readText(*line).trimmed();
    if (const ContentLine *line = component->line("RECURRENCE-ID"))
        added->recurrenceId = decodeOctets(line->value()).trimmed();
    if (added->uid.isEmpty()) {
        added->uid = uidOfNameless.isEmpty() ? madeUid(*component, qsizetype(entries.size())) : uidOfNameless;
        added->uidIsMade = true;
    }
    byUid[added->uid].append(added);
    entries.push_back(std::move(entry));
    unread.push_back(added);
    return *added;
}

void CalendarFile::Private::sortEntries() {
    QHash<const Component *, qint64> places;
    for (const Component *calendar : document.calendars()) {
        for (const Component *component : calendar->components())
            places.insert(component, places.size());
    }
    const auto before = [](const auto &a, const auto &b) { return a->order < b->order; };
    for (const auto &entry : entries)
        entry->order = places.value(entry->component);
    std::sort(entries.begin(), entries.end(), before);
    for (QList<CalendarEntry *> &ofOne : byUid)
        std::sort(ofOne.begin(), ofOne.end(), before);
}

void CalendarFile::Private::index() {
    for (Component *calendar : document.calendars()) {
        auto table = std::make_unique<ZoneTable>(*calendar);
        for (Component *component : calendar->components()) {
            if (component->name != "VEVENT")
                continue;
            for (const char *name : {"DTSTART", "DTEND", "RECURRENCE-ID"}) {
                const ContentLine *line = component->line(name);
                const auto tzid = line ? line->parameter("TZID") : std::nullopt;
                if (tzid && !tzid->isEmpty())
                    (void)table->zone(*tzid);
            }
            addEntry(calendar, component);
        }
        QStringList unknown(table->unknownNames().begin(), table->unknownNames().end());
        unknown.sort();
        for (const QString &name : std::as_const(unknown))
            warn(
                u"The time zone “%1” is not known; its times are shown as local time."_s.arg(name.left(100)));
        zones.emplace(calendar, std::move(table));
    }
}

CalendarEntry *CalendarFile::Private::entry(const QString &uid, const QString &recurrenceId) const {
    const auto ofOne = byUid.constFind(uid);
    if (ofOne == byUid.constEnd())
        return nullptr;
    const auto found = std::find_if(ofOne->begin(), ofOne->end(), [&](const CalendarEntry *entry) {
        return entry->recurrenceId == recurrenceId;
    });
    return found == ofOne->end() ? nullptr : *found;
}

void CalendarFile::Private::forget(CalendarEntry &entry) {
    found = nullptr;
    single.remove(&entry);
    std::erase(series, &entry);
    std::erase(unread, &entry);
    unread.push_back(&entry);
    entry.summary.reset();
    for (CalendarEntry *ofSame : byUid.value(entry.uid))
        ofSame->changes.reset();
}

void CalendarFile::Private::changed(CalendarEntry &entry) {
    if (entry.uidIsMade) {
        writeText(entry.component->lineOrNew("UID"), entry.uid);
        entry.uidIsMade = false;
    }
    touch(*entry.component);
    forget(entry);
    dirty = true;
}

std::ptrdiff_t CalendarFile::Private::placeOf(const CalendarEntry &entry) {
    const std::vector<ComponentItem> &items = entry.calendar->items;
    const auto it = std::find_if(items.begin(), items.end(), [&](const ComponentItem &item) {
        const auto *component = std::get_if<std::unique_ptr<Component>>(&item);
        return component && component->get() == entry.component;
    });
    return it - items.begin();
}

void CalendarFile::Private::erase(CalendarEntry &entry) {
    const std::ptrdiff_t place = placeOf(entry);
    formerPlaces[{entry.uid, entry.recurrenceId}].prepend({entry.calendar, place});
    forget(entry);
    std::erase(unread, &entry);
    entry.calendar->items.erase(entry.calendar->items.begin() + place);
    QList<CalendarEntry *> &ofOne = byUid[entry.uid];
    ofOne.removeOne(&entry);
    if (ofOne.isEmpty())
        byUid.remove(QString(entry.uid));
    dirty = true;
    std::erase_if(entries, [&](const auto &held) { return held.get() == &entry; });
}

void CalendarFile::Private::eraseAll(const QString &uid) {
    // The last first: each then remembers the place that it had among all of them.
    const QList<CalendarEntry *> all = entriesOf(uid);
    for (const CalendarEntry *held : all)
        formerPlaces.remove({uid, held->recurrenceId});
    for (auto held = all.rbegin(); held != all.rend(); ++held)
        erase(**held);
}

// ---- reading

CalendarFile::CalendarFile()
    : d(std::make_unique<Private>()) {}
CalendarFile::~CalendarFile() = default;

std::unique_ptr<CalendarFile> CalendarFile::open(const QString &path, QString *error) {
    QString unheard;
    QString *sentence = error ? error : &unheard;
    const auto text = readCalendarText(path, sentence);
    if (!text)
        return nullptr;
    std::unique_ptr<CalendarFile> file(new CalendarFile);
    const ParseResult result = parseDocument(*text, &file->d->document);
    if (result.failure != ParseFailure::None) {
        *sentence = parseFailureText(path, result);
        return nullptr;
    }
    if (isOldFormat(file->d->document)) {
        *sentence =
            u"“%1” is in the old vCalendar 1.0 format. Export it as iCalendar 2.0 and open that."_s.arg(
                QFileInfo(path).fileName());
        return nullptr;
    }
    file->d->path = path;
    file->d->digestOnDisk = digestOf(*text);
    file->d->index();
    return file;
}

std::unique_ptr<CalendarFile> CalendarFile::create(const QString &path) {
    std::unique_ptr<CalendarFile> file(new CalendarFile);
    const QByteArray lineEnd = "\r\n";
    auto calendar = Component::make("VCALENDAR", lineEnd);
    calendar->append(ContentLine::make("VERSION", "2.0", lineEnd));
    calendar->append(ContentLine::make("PRODID", "-//Parlo//Stand-in calendar//EN", lineEnd));
    calendar->append(ContentLine::make("CALSCALE", "GREGORIAN", lineEnd));
    file->d->document.items.emplace_back(std::move(calendar));
    file->d->path = path;
    file->d->dirty = true;
    file->d->index();
    return file;
}

const QString &CalendarFile::path() const {
    return d->path;
}

const QStringList &CalendarFile::warnings() const {
    return d->warnings;
}

QList<Appointment> CalendarFile::appointments() const {
    QList<Appointment> all;
    all.reserve(qsizetype(d->entries.size()));
    for (const auto &entry : d->entries) {
        all.append(readAppointment(*entry->component, d->zonesOf(entry->calendar)));
        all.last().uid = entry->uid;
    }
    return all;
}

std::optional<Appointment> CalendarFile::find(const QString &uid, const QString &recurrenceId) const {
    const CalendarEntry *entry = d->entry(uid, recurrenceId);
    if (!entry)
        return std::nullopt;
    if (d->found != entry) {
        d->foundAppointment = readAppointment(*entry->component, d->zonesOf(entry->calendar));
        d->foundAppointment.uid = entry->uid;
        d->found = entry;
    }
    return d->foundAppointment;
}

bool CalendarFile::contains(const QString &uid, const QString &recurrenceId) const {
    return d->entry(uid, recurrenceId);
}

// ---- changing

QString CalendarFile::newUid() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QString CalendarFile::add(const Appointment &appointment) {
    Appointment named = appointment;
    if (named.uid.isEmpty())
        named.uid = newUid();
    CalendarEntry *series = d->entry(named.uid, {});
    const bool isException = series && !named.recurrenceId.isEmpty();
    if (d->entry(named.uid, named.recurrenceId) ||
        (isException && d->exceptionOn(*series, named.recurrenceId)))
        return {};
    Component *calendar = series ? series->calendar : d->document.calendars().front();
    auto component = isException ? d->newException(*series, named.recurrenceId) : nullptr;
    if (!component)
        component = Component::make("VEVENT", calendar->lineEnd());
    if (series && series->uidIsMade)
        d->changed(*series); // the two belong together by a name that the file must have
    writeText(component->lineOrNew("UID"), named.uid);
    const QByteArray now = clockText(QDateTime::currentSecsSinceEpoch(), CalendarTime::Kind::Utc);
    component->lineOrNew("DTSTAMP").setValue(now);
    component->lineOrNew("CREATED").setValue(now);
    if (!named.recurrenceId.isEmpty())
        component->append(
            dayLine(series ? *series->component : *component, "RECURRENCE-ID", named.recurrenceId));
    writeAppointment(*component, named, d->zonesOf(calendar));
    Component *added = component.get();
    calendar->items.emplace_back(std::move(component));
    d->changed(d->addEntry(calendar, added));
    if (d->document.calendars().back() != calendar)
        d->sortEntries();
    return named.uid;
}

bool CalendarFile::update(const Appointment &appointment) {
    CalendarEntry *entry = d->entry(appointment.uid, appointment.recurrenceId);
    if (!entry)
        return false;
    ZoneTable &zones = d->zonesOf(entry->calendar);
    const bool isSeries = d->summaryOf(*entry).series != nullptr;
    const auto before = isSeries ? entry->component->copy() : nullptr;
    if (!writeAppointment(*entry->component, appointment, zones))
        return true;
    if (before)
        d->moveDays(*entry, *before);
    d->changed(*entry);
    return true;
}

bool CalendarFile::remove(const QString &uid, const QString &recurrenceId) {
    CalendarEntry *entry = d->entry(uid, recurrenceId);
    if (recurrenceId.isEmpty()) {
        const bool isThere = !d->entriesOf(uid).isEmpty(); // an exception may be there without its series
        d->eraseAll(uid);
        return isThere;
    }
    CalendarEntry *series = d->entry(uid, {});
    if (series && !entry)
        entry = d->exceptionOn(*series, recurrenceId);
    if (!series) {
        if (entry)
            d->erase(*entry);
        return entry;
    }
    // The day is excluded even when its exception goes: else it would come back as the series has it.
    const bool excluded = d->excludeDay(*series, entry ? d->dayOf(*series, *entry) : recurrenceId);
    if (!entry)
        return excluded;
    if (!d->handOn(*series, *entry))
        d->erase(*entry);
    return true;
}

bool CalendarFile::save(QString *error) {
    QString unheard;
    if (!d->dirty)
        return true;
    const QByteArray text = d->document.text();
    if (!replaceCalendarText(d->path, text, d->digestOnDisk, error ? error : &unheard))
        return false;
    d->digestOnDisk = digestOf(text);
    d->dirty = false;
    return true;
}

} // namespace mailhost
