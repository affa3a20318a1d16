#include "standin/mailhost/store/AppointmentReader.h"
#include "standin/mailhost/store/CalendarFilePrivate.h"
#include "standin/mailhost/store/TextValue.h"

#include <QElapsedTimer>

namespace mailhost {

namespace {

// A week of an honest calendar takes a few milliseconds. Series that were made to take long are left out at
// some time.
constexpr qint64 longestListing = 3000; // milliseconds

QDateTime localTime(Seconds utc) {
    return QDateTime::fromSecsSinceEpoch(utc, Qt::LocalTime);
}

} // namespace

const EntrySummary &CalendarFile::Private::summaryOf(CalendarEntry &entry) {
    if (entry.summary)
        return *entry.summary;
    auto summary = std::make_unique<EntrySummary>();
    const Component &component = *entry.component;
    ZoneTable &table = zonesOf(entry.calendar);
    summary->times = readTimes(component, table);
    if (const ContentLine *line = component.line("SUMMARY"))
        summary->summary = readText(*line);
    if (const ContentLine *line = component.line("LOCATION"))
        summary->location = readText(*line);
    if (const ContentLine *line = component.line(ucCapabilitiesProperty))
        summary->hasMeetingRecord = !line->value().trimmed().isEmpty();
    if (const ContentLine *line = component.line("STATUS"))
        summary->cancelled = line->value().trimmed().toUpper() == "CANCELLED";
    if (summary->times) {
        summary->startUtc = summary->times->start.utc();
        summary->endUtc = summary->times->end.utc();
        QStringList problems;
        summary->series = Series::read(component, *summary->times, table, &problems);
        for (const QString &problem : std::as_const(problems))
            warn(problem);
    } else {
        warn(QStringLiteral("“%1” has no start that can be read, so no day shows it.")
                 .arg(summary->summary.left(100)));
    }
    entry.summary = std::move(summary);
    return *entry.summary;
}

void CalendarFile::Private::readExceptions() {
    if (exceptionsRead)
        return;
    exceptions.clear();
    for (const auto &entry : entries) {
        if (entry->recurrenceId.isEmpty())
            continue;
        if (const auto moment = readMoment(entry->component->line("RECURRENCE-ID"), zonesOf(entry->calendar)))
            exceptions[entry->uid].add(*moment);
    }
    exceptionsRead = true;
}

void CalendarFile::Private::appendOccurrences(CalendarEntry &entry, Seconds from, Seconds to,
                                              std::vector<TimedOccurrence> *out) {
    const EntrySummary &summary = summaryOf(entry);
    if (!summary.times)
        return;
    Occurrence occurrence;
    occurrence.uid = entry.uid;
    occurrence.recurrenceId = entry.recurrenceId;
    occurrence.instanceId = entry.recurrenceId;
    occurrence.allDay = summary.times->start.kind == CalendarTime::Kind::Date;
    occurrence.isException = !entry.recurrenceId.isEmpty();
    occurrence.isOccurrence = summary.series != nullptr;
    occurrence.summary = summary.summary;
    occurrence.location = summary.location;
    occurrence.hasMeetingRecord = summary.hasMeetingRecord;
    if (!summary.series) {
        const bool overlaps = summary.startUtc < to && (summary.startUtc >= from || summary.endUtc > from);
        if (!overlaps || (occurrence.isException && summary.cancelled))
            return; // a cancelled day of a series is a day without it
        occurrence.start = localTime(summary.startUtc);
        occurrence.end = localTime(summary.endUtc);
        out->push_back({summary.startUtc, occurrence});
        return;
    }
    const auto changedDays = exceptions.constFind(entry.uid);
    for (const Series::Instance &instance : summary.series->between(from, to)) {
        if (changedDays != exceptions.constEnd() && changedDays->contains(instance.start))
            continue;
        occurrence.instanceId = QString::fromLatin1(clockText(instance.start.clock, instance.start.kind));
        occurrence.start = localTime(instance.startUtc);
        occurrence.end = localTime(instance.endUtc);
        out->push_back({instance.startUtc, occurrence});
    }
}

QList<Occurrence> CalendarFile::occurrences(const QDateTime &from, const QDateTime &to) const {
    QList<Occurrence> sorted;
    if (!from.isValid() || !to.isValid() || from >= to)
        return sorted;
    d->readExceptions();
    std::vector<TimedOccurrence> found;
    QElapsedTimer timer;
    timer.start();
    const Seconds fromUtc = from.toSecsSinceEpoch();
    const Seconds toUtc = to.toSecsSinceEpoch();
    for (const auto &entry : d->entries) {
        if (timer.elapsed() > longestListing) {
            d->warn(QStringLiteral("This calendar repeats so often that not everything can be shown."));
            break;
        }
        d->appendOccurrences(*entry, fromUtc, toUtc, &found);
    }
    // By the seconds: comparing local times asks the system for its time zone again and again.
    std::stable_sort(found.begin(), found.end(), [](const TimedOccurrence &a, const TimedOccurrence &b) {
        return a.startUtc < b.startUtc;
    });
    sorted.reserve(qsizetype(found.size()));
    for (TimedOccurrence &timed : found)
        sorted.append(std::move(timed.occurrence));
    return sorted;
}

} // namespace mailhost
