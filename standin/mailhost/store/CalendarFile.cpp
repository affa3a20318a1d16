#include "standin/mailhost/store/CalendarFile.h"

#include "standin/mailhost/store/AppointmentReader.h"
#include "standin/mailhost/store/AppointmentWriter.h"
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/SeriesMove.h"
#include "standin/mailhost/store/TextValue.h"

#include <QFileInfo>
#include <QUuid>

namespace mailhost {

namespace {

constexpr qsizetype mostWarnings = 50;
const QUuid madeUidNamespace(QStringLiteral("{5d2f2a55-6a0e-4a39-9a0b-5a3b0e7a9c11}"));

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

void CalendarFile::Private::addEntry(Component *calendar, Component *component) {
    auto entry = std::make_unique<CalendarEntry>();
    entry->component = component;
    entry->calendar = calendar;
    if (const ContentLine *line = component->line("UID"))
        entry->uid = readText(*line).trimmed();
    if (const ContentLine *line = component->line("RECURRENCE-ID"))
        entry->recurrenceId = decodeOctets(line->value()).trimmed();
    if (entry->uid.isEmpty()) {
        entry->uid = madeUid(*component, qsizetype(entries.size()));
        entry->uidIsMade = true;
    }
    const auto name = std::make_pair(entry->uid, entry->recurrenceId);
    if (!byName.contains(name))
        byName.insert(name, entry.get());
    entries.push_back(std::move(entry));
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
            warn(QStringLiteral("The time zone “%1” is not known; its times are shown as local time.")
                     .arg(name.left(100)));
        zones.emplace(calendar, std::move(table));
    }
}

CalendarEntry *CalendarFile::Private::entry(const QString &uid, const QString &recurrenceId) const {
    return byName.value({uid, recurrenceId});
}

void CalendarFile::Private::changed(CalendarEntry &entry) {
    if (entry.uidIsMade) {
        writeText(entry.component->lineOrNew("UID"), entry.uid);
        entry.uidIsMade = false;
    }
    touch(*entry.component);
    entry.summary.reset();
    exceptionsRead = false;
    dirty = true;
}

void CalendarFile::Private::erase(CalendarEntry &entry) {
    std::erase_if(entry.calendar->items, [&](const ComponentItem &item) {
        const auto *component = std::get_if<std::unique_ptr<Component>>(&item);
        return component && component->get() == entry.component;
    });
    byName.remove({entry.uid, entry.recurrenceId});
    exceptionsRead = false;
    dirty = true;
    std::erase_if(entries, [&](const auto &held) { return held.get() == &entry; });
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
        *sentence = QStringLiteral(
                        "“%1” is in the old vCalendar 1.0 format. Export it as iCalendar 2.0 and open that.")
                        .arg(QFileInfo(path).fileName());
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
    Appointment appointment = readAppointment(*entry->component, d->zonesOf(entry->calendar));
    appointment.uid = entry->uid;
    return appointment;
}

// ---- changing

QString CalendarFile::newUid() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

namespace {

// The line that says which day of the series it is about, in the form of the series' own start.
ContentLine dayLine(const Component &series, const QByteArray &name, const QString &instanceId) {
    ContentLine line = ContentLine::make(name, instanceId.toUtf8(), series.lineEnd());
    const ContentLine *start = series.line("DTSTART");
    for (const char *parameter : {"VALUE", "TZID"}) {
        const auto value = start ? start->parameter(parameter) : std::nullopt;
        if (value && !instanceId.endsWith(u'Z'))
            line.setParameter(parameter, *value);
    }
    return line;
}

// Without what says when the series takes place.
std::unique_ptr<Component> copyOfSeries(const Component &series) {
    QByteArray text;
    series.appendText(text);
    std::vector<std::unique_ptr<Component>> copies = parseComponents(text);
    if (copies.size() != 1)
        return nullptr;
    for (const char *name : {"RRULE", "RDATE", "EXRULE", "EXDATE", "CREATED"})
        copies.front()->removeLines(name);
    return std::move(copies.front());
}

} // namespace

QString CalendarFile::add(const Appointment &appointment) {
    Appointment named = appointment;
    if (named.uid.isEmpty())
        named.uid = newUid();
    const CalendarEntry *series = d->entry(named.uid, {});
    Component *calendar = series ? series->calendar : d->document.calendars().front();
    const bool isException = series && !named.recurrenceId.isEmpty();
    auto component = isException ? copyOfSeries(*series->component) : nullptr;
    if (!component)
        component = Component::make("VEVENT", calendar->lineEnd());
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
    d->addEntry(calendar, added);
    d->changed(*d->entries.back());
    return named.uid;
}

bool CalendarFile::update(const Appointment &appointment) {
    CalendarEntry *entry = d->entry(appointment.uid, appointment.recurrenceId);
    if (!entry)
        return false;
    ZoneTable &zones = d->zonesOf(entry->calendar);
    const auto before = readTimes(*entry->component, zones);
    const ContentLine *rule = entry->component->line("RRULE");
    const QByteArray ruleBefore = rule ? rule->value() : QByteArray();
    if (!writeAppointment(*entry->component, appointment, zones))
        return true;
    const auto after = readTimes(*entry->component, zones);
    const ContentLine *ruleNow = entry->component->line("RRULE");
    const bool sameRule = ruleNow && ruleNow->value() == ruleBefore;
    if (before && after && appointment.recurrenceId.isEmpty() && (sameRule || !ruleNow))
        d->moveDays(*entry, before->start, after->start);
    d->changed(*entry);
    return true;
}

void CalendarFile::Private::moveDays(CalendarEntry &series, const Moment &before, const Moment &after) {
    const std::optional<SeriesMove> move = SeriesMove::between(before, after);
    if (!move)
        return;
    move->apply(*series.component);
    for (CalendarEntry *exception : entriesOf(series.uid)) {
        ContentLine *day = exception->component->line("RECURRENCE-ID");
        if (!day || exception == &series)
            continue;
        day->setValue(move->moved(day->value()));
        byName.remove({exception->uid, exception->recurrenceId});
        exception->recurrenceId = QString::fromUtf8(day->value());
        byName.insert({exception->uid, exception->recurrenceId}, exception);
        changed(*exception);
    }
}

bool CalendarFile::Private::excludeDay(CalendarEntry &series, const QString &instanceId) {
    const EntrySummary &summary = summaryOf(series);
    const auto day = readMoment(dayLine(*series.component, "EXDATE", instanceId), instanceId.toUtf8(),
                                zonesOf(series.calendar));
    if (!summary.series || !day)
        return false;
    const std::vector<Series::Instance> days = summary.series->between(day->utc(), day->utc() + 1);
    const bool takesPlace = std::any_of(days.begin(), days.end(), [&](const Series::Instance &instance) {
        return instance.start.utc() == day->utc();
    });
    if (!takesPlace)
        return false;
    series.component->append(dayLine(*series.component, "EXDATE", instanceId));
    changed(series);
    return true;
}

bool CalendarFile::remove(const QString &uid, const QString &recurrenceId) {
    CalendarEntry *entry = d->entry(uid, recurrenceId);
    CalendarEntry *series = recurrenceId.isEmpty() ? nullptr : d->entry(uid, {});
    if (!entry)
        return series && d->excludeDay(*series, recurrenceId);
    const ContentLine *changedDay = entry->component->line("RECURRENCE-ID");
    if (series && changedDay) {
        // Else the occurrence as the series has it would come back.
        ContentLine excluded = ContentLine::make("EXDATE", changedDay->value(), series->component->lineEnd());
        for (const char *parameter : {"VALUE", "TZID"}) {
            if (const auto value = changedDay->parameter(parameter))
                excluded.setParameter(parameter, *value);
        }
        series->component->append(excluded);
        d->changed(*series);
    }
    d->erase(*entry);
    if (recurrenceId.isEmpty())
        d->eraseAll(uid);
    return true;
}

void CalendarFile::Private::eraseAll(const QString &uid) {
    for (CalendarEntry *held : entriesOf(uid))
        erase(*held);
}

std::vector<CalendarEntry *> CalendarFile::Private::entriesOf(const QString &uid) const {
    std::vector<CalendarEntry *> found;
    for (const auto &held : entries) {
        if (held->uid == uid)
            found.push_back(held.get());
    }
    return found;
}

QByteArray CalendarFile::componentsOf(const QString &uid) const {
    QByteArray text;
    for (const CalendarEntry *entry : d->entriesOf(uid))
        entry->component->appendText(text);
    return text;
}

bool CalendarFile::restore(const QString &uid, const QByteArray &text) {
    std::vector<std::unique_ptr<Component>> components = parseComponents(text);
    if (components.empty() && !text.isEmpty())
        return false;
    for (const auto &component : components) {
        const ContentLine *name = component->line("UID");
        if (component->name != "VEVENT" || (name && readText(*name) != uid))
            return false;
    }
    const std::vector<CalendarEntry *> former = d->entriesOf(uid);
    Component *calendar = former.empty() ? d->document.calendars().front() : former.front()->calendar;
    auto place = std::ptrdiff_t(calendar->items.size());
    if (!former.empty())
        place = d->placeOf(*former.front());
    d->eraseAll(uid);
    for (auto &component : components) {
        if (!component->line("UID")) // it was made for one that had none
            writeText(component->lineOrNew("UID"), uid);
        Component *restored = component.get();
        calendar->items.insert(calendar->items.begin() + place++, std::move(component));
        d->addEntry(calendar, restored);
    }
    d->exceptionsRead = false;
    d->dirty = true;
    return true;
}

std::ptrdiff_t CalendarFile::Private::placeOf(const CalendarEntry &entry) {
    const std::vector<ComponentItem> &items = entry.calendar->items;
    const auto it = std::find_if(items.begin(), items.end(), [&](const ComponentItem &item) {
        const auto *component = std::get_if<std::unique_ptr<Component>>(&item);
        return component && component->get() == entry.component;
    });
    return it - items.begin();
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
